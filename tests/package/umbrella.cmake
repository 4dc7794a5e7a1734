# geomKit/geomKit.h brings every installed header: the compiler CXX lists what it includes.
cmake_minimum_required(VERSION 3.22)

execute_process(COMMAND "${CXX}" -std=c++17 -M "-I${PREFIX}/${INCLUDEDIR}"
  "${PREFIX}/${INCLUDEDIR}/geomKit/geomKit.h"
  OUTPUT_VARIABLE included RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "the header does not compile")
endif()
file(GLOB_RECURSE headers RELATIVE "${PREFIX}/${INCLUDEDIR}" "${PREFIX}/${INCLUDEDIR}/geomKit/*.h")
set(missing "")
foreach(header IN LISTS headers)
  string(FIND "${included}" "/${header}" position)
  if(position EQUAL -1)
    list(APPEND missing "${header}")
  endif()
endforeach()
list(LENGTH headers count)
if(missing OR count LESS 50)
  message(FATAL_ERROR "Of ${count} headers geomKit/geomKit.h does not bring: ${missing}")
endif()
