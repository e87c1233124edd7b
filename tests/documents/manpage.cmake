# Every option that a program's help names has its place in the man page, and the page names no other.
execute_process(COMMAND "${PROGRAM}" --help OUTPUT_VARIABLE help RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${PROGRAM} --help ended with ${result}")
endif()
file(READ "${PAGE}" page)
string(REPLACE "\\-" "-" page "${page}")

string(REGEX MATCHALL "\n  (-[a-z], )?--[a-z-]+" offered "${help}")
string(REGEX MATCHALL "\n\\.B[IR]* [^\n]*" described "${page}")
foreach(list offered described)
    string(REGEX MATCHALL "--[a-z-]+" ${list} "${${list}}")
    list(REMOVE_DUPLICATES ${list})
    list(SORT ${list})
endforeach()
list(REMOVE_ITEM offered --help-all) # Qt's own
if(NOT offered STREQUAL described)
    message(FATAL_ERROR "The help of ${PROGRAM} names\n  ${offered}\nand ${PAGE} describes\n  ${described}")
endif()
