/// @file
/// Reproducible inputs of tests, digests and benchmarks.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "geomKit/vAlgebra/Matrix3.h"
#include "geomKit/vAlgebra/Vector3.h"

/// Random numbers that are the same everywhere: the distributions of standard libraries differ. One
/// draw an expression, or a list in braces: compilers differ in the order of a call's arguments.
class InputSource {
public:
    explicit InputSource(std::uint64_t seed) : state_(seed) {}

    std::uint64_t bits() {
        std::uint64_t z = (state_ += 0x9e3779b97f4a7c15u);
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
        return z ^ (z >> 31);
    }
    /// In [lo, hi).
    double uniform(double lo, double hi) {
        return lo + (hi - lo) * (static_cast<double>(bits() >> 11) * 0x1p-53);
    }
    int index(int count) { return static_cast<int>(bits() % static_cast<std::uint64_t>(count)); }
    geomKit::Vector3 vector(double size) {
        return geomKit::Vector3{uniform(-size, size), uniform(-size, size), uniform(-size, size)};
    }
    /// Of whole numbers, of which sums and products are exact.
    geomKit::Vector3 whole(int size) {
        return geomKit::Vector3{index(2 * size + 1) - 1.0 * size, index(2 * size + 1) - 1.0 * size,
                                index(2 * size + 1) - 1.0 * size};
    }
    template <std::size_t N>
    std::array<geomKit::Vector3, N> vectors(double size) {
        std::array<geomKit::Vector3, N> all;
        for (geomKit::Vector3& v : all)
            v = vector(size);
        return all;
    }
    geomKit::Matrix3 matrix(double size) {
        return geomKit::Matrix3{vector(size), vector(size), vector(size)};
    }

private:
    std::uint64_t state_;
};
