/// @file
/// Digests of the library's answers: the same bits from every compiler, level and CPU family.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

#include "geomKit/vAlgebra/Matrix3.h"
#include "geomKit/vAlgebra/Vector3.h"

/// Reproducible inputs: the standard distributions differ between standard libraries. Draw into a
/// named variable, one draw a statement: compilers differ in the order of a call's arguments.
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
        const double x = uniform(-size, size);
        const double y = uniform(-size, size);
        const double z = uniform(-size, size);
        return {x, y, z};
    }
    Matrix3 matrix(double size) {
        const Vector3 a = vector(size);
        const Vector3 b = vector(size);
        const Vector3 c = vector(size);
        return {a, b, c};
    }

private:
    std::uint64_t state_;
};

/// One line of the digest: a name and a hash over the bits of everything added to it. Every NaN
/// hashes alike: which NaN an operation yields is not IEEE's to say.
class Digest {
public:
    /// Values that only IEEE operations and square roots lead to are the same everywhere. Values
    /// through sin, atan2, pow and the like are the same for one C library on one machine.
    enum class Arithmetic { Ieee, MathLibrary };

    explicit Digest(std::string name, Arithmetic arithmetic = Arithmetic::Ieee);
    /// Prints the line.
    ~Digest();
    Digest(const Digest&) = delete;
    Digest& operator=(const Digest&) = delete;

    void add(double v) {
        std::uint64_t bits = 0x7ff8000000000000u;
        if (v == v) std::memcpy(&bits, &v, sizeof bits);
        mix(bits);
    }
    template <typename Integer, typename = std::enable_if_t<std::is_integral_v<Integer>>>
    void add(Integer v) {
        mix(static_cast<std::uint64_t>(v));
    }
    void add(const Vector3& v) {
        add(v.x);
        add(v.y);
        add(v.z);
    }
    void add(const Matrix3& m) {
        for (int j = 0; j < 3; ++j)
            add(m.column(j));
    }

private:
    void mix(std::uint64_t bits) {
        for (int byte = 0; byte < 8; ++byte) {
            hash_ = (hash_ ^ ((bits >> (8 * byte)) & 0xffu)) * 0x100000001b3u;
        }
    }

    std::string name_;
    Arithmetic arithmetic_;
    std::uint64_t hash_ = 0xcbf29ce484222325u;
};

void digestVectorAlgebra();
void digestTransforms();
void digestQueries();
void digestFitting();
void digestImplicits();
void digestMeshFunctions();
