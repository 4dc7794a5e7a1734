# Runs ${program} with ${arguments} in ${folder} and fails unless it
# - exits with ${status}, and says what ${stdout_has} and ${stderr_has} match,
# - leaves out/FILE for each file in ${png}, a picture 300 pixels wide that is no copy of another,
# - leaves out/FILE for the first in ${obj}: a mesh that matches the second of the list, with as many
#   normals as vertices and no number that is not finite.
file(REMOVE_RECURSE "${folder}")
file(MAKE_DIRECTORY "${folder}")
execute_process(COMMAND "${program}" ${arguments} WORKING_DIRECTORY "${folder}"
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE error)

function(expect_match text pattern)
  if(NOT text MATCHES "${pattern}")
    string(SUBSTRING "${text}" 0 2000 beginning)
    message(FATAL_ERROR "no \"${pattern}\" in\n${beginning}")
  endif()
endfunction()

if(NOT result STREQUAL status)
  message(FATAL_ERROR "status ${result}, not ${status}\n${output}\n${error}")
endif()
expect_match("${output}" "${stdout_has}")
expect_match("${error}" "${stderr_has}")

set(digests "")
foreach(picture IN LISTS png)
  file(SHA256 "${folder}/out/${picture}" digest)
  if("${digests}" MATCHES "${digest}")
    message(FATAL_ERROR "${picture} is a copy of another")
  endif()
  string(APPEND digests "${digest} ")
  file(READ "${folder}/out/${picture}" bytes LIMIT 24 HEX)
  expect_match("${bytes}" "^89504e470d0a1a0a0000000d494844520000012c")
endforeach()

if(obj)
  list(GET obj 0 mesh)
  list(GET obj 1 expected)
  file(READ "${folder}/out/${mesh}" text)
  expect_match("${text}" "${expected}")
  string(REGEX MATCHALL "(^|\n)v [^\n]*" vertices "${text}")
  string(REGEX MATCHALL "\nvn [^\n]*" normals "${text}")
  list(LENGTH vertices vertex_count)
  list(LENGTH normals normal_count)
  if(NOT vertex_count EQUAL normal_count OR "${vertices};${normals}" MATCHES "nan|inf")
    message(FATAL_ERROR "${mesh}: ${vertex_count} vertices, ${normal_count} normals")
  endif()
endif()
