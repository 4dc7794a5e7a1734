# How every target of this project is compiled.

# Warnings and sanitizers: never passed on to consumers.
function(geomkit_private_flags target)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4)
  else()
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
  endif()
  if(GEOMKIT_WERROR)
    set_target_properties(${target} PROPERTIES COMPILE_WARNING_AS_ERROR ON)
  endif()
  if(GEOMKIT_SANITIZE)
    target_compile_options(${target} PRIVATE
      -fsanitize=${GEOMKIT_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${GEOMKIT_SANITIZE})
  endif()
endfunction()

# A shared library of the package: hidden symbols, a version, C++17 without extensions. It is
# installed with the others; packages named after DEPENDS are those that its headers need. A library
# comes after those of ours that it links. The soname goes with what the package calls compatible: a
# minor release, before 1.0.
function(geomkit_add_library target export_name)
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "" DEPENDS)
  set_property(GLOBAL APPEND PROPERTY GEOMKIT_LIBRARIES ${target})
  set_property(GLOBAL APPEND PROPERTY GEOMKIT_DEPENDENCIES ${arg_DEPENDS})
  add_library(${target} SHARED)
  add_library(geomKit::${export_name} ALIAS ${target})
  set_target_properties(${target} PROPERTIES
    EXPORT_NAME ${export_name}
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    INSTALL_RPATH "$<IF:$<PLATFORM_ID:Darwin>,@loader_path,$ORIGIN>"
    VERIFY_INTERFACE_HEADER_SETS ON
  )
  target_compile_features(${target} PUBLIC cxx_std_17)
  geomkit_private_flags(${target})
endfunction()
