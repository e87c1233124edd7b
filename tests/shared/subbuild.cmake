# For tests that are CMake scripts: builds projects with the compiler, Qt and flags of the build that runs them.
# To be run with -DSETTINGS=FILE, which tests/CMakeLists.txt writes.

include("${SETTINGS}")

# run(COMMAND ARGUMENTS...): stops the script with the command's output when it fails; else leaves
# what it wrote to the standard output in RUN_OUTPUT.
function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
    if(NOT result EQUAL 0)
        list(JOIN ARGN " " command)
        message("${output}${errors}") # apart, because what an error says is wrapped
        message(FATAL_ERROR "${command}\nended with ${result}")
    endif()
    set(RUN_OUTPUT "${output}" PARENT_SCOPE)
endfunction()

# build(SOURCE BINARY TARGET CMAKE_ARGUMENTS...): configures and builds a target.
function(build source binary target)
    run("${CMAKE_COMMAND}" -S "${source}" -B "${binary}" ${SUBBUILD_ARGUMENTS} ${ARGN})
    run("${CMAKE_COMMAND}" --build "${binary}" --target ${target} --parallel 2)
endfunction()

# expect(WHAT ACTUAL EXPECTED)
function(expect what actual expected)
    if(NOT actual STREQUAL expected)
        message(FATAL_ERROR "${what} is \"${actual}\", not \"${expected}\"")
    endif()
endfunction()
