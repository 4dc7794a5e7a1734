/// @file
/// Digests of the library's answers: the same bits from every compiler, level and CPU family.
#pragma once

#include <cstdint>
#include <cstring>
#include <type_traits>

#include "geomKit/geomKit.h"
#include "tests/reference/InputSource.h"

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
        } else if constexpr (std::is_base_of_v<geomKit::Vector3, T>) {
            for (int i = 0; i < 3; ++i)
                mix(hash, value[i]);
        } else if constexpr (std::is_same_v<geomKit::Matrix3, T>) {
            for (int j = 0; j < 3; ++j)
                mix(hash, value.column(j));
        } else if constexpr (std::is_same_v<geomKit::Matrix, T>) {
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
