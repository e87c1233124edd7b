include("${CMAKE_CURRENT_LIST_DIR}/../shared/subbuild.cmake")

build("${CMAKE_CURRENT_LIST_DIR}/../standin" "${WORK_DIR}/framework" all
    "-DQT_MAJOR=${QT_MAJOR}" "-DCMAKE_CXX_FLAGS=${SUBBUILD_FLAGS}" "-DCMAKE_PREFIX_PATH=${PREFIX_PATH}")

string(REPLACE ";" "\\;" prefixes "${WORK_DIR}/framework;${PREFIX_PATH}")
build("${SOURCE_DIR}" "${WORK_DIR}/corvel" corvelgui
    -DCORVEL_FRAMEWORK=external "-DCORVEL_QT_MAJOR=${QT_MAJOR}" "-DCORVEL_SANITIZE=${SANITIZE}"
    -DCORVEL_WERROR=ON -DCORVEL_BUILD_TESTS=OFF "-DCMAKE_PREFIX_PATH=${prefixes}")

build("${CMAKE_CURRENT_LIST_DIR}/program" "${WORK_DIR}/program" all
    "-DQT_MAJOR=${QT_MAJOR}" "-DCMAKE_CXX_FLAGS=${SUBBUILD_FLAGS}" "-DCMAKE_PREFIX_PATH=${prefixes}"
    "-DCorvel_DIR=${WORK_DIR}/corvel/package")
set(ENV{QTEST_FUNCTION_TIMEOUT} 30000) # a message box would wait for ever
run("${WORK_DIR}/program/tst_binding")
message(STATUS "${RUN_OUTPUT}")
