# Every symbol that the library LIBRARY exports lies in the project's namespaces or in those of the
# run-time libraries.
execute_process(COMMAND ${NM} -DC --defined-only ${LIBRARY} OUTPUT_VARIABLE output
  COMMAND_ERROR_IS_FATAL ANY)
string(REPLACE ";" "," output "${output}")
string(REPLACE "\n" ";" lines "${output}")
set(own "geomKit::|ktNM::")
set(run_time "std::|__gnu_cxx::|__cxxabiv1::|_init$|_fini$|_edata$|_end$|__bss_start$")
set(count 0)
foreach(line IN LISTS lines)
  if(NOT line MATCHES "^[0-9a-f]* *([A-Za-z]) (.+)$")
    continue()
  endif()
  set(symbol "${CMAKE_MATCH_2}")
  string(REGEX REPLACE
    "^(vtable|typeinfo|typeinfo name|VTT|guard variable|construction vtable|non-virtual thunk|virtual thunk)( for| to)? " ""
    symbol "${symbol}")
  # An instance of a function template has its result before its name.
  if(symbol MATCHES "^(${own})" OR symbol MATCHES "^[^(]* (${own})")
    math(EXPR count "${count} + 1")
  elseif(NOT symbol MATCHES "^(${run_time})" AND NOT symbol MATCHES "^[^(]* (${run_time})")
    message(SEND_ERROR "exported outside of the namespaces: ${CMAKE_MATCH_0}")
  endif()
endforeach()
if(count LESS 20)
  message(FATAL_ERROR "only ${count} symbols of the library were found")
endif()
