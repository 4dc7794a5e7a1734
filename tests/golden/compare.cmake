# Runs PROGRAM and compares its lines, but for those of the math library, with the file GOLDEN.
cmake_minimum_required(VERSION 3.22)

execute_process(COMMAND "${PROGRAM}" OUTPUT_VARIABLE lines COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE "[^\n]* math-library\n" "" lines "${lines}")
file(READ "${GOLDEN}" golden)
if(NOT lines STREQUAL golden)
  message(FATAL_ERROR "The library's answers are not those of ${GOLDEN}.\nExpected:\n${golden}\n"
    "Got:\n${lines}\nWhen the change is wanted: ./dev check --update, and say so in CHANGELOG.md.")
endif()
