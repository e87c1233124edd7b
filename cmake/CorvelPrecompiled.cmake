# Qt's headers, compiled once for all targets that see them alike: most of what a build costs otherwise.
#
# Off by default, because a source that lacks an include compiles all the same with it; the builds of ./run, of the
# fuzzers and against another framework do without.

option(CORVEL_PCH "Precompile Qt's headers" OFF)

# One address model for everything, so that libraries and programs can share them. Qt asks for it anyway.
set(CMAKE_CXX_COMPILE_OPTIONS_PIE "-fPIC")

# corvel_precompile(TARGET MODULE...): what TARGET uses of Qt, out of core, widgets, network and test.
function(corvel_precompile target)
    if(NOT CORVEL_PCH OR CORVEL_QT_MAJOR EQUAL 4)
        return()
    endif()
    set(modules ${ARGN})
    list(SORT modules)
    get_target_property(standard ${target} CXX_STANDARD)
    string(REPLACE ";" "_" name "corvel_pch_${modules}_${standard}")
    if("test" IN_LIST modules)
        # Qt's test library defines a macro that tells the folder, and headers hold only for the same macros.
        get_filename_component(folder "${CMAKE_CURRENT_SOURCE_DIR}" NAME)
        string(APPEND name "_${folder}")
    endif()
    if(NOT TARGET ${name})
        set(source "${CMAKE_BINARY_DIR}/generated/${name}.cpp")
        file(WRITE "${source}.in" "// Only there to have the headers compiled.\n")
        configure_file("${source}.in" "${source}" COPYONLY)
        add_library(${name} OBJECT "${source}")
        set_target_properties(${name} PROPERTIES CXX_STANDARD ${standard} AUTOMOC OFF)
        foreach(module ${modules})
            string(TOUPPER ${module} upper)
            target_link_libraries(${name} PRIVATE ${CORVEL_QT_${upper}})
        endforeach()
        target_precompile_headers(${name} PRIVATE <QtCore>)
        if("widgets" IN_LIST modules)
            target_precompile_headers(${name} PRIVATE <QtWidgets>)
        endif()
        if("test" IN_LIST modules)
            target_precompile_headers(${name} PRIVATE <QtTest>)
        endif()
    endif()
    target_precompile_headers(${target} REUSE_FROM ${name})
endfunction()
