# Installs the tree BUILD_DIR and moves the result to PREFIX: a package must not know where it lies.
cmake_minimum_required(VERSION 3.22)

file(REMOVE_RECURSE "${PREFIX}" "${PREFIX}-before")
execute_process(COMMAND ${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${PREFIX}-before"
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(RENAME "${PREFIX}-before" "${PREFIX}")
