# Compiler settings and the helpers that every folder's CMakeLists.txt uses.

include(GenerateExportHeader)

set(CMAKE_AUTOMOC ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# The libraries are written in C++11; Qt 6's own headers need 17. Decoders, programs and benchmarks use 17 throughout.
if(CORVEL_QT_MAJOR EQUAL 6)
    set(CORVEL_CORE_STANDARD 17)
else()
    set(CORVEL_CORE_STANDARD 11)
endif()
set(CORVEL_APP_STANDARD 17)
set(CMAKE_CXX_STANDARD ${CORVEL_CORE_STANDARD})

add_compile_options(-Wall -Wextra -Wpedantic)
if(CORVEL_WERROR)
    add_compile_options(-Werror)
endif()
if(CORVEL_HARDEN AND NOT CORVEL_SANITIZE AND NOT CORVEL_BUILD_FUZZERS)
    include(CheckPIESupported)
    check_pie_supported()
    add_compile_options(-fstack-protector-strong)
    string(TOUPPER "CMAKE_CXX_FLAGS_${CMAKE_BUILD_TYPE}" flags)
    if("${CMAKE_CXX_FLAGS} ${${flags}}" MATCHES "-O[1-9s]") # checks of buffers need what is known of their sizes then
        add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
    endif()
    add_link_options(-Wl,-z,relro,-z,now)
endif()
if(CORVEL_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
if(CORVEL_BUILD_FUZZERS)
    # The libraries have to be instrumented as well: a fuzzer steers by the code that it reaches.
    add_compile_options(-fsanitize=fuzzer-no-link,address -fno-omit-frame-pointer)
    add_link_options(-fsanitize=fuzzer-no-link,address)
endif()
add_compile_definitions(QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII)

# corvel_library(TARGET ALIAS EXPORT_BASENAME): version, soname, alias and export header of one of the three libraries.
function(corvel_library target alias)
    generate_export_header(${target}
        BASE_NAME ${target}
        EXPORT_FILE_NAME "${CMAKE_BINARY_DIR}/generated/include/${target}_export.h")
    set_target_properties(${target} PROPERTIES
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        EXPORT_NAME ${alias})
    target_include_directories(${target} PUBLIC
        "$<BUILD_INTERFACE:${CMAKE_BINARY_DIR}/generated/include>"
        "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/corvel>")
    target_include_directories(${target} INTERFACE
        "$<BUILD_INTERFACE:${corvel_headers_build_dir}>"
        "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>")
    corvel_public_headers("${CMAKE_BINARY_DIR}/generated/include/${target}_export.h")
    add_library(Corvel::${alias} ALIAS ${target})
    install(TARGETS ${target} EXPORT Corvel${alias}Targets
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
endfunction()

# corvel_public_headers(HEADERS...): installs them, for <corvel/message.h> and for <message.h>. In the build tree, where they lie in
# several folders, they are copied into one of that name: so each has those that it includes beside itself there as well,
# and never finds a file of an application that is called alike.
set(corvel_headers_build_dir "${CMAKE_BINARY_DIR}/package/include")
file(MAKE_DIRECTORY "${corvel_headers_build_dir}/corvel")
function(corvel_public_headers)
    foreach(header ${ARGN})
        get_filename_component(name "${header}" NAME)
        get_filename_component(path "${header}" ABSOLUTE)
        configure_file("${path}" "${corvel_headers_build_dir}/corvel/${name}" COPYONLY) # of a link, GCC takes the target's folder
    endforeach()
    install(FILES ${ARGN} DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/corvel")
endfunction()

# corvel_cxx17(TARGET...): for what is not built for Qt 4.
function(corvel_cxx17)
    foreach(target ${ARGN})
        set_target_properties(${target} PROPERTIES CXX_STANDARD ${CORVEL_APP_STANDARD})
    endforeach()
endfunction()
