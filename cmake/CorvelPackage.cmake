# What other projects find the libraries with: a CMake package, in the build tree and installed, a version header and a
# pkg-config file.

include(CMakePackageConfigHelpers)

set(corvel_package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/Corvel")
set(corvel_package_build_dir "${CMAKE_BINARY_DIR}/package")

if(CORVEL_QT_MAJOR EQUAL 4)
    set(CORVEL_QT_LEAST 4.8)
    set(CORVEL_FIND_QT_CORE "find_package(Qt4 4.8 QUIET COMPONENTS QtCore)")
    set(CORVEL_FIND_QT_WIDGETS "find_package(Qt4 4.8 QUIET COMPONENTS QtCore QtGui)")
else()
    set(CORVEL_FIND_QT_CORE "find_package(Qt${CORVEL_QT_MAJOR} ${CORVEL_QT_LEAST} QUIET COMPONENTS Core)")
    # Optional, so that Qt counts as found where a project can do without.
    set(CORVEL_FIND_QT_WIDGETS
        "find_package(Qt${CORVEL_QT_MAJOR} ${CORVEL_QT_LEAST} QUIET COMPONENTS Core OPTIONAL_COMPONENTS Gui Widgets)")
endif()
configure_package_config_file(
    cmake/CorvelConfig.cmake.in "${corvel_package_build_dir}/CorvelConfig.cmake"
    INSTALL_DESTINATION "${corvel_package_dir}"
    NO_SET_AND_CHECK_MACRO
    NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(
    "${corvel_package_build_dir}/CorvelConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion)
# A file for each component, so that each can be installed without those above it.
foreach(component Base Framework Gui)
    string(TOLOWER "corvel${component}" target)
    if(TARGET ${target})
        export(EXPORT Corvel${component}Targets NAMESPACE Corvel::
            FILE "${corvel_package_build_dir}/Corvel${component}Targets.cmake")
        install(EXPORT Corvel${component}Targets NAMESPACE Corvel:: DESTINATION "${corvel_package_dir}")
        set_target_properties(${target} PROPERTIES INSTALL_RPATH "\$ORIGIN") # the libraries find each other anywhere
    endif()
endforeach()
install(FILES
    "${corvel_package_build_dir}/CorvelConfig.cmake"
    "${corvel_package_build_dir}/CorvelConfigVersion.cmake"
    DESTINATION "${corvel_package_dir}")

configure_file(cmake/corvelversion.h.in "${CMAKE_BINARY_DIR}/generated/include/corvelversion.h" @ONLY)
corvel_public_headers("${CMAKE_BINARY_DIR}/generated/include/corvelversion.h")

# corvel_pkgconfig(NAME DESCRIPTION REQUIRES LIBS): it finds the libraries from where it lies itself, so that an archive holds
# wherever it is unpacked.
function(corvel_pkgconfig name description requires libs)
    set(PREFIX "\\\${pcfiledir}/..")
    string(REGEX MATCHALL "[^/]+" parts "${CMAKE_INSTALL_LIBDIR}")
    foreach(part ${parts})
        string(APPEND PREFIX "/..")
    endforeach()
    foreach(dir LIBDIR INCLUDEDIR)
        set(${dir} "\\\${prefix}/${CMAKE_INSTALL_${dir}}")
        if(IS_ABSOLUTE "${CMAKE_INSTALL_${dir}}")
            set(${dir} "${CMAKE_INSTALL_${dir}}")
            set(PREFIX "\${CMAKE_INSTALL_PREFIX}") # only certain when it is installed
        endif()
    endforeach()
    set(file "${corvel_package_build_dir}/${name}.pc")
    install(CODE "
        set(NAME \"${name}\")
        set(DESCRIPTION \"${description}\")
        set(PROJECT_VERSION \"${PROJECT_VERSION}\")
        set(REQUIRES \"${requires}\")
        set(LIBS \"${libs}\")
        set(PREFIX \"${PREFIX}\")
        set(LIBDIR \"${LIBDIR}\")
        set(INCLUDEDIR \"${INCLUDEDIR}\")
        configure_file(\"${PROJECT_SOURCE_DIR}/cmake/library.pc.in\" \"${file}\" @ONLY)")
    install(FILES "${file}" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
endfunction()

if(CORVEL_QT_MAJOR EQUAL 4)
    set(requires_core "QtCore >= 4.8")
    set(requires_widgets "QtGui >= 4.8")
else()
    set(requires_core "Qt${CORVEL_QT_MAJOR}Core >= ${CORVEL_QT_LEAST}")
    set(requires_widgets "Qt${CORVEL_QT_MAJOR}Widgets >= ${CORVEL_QT_LEAST}")
endif()
if(NOT CORVEL_FRAMEWORK STREQUAL "external")
    corvel_pkgconfig(corvelframework "An open message framework: reads, decodes and writes messages of devices"
        "${requires_core}" "-lcorvelframework -lcorvelbase")
    string(PREPEND requires_widgets "corvelframework = ${PROJECT_VERSION}, ")
endif()
corvel_pkgconfig(corvelgui "${PROJECT_DESCRIPTION}" "${requires_widgets}" "-lcorvelgui")

# "package" makes an archive of all that is installed, to be unpacked anywhere.
set(CPACK_GENERATOR TGZ)
set(CPACK_PACKAGE_NAME corvel)
set(CPACK_PACKAGE_VENDOR "the Corvel authors")
set(CPACK_PACKAGE_FILE_NAME "corvel-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}-qt${CORVEL_QT_MAJOR}")
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_STRIP_FILES ON)
set(CPACK_SOURCE_GENERATOR "") # git archive has the sources
include(CPack)
