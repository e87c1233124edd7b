# Every text of the sources is translated.
configure_file("${TS}" "${COPY}" COPYONLY)
execute_process(COMMAND "${LUPDATE}" -silent -no-obsolete -locations none ${FOLDERS} -ts "${COPY}"
    WORKING_DIRECTORY "${SOURCE_DIR}" RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "lupdate ended with ${result}\n${output}")
endif()
file(READ "${COPY}" texts)
string(REGEX MATCHALL
    "<source>[^<]*</source>[ \n]*(<(extra)?comment>[^<]*</(extra)?comment>[ \n]*)*<translation type=\"unfinished\"" missing "${texts}")
if(missing)
    list(JOIN missing "\n" missing)
    string(REGEX REPLACE "</?source>|<[^\n]*" "" missing "${missing}")
    message(FATAL_ERROR "Without a translation in ${TS}:\n${missing}")
endif()
