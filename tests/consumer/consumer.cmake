include("${CMAKE_CURRENT_LIST_DIR}/../shared/subbuild.cmake")

set(prefix "${WORK_DIR}/prefix")
file(REMOVE_RECURSE "${prefix}")
run("${CMAKE_COMMAND}" --install "${BINARY_DIR}" --prefix "${prefix}")

foreach(library base framework gui)
    set(file "${prefix}/${LIBDIR}/libcorvel${library}.so.15")
    run("${READELF}" -d "${file}")
    string(REGEX MATCH "soname: \\[([^]]*)\\]" found "${RUN_OUTPUT}")
    expect("the soname of ${file}" "${CMAKE_MATCH_1}" "libcorvel${library}.so.15")
    if(RUN_OUTPUT MATCHES "R(UN)?PATH[^\n]*${BINARY_DIR}")
        message(FATAL_ERROR "${file} looks for libraries in the build tree")
    endif()
endforeach()

# Programs start from where they are installed, with the libraries beside them and those only.
unset(ENV{LD_LIBRARY_PATH})
foreach(program dump simulate monitor)
    set(file "${prefix}/bin/corvel-${program}")
    run("${READELF}" -d "${file}")
    if(RUN_OUTPUT MATCHES "R(UN)?PATH[^\n]*${BINARY_DIR}")
        message(FATAL_ERROR "${file} looks for libraries in the build tree")
    endif()
    run("${file}" --version)
    expect("the version of ${file}" "${RUN_OUTPUT}" "corvel-${program} 15.0.0\n")
endforeach()

if(HARDEN)
    file(GLOB hardened "${prefix}/bin/corvel-*" "${prefix}/${LIBDIR}/libcorvel*.so.15.0.0")
    run("${SOURCE_DIR}/scripts/hardening" ${hardened})
endif()

# The same as an archive runs wherever it is unpacked.
set(archive "${WORK_DIR}/archive")
file(REMOVE_RECURSE "${archive}")
run("${CPACK}" --config "${BINARY_DIR}/CPackConfig.cmake" -B "${archive}")
file(GLOB file "${archive}/corvel-15.0.0-*.tar.gz")
file(ARCHIVE_EXTRACT INPUT "${file}" DESTINATION "${archive}")
file(GLOB unpacked LIST_DIRECTORIES true "${archive}/corvel-15.0.0-*-qt${QT_MAJOR}")
run("${unpacked}/bin/corvel-dump" --version)
expect("the version of the program from the archive" "${RUN_OUTPUT}" "corvel-dump 15.0.0\n")

# Nothing that is installed may know where it was built.
file(GLOB_RECURSE texts "${unpacked}/*.cmake" "${unpacked}/*.h" "${unpacked}/*.pc")
foreach(text ${texts})
    file(READ "${text}" content)
    foreach(dir "${SOURCE_DIR}/" "${BINARY_DIR}/")
        string(FIND "${content}" "${dir}" place)
        if(NOT place EQUAL -1)
            message(FATAL_ERROR "${text} names ${dir}")
        endif()
    endforeach()
endforeach()

string(REPLACE ";" "\\;" prefixes "${prefix};${PREFIX_PATH}")
build("${CMAKE_CURRENT_LIST_DIR}/project" "${WORK_DIR}/project" all
    "-DCMAKE_PREFIX_PATH=${prefixes}" "-DCMAKE_CXX_FLAGS=${SUBBUILD_FLAGS}"
    "-DEXAMPLES_DIR=${SOURCE_DIR}/examples")
run("${WORK_DIR}/project/consumer")
expect("what the consumer shows" "${RUN_OUTPUT}" "15.0.0: N/A, 42 m/s\nTyp\n")

# In the build tree headers are found alike.
build("${CMAKE_CURRENT_LIST_DIR}/project" "${WORK_DIR}/buildtree" application "-DCorvel_DIR=${BINARY_DIR}/package"
    "-DCMAKE_PREFIX_PATH=${PREFIX_PATH}" "-DCMAKE_CXX_FLAGS=${SUBBUILD_FLAGS}" "-DEXAMPLES_DIR=${SOURCE_DIR}/examples")

