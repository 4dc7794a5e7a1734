# Compiler flags that change documented answers. geomKit/export.h refuses those that a compiler tells
# by a macro; this finds the same flags, and the others, where CMake's variables name them. The project
# and the installed package both ask.

# Sets ${result} to the refused ones among FLAGS, a command line's text.
function(geomkit_refused_flags result flags)
  set(refused
    -Ofast -ffast-math -funsafe-math-optimizations -fassociative-math -freciprocal-math
    -ffinite-math-only -fno-honor-nans -fno-honor-infinities -fno-signed-zeros -fapprox-func
    -fsingle-precision-constant -ffp-model=fast -ffp-model=aggressive -mdaz-ftz
    /fp:fast -fp:fast /fp:contract -fp:contract)
  separate_arguments(words NATIVE_COMMAND "${flags}")
  set(found "")
  foreach(word IN LISTS words)
    if(word IN_LIST refused)
      list(APPEND found "${word}")
    endif()
  endforeach()
  set(${result} "${found}" PARENT_SCOPE)
endfunction()

# The same for what the calling folder compiles with, in any of its build types.
function(geomkit_refused_flags_here result)
  get_directory_property(options COMPILE_OPTIONS)
  set(flags "${CMAKE_CXX_FLAGS}")
  list(JOIN options " " options)
  string(APPEND flags " ${options}")
  foreach(config IN LISTS CMAKE_BUILD_TYPE CMAKE_CONFIGURATION_TYPES)
    string(TOUPPER "${config}" config)
    string(APPEND flags " ${CMAKE_CXX_FLAGS_${config}}")
  endforeach()
  geomkit_refused_flags(found "${flags}")
  if(found)
    list(JOIN found " " found)
    set(found "geomKit promises its results bit for bit: compile without ${found}")
  endif()
  set(${result} "${found}" PARENT_SCOPE)
endfunction()
