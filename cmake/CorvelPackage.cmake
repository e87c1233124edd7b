# What other projects find the libraries with: a CMake package, in the build tree and installed, a version header and a
# pkg-config file.

include(CMakePackageConfigHelpers)

set(corvel_package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/Corvel")
set(corvel_package_build_dir "${CMAKE_BINARY_DIR}/package")

if(CORVEL_QT_MAJOR EQUAL 4)
    set(CORVEL_FIND_QT "find_dependency(Qt4 4.8 COMPONENTS QtCore QtGui)")
else()
    set(CORVEL_FIND_QT
        "find_dependency(Qt${CORVEL_QT_MAJOR} ${CORVEL_QT_LEAST} COMPONENTS Core Gui Widgets)")
endif()
configure_package_config_file(
    cmake/CorvelConfig.cmake.in "${corvel_package_build_dir}/CorvelConfig.cmake"
    INSTALL_DESTINATION "${corvel_package_dir}"
    NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(
    "${corvel_package_build_dir}/CorvelConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion)
export(EXPORT CorvelTargets NAMESPACE Corvel:: FILE "${corvel_package_build_dir}/CorvelTargets.cmake")
install(EXPORT CorvelTargets NAMESPACE Corvel:: DESTINATION "${corvel_package_dir}")
install(FILES
    "${corvel_package_build_dir}/CorvelConfig.cmake"
    "${corvel_package_build_dir}/CorvelConfigVersion.cmake"
    DESTINATION "${corvel_package_dir}")

configure_file(cmake/corvelversion.h.in "${CMAKE_BINARY_DIR}/generated/include/corvelversion.h" @ONLY)
install(FILES "${CMAKE_BINARY_DIR}/generated/include/corvelversion.h"
    DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/corvel")

# The libraries find each other wherever they are installed.
foreach(target corvelbase corvelframework corvelgui)
    if(TARGET ${target})
        set_target_properties(${target} PROPERTIES INSTALL_RPATH "\$ORIGIN")
    endif()
endforeach()

if(CORVEL_QT_MAJOR EQUAL 4)
    set(CORVEL_PC_REQUIRES "QtGui >= 4.8")
else()
    set(CORVEL_PC_REQUIRES "Qt${CORVEL_QT_MAJOR}Widgets >= ${CORVEL_QT_LEAST}")
endif()
set(CORVEL_PC_LIBS "-lcorvelgui")
if(NOT CORVEL_FRAMEWORK STREQUAL "external")
    string(APPEND CORVEL_PC_LIBS " -lcorvelframework -lcorvelbase")
endif()
foreach(dir LIBDIR INCLUDEDIR)
    set(CORVEL_PC_${dir} "\${prefix}/${CMAKE_INSTALL_${dir}}")
    if(IS_ABSOLUTE "${CMAKE_INSTALL_${dir}}")
        set(CORVEL_PC_${dir} "${CMAKE_INSTALL_${dir}}")
    endif()
endforeach()
# Written when it is installed, because only then the prefix is certain.
install(CODE "
    set(PROJECT_DESCRIPTION \"${PROJECT_DESCRIPTION}\")
    set(PROJECT_VERSION \"${PROJECT_VERSION}\")
    set(CORVEL_PC_REQUIRES \"${CORVEL_PC_REQUIRES}\")
    set(CORVEL_PC_LIBS \"${CORVEL_PC_LIBS}\")
    set(CORVEL_PC_LIBDIR \"\\${CORVEL_PC_LIBDIR}\")
    set(CORVEL_PC_INCLUDEDIR \"\\${CORVEL_PC_INCLUDEDIR}\")
    configure_file(\"${PROJECT_SOURCE_DIR}/cmake/corvelgui.pc.in\"
        \"${corvel_package_build_dir}/corvelgui.pc\" @ONLY)")
install(FILES "${corvel_package_build_dir}/corvelgui.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
