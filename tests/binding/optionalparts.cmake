include("${CMAKE_CURRENT_LIST_DIR}/../shared/subbuild.cmake")

# Nothing that only programs and tests need can be found.
set(packages QCustomPlot QCustomPlotQt6 Qt${QT_MAJOR}LinguistTools Qt${QT_MAJOR}PrintSupport Qt${QT_MAJOR}Test benchmark)
list(TRANSFORM packages REPLACE "(.+)" "-DCMAKE_DISABLE_FIND_PACKAGE_\\1=ON" OUTPUT_VARIABLE hidden)
set(binary "${WORK_DIR}/optionalparts")
file(REMOVE_RECURSE "${binary}")
set(arguments "-DCMAKE_PREFIX_PATH=${PREFIX_PATH}" "-DCMAKE_CXX_FLAGS=${SUBBUILD_FLAGS}" -DCORVEL_QT_MAJOR=${QT_MAJOR}
    -DCORVEL_BUILD_TESTS=OFF)

# With all parts it must not do: else nothing was hidden.
execute_process(COMMAND "${CMAKE_COMMAND}" -S "${SOURCE_DIR}" -B "${binary}" ${SUBBUILD_ARGUMENTS} ${arguments} ${hidden}
    RESULT_VARIABLE result OUTPUT_QUIET ERROR_QUIET)
if(result EQUAL 0)
    message(FATAL_ERROR "The programs were configured without what they need")
endif()

# The libraries alone. What they are compiled from is compiled elsewhere: that all of them can be built is enough here.
build("${SOURCE_DIR}" "${binary}" corvelbase ${arguments} ${hidden} -DCORVEL_BUILD_APPS=OFF)
run("${CMAKE_COMMAND}" --build "${binary}" --target help)
foreach(target corvelframework corvelgui)
    if(NOT RUN_OUTPUT MATCHES "${target}")
        message(FATAL_ERROR "There is no ${target} to be built:\n${RUN_OUTPUT}")
    endif()
endforeach()
string(REGEX MATCH "corvel-(dump|monitor|simulate)|translations" found "${RUN_OUTPUT}")
expect("what there is beside the libraries" "${found}" "")

# The programs without the plot: tst_plotless is one, here are its packages and its licence.
run("${CMAKE_COMMAND}" -S "${SOURCE_DIR}" -B "${binary}" ${arguments} -DCORVEL_BUILD_APPS=ON -DCORVEL_MONITOR_PLOT=OFF
    -DCMAKE_DISABLE_FIND_PACKAGE_Qt${QT_MAJOR}LinguistTools=OFF)
file(STRINGS "${binary}/apps/monitor/desktop/org.corvel.Monitor.metainfo.xml" licence REGEX "project_license|Plots")
expect("the licence of the monitor without the plot" "${licence}" "  <project_license>BSD-3-Clause</project_license>")
