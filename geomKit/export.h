/// @file
/// Which symbols the shared library shows, and what its arithmetic asks of the compiler.
#pragma once

#include <cfloat>

#if defined(GEOMKIT_STATIC)
#define GEOMKIT_API
#elif defined(_WIN32)
#if defined(geomKit_EXPORTS)
#define GEOMKIT_API __declspec(dllexport)
#else
#define GEOMKIT_API __declspec(dllimport)
#endif
#else
#define GEOMKIT_API __attribute__((visibility("default")))
#endif

/// For arithmetic that several instruction sets share: each caller compiles it for its own.
#if defined(__GNUC__)
#define GEOMKIT_ALWAYS_INLINE __attribute__((always_inline)) inline
#else
#define GEOMKIT_ALWAYS_INLINE inline
#endif

// Inline code obeys the including file's flags. The CMake target and the pkg-config file switch
// contraction off; the modes below would change documented results and can be told apart here.
#if defined(__FAST_MATH__) || defined(_M_FP_FAST) || defined(_M_FP_CONTRACT)
#error "geomKit promises its results bit for bit: compile without -ffast-math, -Ofast, /fp:fast"
#endif
#if defined(__FINITE_MATH_ONLY__)
#if __FINITE_MATH_ONLY__
#error "geomKit promises its results bit for bit: compile without -ffinite-math-only"
#endif
#endif
// g++ says by this macro whether -funsafe-math-optimizations or any part of it is on.
#if defined(__GCC_IEC_559) && !defined(__clang__)
#if __GCC_IEC_559 == 0
#error "geomKit promises its results bit for bit: compile without -funsafe-math-optimizations"
#endif
#endif
static_assert(FLT_EVAL_METHOD == 0, "geomKit needs plain IEEE double evaluation (no x87 excess)");

/// Everything that the library offers, but for `ktNM::vect2`. Hosts write `geomKit::Vector3`, or
/// `using namespace geomKit;` once in a source file.
namespace geomKit {}
