# Which compiler flags are refused, and where: by the header geomKit/export.h, tried with each of the
# COMPILERS (id=command), and by CMake's reading of the flags. SOURCE_DIR is the project's folder.
cmake_minimum_required(VERSION 3.22)
include("${SOURCE_DIR}/cmake/GeomKitFlags.cmake")

# The flag (one or several, joined by commas), then who refuses it.
set(rows
  "-O2:"
  "-fno-math-errno:"
  "-fno-trapping-math:"
  "-frounding-math:"
  "-ffp-contract=off:"
  "-ffp-contract=fast:" # the package's own flag comes after it
  "-Ofast:GNU Clang CMake"
  "-ffast-math:GNU Clang CMake"
  "-ffast-math,-fno-finite-math-only:GNU CMake"
  "-ffinite-math-only:GNU Clang CMake"
  "-funsafe-math-optimizations:GNU CMake"
  "-fassociative-math,-fno-signed-zeros,-fno-trapping-math:GNU CMake"
  "-freciprocal-math:GNU CMake"
  "-fno-signed-zeros:GNU CMake"
  "-fsingle-precision-constant:GNU CMake"
  "-ffp-model=fast:Clang CMake"
  "-fapprox-func:CMake"
  "/fp:fast:CMake"
  "-D_M_FP_FAST:GNU Clang" # what /fp:fast defines
  "-D_M_FP_CONTRACT:GNU Clang"
)

# The answer of the header: taken, refused, or unknown when the compiler does not know the flags.
function(ask_header result command flags)
  set(${result} taken PARENT_SCOPE)
  execute_process(
    COMMAND "${command}" -std=c++17 -fsyntax-only ${flags} -I "${SOURCE_DIR}" -x c++
      "${SOURCE_DIR}/geomKit/export.h"
    RESULT_VARIABLE status ERROR_VARIABLE errors OUTPUT_QUIET)
  if(errors MATCHES "geomKit promises its results")
    set(${result} refused PARENT_SCOPE)
  elseif(errors MATCHES "unknown argument|unrecognized|not found|no such file")
    set(${result} unknown PARENT_SCOPE)
  elseif(NOT status EQUAL 0)
    message(SEND_ERROR "${command} ${flags}: ${errors}")
  endif()
endfunction()

foreach(row IN LISTS rows)
  string(REGEX MATCH "^(.*):([^:]*)$" row "${row}")
  string(REPLACE "," ";" flags "${CMAKE_MATCH_1}")
  string(REPLACE " " ";" expected "${CMAKE_MATCH_2}")
  set(ids CMake)
  set(answers "")
  foreach(compiler IN LISTS COMPILERS)
    string(REGEX MATCH "^(.*)=(.*)$" compiler "${compiler}")
    set(id "${CMAKE_MATCH_1}")
    set(command "${CMAKE_MATCH_2}")
    ask_header(answer "${command}" "${flags}")
    if(NOT answer STREQUAL "unknown")
      list(APPEND ids ${id})
    endif()
    if(answer STREQUAL "refused")
      list(APPEND answers ${id})
    endif()
  endforeach()
  list(JOIN flags " " flags)
  geomkit_refused_flags(refused "-O3 ${flags} -g")
  if(refused)
    list(APPEND answers CMake)
  endif()
  foreach(id IN LISTS ids)
    if(id IN_LIST expected AND NOT id IN_LIST answers)
      message(SEND_ERROR "${id} took ${flags}")
    elseif(id IN_LIST answers AND NOT id IN_LIST expected)
      message(SEND_ERROR "${id} refused ${flags}")
    endif()
  endforeach()
endforeach()