# The examples have no end of their own: one is all right when it is still running, and has complained of nothing.
foreach(example germandark messagetree owndecoder ownmessages sendergroups valuelabel)
    execute_process(COMMAND "${WORK_DIR}/project/${example}/${example}" "-" INPUT_FILE "${CMAKE_CURRENT_LIST_FILE}"
        TIMEOUT 1 RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    # These come from the machine, and not from us.
    string(REGEX REPLACE "(QStandardPaths: XDG_RUNTIME_DIR|This plugin does not support)[^\n]*\n" "" output "${output}")
    if(NOT result MATCHES "timeout" OR NOT output STREQUAL "")
        message(FATAL_ERROR "The example ${example} ended with ${result}\n${output}")
    endif()
endforeach()

# What needs no widgets looks for none, and whoever asks for what is missing is told so.
set(headless "${WORK_DIR}/headless")
build("${CMAKE_CURRENT_LIST_DIR}/headless" "${headless}" all
    "-DCMAKE_PREFIX_PATH=${prefixes}" "-DCMAKE_CXX_FLAGS=${SUBBUILD_FLAGS}" -DWANTED=Framework
    -DCMAKE_DISABLE_FIND_PACKAGE_Qt${QT_MAJOR}Widgets=OFF "-DEXAMPLES_DIR=${SOURCE_DIR}/examples")
run("${prefix}/bin/corvel-simulate" --format mcap --duration 1 "${WORK_DIR}/drive.mcap")
set(path "*/corvel.demo.Vehicle/pose/x")
run("${headless}/readfield/readfield" "${WORK_DIR}/drive.mcap" "${path}")
set(values "${RUN_OUTPUT}")
string(REGEX MATCHALL "[0-9]+\t[0-9.]+\n" lines "${values}")
list(LENGTH lines count)
expect("the number of values of a second" "${count}" 20)
set(package "${prefix}/${LIBDIR}/cmake/Corvel")
foreach(row
        "Nothing|Gui|needs Widgets of Qt ${QT_MAJOR}.*which was not found. Framework and Base do without"
        "Nothing|Framework+Plots|has no component \"Plots\". it has Base, Framework and Gui"
        "Framework|Framework|The component Framework of Corvel is not installed: there is no .*/CorvelFrameworkTargets.cmake")
    string(REPLACE "|" ";" row "${row}")
    list(GET row 0 missing)
    list(GET row 1 wanted)
    list(GET row 2 expected)
    string(REPLACE "+" ";" wanted "${wanted}")
    file(REMOVE "${package}/Corvel${missing}Targets.cmake")
    execute_process(COMMAND "${CMAKE_COMMAND}" "${headless}" "-DWANTED=${wanted}"
        -DCMAKE_DISABLE_FIND_PACKAGE_Qt${QT_MAJOR}Widgets=ON
        RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE errors)
    string(REGEX REPLACE "[ \n]+" " " errors "${errors}") # it was wrapped
    if(result EQUAL 0 OR NOT errors MATCHES "${expected}")
        message(FATAL_ERROR "Without ${wanted}: ${errors}")
    endif()
endforeach()

find_program(PKG_CONFIG pkg-config)
if(PKG_CONFIG)
    set(ENV{PKG_CONFIG_PATH} "${unpacked}/${LIBDIR}/pkgconfig")
    run("${PKG_CONFIG}" --modversion corvelgui)
    expect("pkg-config's version" "${RUN_OUTPUT}" "15.0.0\n")
    run("${PKG_CONFIG}" --variable=prefix corvelgui)
    string(STRIP "${RUN_OUTPUT}" found)
    get_filename_component(found "${found}" ABSOLUTE)
    expect("pkg-config's prefix" "${found}" "${unpacked}")
    run("${PKG_CONFIG}" --cflags --libs corvelgui)
    foreach(part "/include/corvel" "-lcorvelgui" "-lcorvelbase" "-lQt${QT_MAJOR}Widgets")
        string(FIND "${RUN_OUTPUT}" "${part}" place)
        if(place EQUAL -1)
            message(FATAL_ERROR "pkg-config names no ${part}: ${RUN_OUTPUT}")
        endif()
    endforeach()
    separate_arguments(flags UNIX_COMMAND "${SUBBUILD_FLAGS} ${RUN_OUTPUT}")
    set(own "${WORK_DIR}/project/own")
    run("${CXX}" -std=c++17 -fPIC -fsyntax-only "-I${own}" "${own}/own.cpp" ${flags})
    run("${PKG_CONFIG}" --cflags --libs corvelframework)
    if(RUN_OUTPUT MATCHES "Widgets|Gui")
        message(FATAL_ERROR "pkg-config names widgets for the framework: ${RUN_OUTPUT}")
    endif()
    separate_arguments(flags UNIX_COMMAND "${SUBBUILD_FLAGS} ${RUN_OUTPUT}")
    run("${CXX}" -std=c++17 -fPIC "${SOURCE_DIR}/examples/readfield/main.cpp" -o "${headless}/bypkgconfig" ${flags}
        "-Wl,-rpath,${unpacked}/${LIBDIR}")
    run("${headless}/bypkgconfig" "${WORK_DIR}/drive.mcap" "${path}")
    expect("what the program built by pkg-config prints" "${RUN_OUTPUT}" "${values}")
endif()
