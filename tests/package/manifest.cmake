# Compares the files below PREFIX with manifest.txt, or writes manifest.txt when UPDATE is set. A
# package of STATIC libraries has archives for the shared libraries and their links.
cmake_minimum_required(VERSION 3.22)

set(manifest "${CMAKE_CURRENT_LIST_DIR}/manifest.txt")

file(GLOB_RECURSE installed LIST_DIRECTORIES false RELATIVE "${PREFIX}" "${PREFIX}/*")
list(SORT installed)
list(JOIN installed "\n" installed)
string(REPLACE "${INCLUDEDIR}/" "@INCLUDEDIR@/" installed "${installed}")
string(REGEX REPLACE "(^|\n)${LIBDIR}/" "\\1@LIBDIR@/" installed "${installed}")
string(REPLACE ".so.${VERSION}" ".so.@VERSION@" installed "${installed}")
string(REGEX REPLACE "\\.so\\.${SOVERSION}(\n|$)" ".so.@SOVERSION@\\1" installed "${installed}")
string(REGEX REPLACE "/auto-load/[^\n]*/${LIBDIR}/" "/auto-load/@PREFIX@/@LIBDIR@/" installed
  "${installed}")
# The targets file of a build type is named after it.
string(REGEX REPLACE "Targets-[a-z]+\\.cmake" "Targets-@CONFIG@.cmake" installed "${installed}")

if(UPDATE)
  file(WRITE "${manifest}" "${installed}\n")
  return()
endif()

file(READ "${manifest}" expected)
if(STATIC)
  string(REGEX REPLACE "[^\n]*\\.so\\.[^\n]*\n" "" expected "${expected}")
  string(REPLACE ".so\n" ".a\n" expected "${expected}")
endif()
if(NOT "${installed}\n" STREQUAL expected)
  string(REPLACE "\n" ";" installed "${installed}")
  string(REPLACE "\n" ";" expected "${expected}")
  set(added ${installed})
  list(REMOVE_ITEM added ${expected})
  set(missing ${expected})
  list(REMOVE_ITEM missing ${installed})
  message(FATAL_ERROR "The installed files are not those of manifest.txt.\nNew: ${added}\n"
    "Missing: ${missing}\nWhen that is wanted: ./dev check --update")
endif()
