# Builds a program (digest or loader) as a consumer that gets geomKit by WAY, with the compiler CXX and
# FLAGS, and runs it. The loader must succeed, the digest print what the program DIGEST prints.
# OPTIONS go to the consumer's CMake or to pkg-config; without a PROGRAM nothing is built.
cmake_minimum_required(VERSION 3.22)

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# The sources are copied, so that no include path leads back to the headers of the source tree.
file(REMOVE_RECURSE "${WORK_DIR}")
file(COPY "${CMAKE_CURRENT_LIST_DIR}/consumer/" DESTINATION "${WORK_DIR}")
file(COPY "${SOURCE_DIR}/tests/golden" "${SOURCE_DIR}/tests/reference" DESTINATION "${WORK_DIR}/tests")
set(sources "tests/golden/*.cpp")
if(PROGRAM STREQUAL "loader")
  set(sources "loader.cpp")
endif()

if(WAY STREQUAL "pkg-config")
  set(ENV{PKG_CONFIG_PATH} "${PREFIX}/${LIBDIR}/pkgconfig")
  execute_process(COMMAND "${PKG_CONFIG}" --cflags --libs ${OPTIONS} geomKit
    OUTPUT_VARIABLE package_flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(arguments UNIX_COMMAND "${FLAGS} ${package_flags}")
  file(GLOB sources "${WORK_DIR}/${sources}")
  set(warnings -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
  set(consumer "${WORK_DIR}/consumer")
  run("${CXX}" -std=c++17 ${warnings} "-I${WORK_DIR}" ${sources} ${arguments} -o "${consumer}"
    "-Wl,-rpath,${PREFIX}/${LIBDIR}")
else()
  run(${CMAKE_COMMAND} -S "${WORK_DIR}" -B "${WORK_DIR}/build" -D "WAY=${WAY}"
    -D "SOURCE_DIR=${SOURCE_DIR}" -D "SOURCES=${sources}" -D "CMAKE_PREFIX_PATH=${PREFIX}"
    -D "CMAKE_CXX_COMPILER=${CXX}" -D "CMAKE_CXX_FLAGS=${FLAGS}" ${OPTIONS})
  if(NOT PROGRAM)
    return()
  endif()
  run(${CMAKE_COMMAND} --build "${WORK_DIR}/build" --parallel 2)
  set(consumer "${WORK_DIR}/build/consumer")
endif()

execute_process(COMMAND "${consumer}" OUTPUT_VARIABLE answers COMMAND_ERROR_IS_FATAL ANY)
if(PROGRAM STREQUAL "digest")
  execute_process(COMMAND "${DIGEST}" OUTPUT_VARIABLE expected COMMAND_ERROR_IS_FATAL ANY)
  if(NOT answers STREQUAL expected)
    message(FATAL_ERROR "The consumer's answers differ.\nExpected:\n${expected}\nGot:\n${answers}")
  endif()
endif()
