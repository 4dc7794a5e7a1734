# How every target of this project is compiled.

# Warnings and sanitizers: never passed on to consumers.
function(geomkit_private_flags target)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 $<$<BOOL:${GEOMKIT_WERROR}>:/WX>)
  else()
    target_compile_options(${target} PRIVATE
      -Wall -Wextra -Wpedantic -Wconversion -Wshadow $<$<BOOL:${GEOMKIT_WERROR}>:-Werror>)
  endif()
  if(GEOMKIT_SANITIZE)
    target_compile_options(${target} PRIVATE
      -fsanitize=${GEOMKIT_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${GEOMKIT_SANITIZE})
  endif()
endfunction()

# A library of the package, shared or static as BUILD_SHARED_LIBS says: hidden symbols, a version,
# C++17 without extensions. It is installed with the others. Packages named after DEPENDS are those
# that its headers need, those after PRIVATE_DEPENDS only its sources: programs that link the static
# library need them too. A library comes after those of ours that it links. The soname goes with
# what the package calls compatible: a minor release, before 1.0.
function(geomkit_add_library target export_name)
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "DEPENDS;PRIVATE_DEPENDS")
  set_property(GLOBAL APPEND PROPERTY GEOMKIT_LIBRARIES ${target})
  set_property(GLOBAL APPEND PROPERTY GEOMKIT_DEPENDENCIES ${arg_DEPENDS})
  add_library(${target})
  if(NOT BUILD_SHARED_LIBS)
    set_property(GLOBAL APPEND PROPERTY GEOMKIT_STATIC_DEPENDENCIES ${arg_PRIVATE_DEPENDS})
    target_compile_definitions(${target} PUBLIC GEOMKIT_STATIC)
  endif()
  add_library(geomKit::${export_name} ALIAS ${target})
  set_target_properties(${target} PROPERTIES
    EXPORT_NAME ${export_name}
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
    CXX_EXTENSIONS OFF
    POSITION_INDEPENDENT_CODE ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    INSTALL_RPATH "$<IF:$<PLATFORM_ID:Darwin>,@loader_path,$ORIGIN>"
    VERIFY_INTERFACE_HEADER_SETS ON
  )
  target_compile_features(${target} PUBLIC cxx_std_17)
  target_include_directories(${target} PUBLIC
    "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>" "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>")
  geomkit_private_flags(${target})
endfunction()

# File sets install headers and verify that each compiles alone; CMake has them since 3.23.
if(CMAKE_VERSION VERSION_LESS 3.23)
  set(GEOMKIT_FILE_SETS OFF)
elseif(NOT DEFINED GEOMKIT_FILE_SETS)
  set(GEOMKIT_FILE_SETS ON)
endif()

# geomkit_sources(target [PRIVATE file...] [HEADERS file...]): files of the calling folder; HEADERS
# are public and are installed.
function(geomkit_sources target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "PRIVATE;HEADERS")
  target_sources(${target} PRIVATE ${arg_PRIVATE})
  if(GEOMKIT_FILE_SETS)
    target_sources(${target} PUBLIC
      FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}" FILES ${arg_HEADERS})
    return()
  endif()
  target_sources(${target} PRIVATE ${arg_HEADERS})
  if(GEOMKIT_INSTALL)
    file(RELATIVE_PATH folder "${PROJECT_SOURCE_DIR}" "${CMAKE_CURRENT_SOURCE_DIR}")
    install(FILES ${arg_HEADERS} DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/${folder}")
  endif()
endfunction()
