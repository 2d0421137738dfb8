# Runs a program and compares its exit status and what it prints:
# cmake -DCOMMAND="program;arguments" -DSTATUS=n -DPRINTS=regular-expression -P program_test.cmake
# A program that waits for input meets its end.
execute_process(COMMAND ${COMMAND} INPUT_FILE /dev/null RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
if(NOT status EQUAL STATUS)
  message(FATAL_ERROR "status ${status}, wanted ${STATUS}\n${out}${err}")
endif()
if(NOT "${out}${err}" MATCHES "${PRINTS}")
  message(FATAL_ERROR "wanted a text like ${PRINTS}, got\n${out}${err}")
endif()
