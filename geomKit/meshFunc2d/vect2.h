/// @file
/// `ktNM::vect2`, the two-component vector of mesh functions.
#pragma once

#include <cassert>
#include <cstddef>
#include <functional>
#include <iosfwd>
#include <type_traits>

#include "geomKit/meshFunc2d/foreignVector2.h"
#include "geomKit/vAlgebra/hashNumbers.h"

namespace ktNM {

/// A point or a vector of the parameter plane, or a 2D value: two components and nothing else.
///
/// `*` between vectors is the dot product. Nothing is checked: NaN and infinities pass through by
/// IEEE arithmetic. Any number of threads may use distinct objects.
template <typename T>
class vect2 {
public:
    T u;
    T v;

    /// (0, 0).
    constexpr vect2() noexcept : u(0), v(0) {}
    constexpr vect2(T u_, T v_) noexcept : u(u_), v(v_) {}
    /// From a vector of another library: any type with members x and y but no z, or with two
    /// elements by subscript, as `std::array`, `double[2]`, a `vect2` of another component type,
    /// and the vectors and expressions of Eigen, GLM and Imath.
    template <typename V, typename = std::enable_if_t<geomKit::detail::kIsForeignVector2<V> &&
                                                      !std::is_base_of_v<vect2, V>>>
    constexpr explicit vect2(const V& p)
        : vect2(geomKit::detail::foreignComponent2<T, 0>(p),
                geomKit::detail::foreignComponent2<T, 1>(p)) {}

    /// This vector as one of another library, `p.to<Eigen::Vector2f>()`: components are rounded to
    /// its element type.
    template <typename V>
    [[nodiscard]] constexpr V to() const {
        static_assert(geomKit::detail::kIsForeignVector2<V>,
                      "a type with x, y or two elements is wanted");
        return geomKit::detail::makeForeign2<V>(u, v);
    }

    /// Component 0 (`u`) or 1 (`v`). Any other index is the caller's fault: asserted in debug
    /// builds, `v` in release builds.
    [[nodiscard]] constexpr T operator[](int k) const noexcept {
        assert(k == 0 || k == 1);
        return k == 0 ? u : v;
    }
    [[nodiscard]] constexpr T& operator[](int k) noexcept {
        assert(k == 0 || k == 1);
        return k == 0 ? u : v;
    }
    /// The two components one after the other.
    [[nodiscard]] const T* data() const noexcept { return reinterpret_cast<const T*>(this); }
    [[nodiscard]] T* data() noexcept { return reinterpret_cast<T*>(this); }
    [[nodiscard]] const T* begin() const noexcept { return data(); }
    [[nodiscard]] T* begin() noexcept { return data(); }
    [[nodiscard]] const T* end() const noexcept { return data() + 2; }
    [[nodiscard]] T* end() noexcept { return data() + 2; }

    /// Equal in both components, without tolerance, unlike `Vector3`. Both zeros are equal, NaN
    /// equals nothing.
    [[nodiscard]] constexpr bool operator==(const vect2& b) const noexcept {
        return u == b.u && v == b.v;
    }
    [[nodiscard]] constexpr bool operator!=(const vect2& b) const noexcept { return !(*this == b); }

    [[nodiscard]] constexpr vect2 operator+(const vect2& b) const noexcept {
        return {u + b.u, v + b.v};
    }
    [[nodiscard]] constexpr vect2 operator-(const vect2& b) const noexcept {
        return {u - b.u, v - b.v};
    }
    [[nodiscard]] constexpr vect2 operator-() const noexcept { return {-u, -v}; }
    [[nodiscard]] constexpr vect2 operator*(T s) const noexcept { return {u * s, v * s}; }
    [[nodiscard]] friend constexpr vect2 operator*(T s, const vect2& a) noexcept { return a * s; }
    /// Divides each component, while `Vector3` multiplies by the reciprocal. s = 0 is not checked:
    /// infinities or NaN.
    [[nodiscard]] constexpr vect2 operator/(T s) const noexcept { return {u / s, v / s}; }
    /// Dot product u u' + v v'.
    [[nodiscard]] constexpr T operator*(const vect2& b) const noexcept { return u * b.u + v * b.v; }

    constexpr vect2& operator+=(const vect2& b) noexcept { return *this = *this + b; }
    constexpr vect2& operator-=(const vect2& b) noexcept { return *this = *this - b; }
    constexpr vect2& operator*=(T s) noexcept { return *this = *this * s; }
    constexpr vect2& operator/=(T s) noexcept { return *this = *this / s; }
};

static_assert(sizeof(vect2<double>) == 2 * sizeof(double) &&
                  std::is_standard_layout_v<vect2<double>> &&
                  std::is_trivially_copyable_v<vect2<double>>,
              "arrays of vect2<double> read as arrays of double");

/// Writes "(u, v)", in the stream's own number format.
template <typename Traits, typename T>
std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& os,
                                             const vect2<T>& p) {
    return os << '(' << p.u << ", " << p.v << ')';
}

}  // namespace ktNM

namespace std {

/// Goes with `==`.
template <typename T>
struct hash<ktNM::vect2<T>> {
    std::size_t operator()(const ktNM::vect2<T>& p) const noexcept {
        const double numbers[2] = {static_cast<double>(p.u), static_cast<double>(p.v)};
        return geomKit::detail::hashNumbers(numbers, 2);
    }
};

}  // namespace std
