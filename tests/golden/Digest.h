/// @file
/// Digests of the library's answers: the same bits from every compiler, level and CPU family.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "geomKit/geomKit.h"

/// Reproducible inputs: the standard distributions differ between standard libraries. One draw an
/// expression, or a list in braces: compilers differ in the order of a call's arguments.
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
    Vector3 vector(double size) {
        return Vector3{uniform(-size, size), uniform(-size, size), uniform(-size, size)};
    }
    /// Of whole numbers, of which sums and products are exact.
    Vector3 whole(int size) {
        return Vector3{index(2 * size + 1) - 1.0 * size, index(2 * size + 1) - 1.0 * size,
                       index(2 * size + 1) - 1.0 * size};
    }
    template <std::size_t N>
    std::array<Vector3, N> vectors(double size) {
        std::array<Vector3, N> all;
        for (Vector3& v : all)
            v = vector(size);
        return all;
    }
    Matrix3 matrix(double size) { return Matrix3{vector(size), vector(size), vector(size)}; }

private:
    std::uint64_t state_;
};

/// The digest of one family of functions: hashes over the bits of everything added. Every NaN
/// hashes alike: which NaN an operation yields is not IEEE's to say.
class Digest {
public:
    /// Adds numbers, vectors, matrices and ranges of them from left to right. What IEEE operations
    /// and square roots lead to is the same everywhere. Arguments are read when all of them have
    /// been computed: one call may fill variables that stand beside it, never two.
    template <typename... Values>
    void add(const Values&... values) {
        (mix(ieee_, values), ...);
    }
    /// For what passes through sin, atan2, pow and the like: one C library's, on one machine.
    template <typename... Values>
    void addMath(const Values&... values) {
        (mix(math_, values), ...);
    }
    bool operator==(const Digest& d) const { return ieee_ == d.ieee_ && math_ == d.math_; }
    /// Prints a line for each of the two hashes that something was added to.
    void print(const char* name) const;

private:
    using Hash = std::uint64_t;
    static constexpr Hash kEmpty = 0xcbf29ce484222325u;

    template <typename T>
    static void mix(Hash& hash, const T& value) {
        if constexpr (std::is_integral_v<T>) {
            for (int shift = 0; shift < 64; shift += 8)
                hash = (hash ^ ((static_cast<Hash>(value) >> shift) & 0xffu)) * 0x100000001b3u;
        } else if constexpr (std::is_floating_point_v<T>) {
            const double wide = value;
            Hash bits = 0x7ff8000000000000u;
            if (wide == wide) std::memcpy(&bits, &wide, sizeof bits);
            mix(hash, bits);
        } else if constexpr (std::is_base_of_v<Vector3, T>) {
            for (int i = 0; i < 3; ++i)
                mix(hash, value[i]);
        } else if constexpr (std::is_same_v<Matrix3, T>) {
            for (int j = 0; j < 3; ++j)
                mix(hash, value.column(j));
        } else if constexpr (std::is_same_v<Matrix, T>) {
            for (int i = 0; i < 16; ++i)
                mix(hash, value(i / 4, i % 4));
        } else {
            for (const auto& part : value)
                mix(hash, part);
        }
    }

    Hash ieee_ = kEmpty;
    Hash math_ = kEmpty;
};

/// Prints the digest of `samples` calls of `add(digest, in, i)`, i = 0, 1, ...
void sample(const char* name, std::uint64_t seed, int samples,
            void (*add)(Digest&, InputSource&, int));

void digestVectorAlgebra();
void digestTransforms();
void digestQueries();
void digestImplicits();
void digestMeshFunctions();
