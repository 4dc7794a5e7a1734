/// @file
/// Wider vector registers where the machine has them. Internal: not installed.
///
/// GEOMKIT_BASELINE_ONLY, which tests define, leaves them alone: what runs then is what machines
/// without AVX2 run.
#pragma once

namespace geomKit::detail {

#if defined(__x86_64__) && defined(__GNUC__) && !defined(GEOMKIT_BASELINE_ONLY)
#define GEOMKIT_INLINE_KERNEL __attribute__((always_inline)) inline

/// `Kernel(args...)`, compiled for AVX2.
template <auto Kernel, typename... Args>
__attribute__((target("avx2"))) auto callForAvx2(Args... args) {
    return Kernel(args...);
}

/// `Kernel(args...)`, with four doubles to a register instead of two if the machine has AVX2. That
/// brings no fused multiply-add, so the bits are the same. The kernel is declared
/// GEOMKIT_INLINE_KERNEL, and all that it calls in its loops must be inlined too.
template <auto Kernel, typename... Args>
auto callWide(Args... args) {
    return __builtin_cpu_supports("avx2") ? callForAvx2<Kernel>(args...) : Kernel(args...);
}
#else
#define GEOMKIT_INLINE_KERNEL inline

template <auto Kernel, typename... Args>
auto callWide(Args... args) {
    return Kernel(args...);
}
#endif

}  // namespace geomKit::detail
