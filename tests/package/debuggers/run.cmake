# Has GDB run check_printers.py over PROGRAM with the files of FOLDER.
cmake_minimum_required(VERSION 3.22)

find_program(GDB_EXECUTABLE gdb)
if(NOT GDB_EXECUTABLE)
  message("skipped: there is no GDB")
  return()
endif()
execute_process(
  COMMAND "${GDB_EXECUTABLE}" -nx -batch
    -ex "python arguments = ['${FOLDER}/geomkit_printers.py', '${FOLDER}/geomKit.natvis']"
    -ex "source ${CMAKE_CURRENT_LIST_DIR}/check_printers.py" "${PROGRAM}"
  OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE status)
if(output MATCHES "Operation not permitted|Python scripting is not supported")
  message("skipped: this GDB cannot trace or has no Python")
elseif(NOT status EQUAL 0)
  message(FATAL_ERROR "${output}")
endif()
