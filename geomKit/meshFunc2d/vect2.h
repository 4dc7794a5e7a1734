/// @file
/// `ktNM::vect2`, the two-component vector of mesh functions.
#pragma once

#include <cassert>

namespace ktNM {

/// A point or a vector of the parameter plane, or a 2D value: two components and nothing else.
template <typename T>
class vect2 {
public:
    T u;
    T v;

    /// (0, 0).
    constexpr vect2() : u(0), v(0) {}
    constexpr vect2(T u_, T v_) : u(u_), v(v_) {}

    /// Component 0 (`u`) or 1 (`v`). Any other index is the caller's fault: asserted in debug
    /// builds, `v` in release builds.
    constexpr T operator[](int k) const {
        assert(k == 0 || k == 1);
        return k == 0 ? u : v;
    }
    constexpr T& operator[](int k) {
        assert(k == 0 || k == 1);
        return k == 0 ? u : v;
    }

    constexpr vect2 operator+(const vect2& b) const { return {u + b.u, v + b.v}; }
    constexpr vect2 operator-(const vect2& b) const { return {u - b.u, v - b.v}; }
    constexpr vect2 operator*(T s) const { return {u * s, v * s}; }
    /// Dot product u u' + v v'.
    constexpr T operator*(const vect2& b) const { return u * b.u + v * b.v; }
    constexpr vect2& operator+=(const vect2& b) {
        u += b.u;
        v += b.v;
        return *this;
    }
};

}  // namespace ktNM
