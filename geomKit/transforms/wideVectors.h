/// @file
/// For loops that pay for wider registers than the baseline processor has. Not installed.
#pragma once

#include <climits>  // for __GLIBC__

/// Compiles a function for AVX too; the loader takes that one where the processor has it. The bits
/// are the same: AVX alone has no fused multiply-add. g++ only: clang 14 cannot link such functions
/// across source files.
#if defined(__x86_64__) && defined(__GLIBC__) && !defined(__AVX__) && !defined(__clang__)
#define GEOMKIT_WIDE __attribute__((target_clones("avx", "default")))
#else
#define GEOMKIT_WIDE
#endif

/// For what such a function calls: only what is inlined is compiled twice with it.
#if defined(__GNUC__)
#define GEOMKIT_WIDE_PART __attribute__((always_inline)) inline
#else
#define GEOMKIT_WIDE_PART inline
#endif
