include("${CMAKE_CURRENT_LIST_DIR}/../shared/subbuild.cmake")

set(hidden "")
foreach(package QCustomPlot QCustomPlotQt6 Qt${QT_MAJOR}LinguistTools Qt${QT_MAJOR}PrintSupport Qt${QT_MAJOR}Test benchmark)
    list(APPEND hidden "-DCMAKE_DISABLE_FIND_PACKAGE_${package}=ON")
endforeach()
set(binary "${WORK_DIR}/libraries")
file(REMOVE_RECURSE "${binary}")
set(arguments "-DCMAKE_PREFIX_PATH=${PREFIX_PATH}" "-DCMAKE_CXX_FLAGS=${SUBBUILD_FLAGS}" -DCORVEL_QT_MAJOR=${QT_MAJOR}
    -DCORVEL_BUILD_TESTS=OFF ${hidden})

# With the programs it must not be found: else nothing was hidden.
execute_process(COMMAND "${CMAKE_COMMAND}" -S "${SOURCE_DIR}" -B "${binary}" ${SUBBUILD_ARGUMENTS} ${arguments}
    RESULT_VARIABLE result OUTPUT_QUIET ERROR_QUIET)
if(result EQUAL 0)
    message(FATAL_ERROR "The programs were configured without what they need")
endif()

# What the libraries are compiled from is compiled elsewhere: here it is enough that all of them are there to be built.
build("${SOURCE_DIR}" "${binary}" corvelbase ${arguments} -DCORVEL_BUILD_APPS=OFF)
run("${CMAKE_COMMAND}" --build "${binary}" --target help)
foreach(target corvelframework corvelgui)
    if(NOT RUN_OUTPUT MATCHES "${target}")
        message(FATAL_ERROR "There is no ${target} to be built:\n${RUN_OUTPUT}")
    endif()
endforeach()
string(REGEX MATCH "corvel-(dump|monitor|simulate)|translations" found "${RUN_OUTPUT}")
expect("what there is beside the libraries" "${found}" "")
