# Runs ${program} with ${arguments} and fails unless it exits with ${status}, and what it prints
# matches ${output_has}: on stdout when the status is 0, else on stderr.
execute_process(COMMAND "${program}" ${arguments}
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE error)
if(NOT result STREQUAL status)
  message(FATAL_ERROR "status ${result}, not ${status}\n${output}\n${error}")
endif()
if(NOT status EQUAL 0)
  set(output "${error}")
endif()
if(NOT output MATCHES "${output_has}")
  message(FATAL_ERROR "no \"${output_has}\" in\n${output}")
endif()
