/// @file
/// `Vector3`, the three-component vector that every other part of the library passes around.
#pragma once

#include <cassert>
#include <cmath>
#include <type_traits>

#include "geomKit/export.h"
#include "geomKit/vAlgebra/Tolerances.h"
#include "geomKit/vAlgebra/foreignVector.h"

namespace geomKit {

class UVector3;

/// A point, a direction or a normal: three doubles and nothing else.
///
/// `*` between vectors is the dot product, `%` the cross product. All tolerances are absolute (see
/// Tolerances.h). No member throws; NaN and infinities pass through by IEEE arithmetic. Sums of
/// squares are formed plainly, so lengths overflow above about 1e154. Functions are pure apart from
/// the in-place mutators: any number of threads may use distinct objects.
class Vector3 {
public:
    double x;
    double y;
    double z;

    /// The zero vector.
    constexpr Vector3() noexcept : x(0.0), y(0.0), z(0.0) {}
    constexpr Vector3(double x_, double y_, double z_) noexcept : x(x_), y(y_), z(z_) {}
    /// From a vector of another library: any type with members x, y and z but no w, or with three
    /// elements by subscript, as `std::array`, `double[3]`, and the vectors and expressions of
    /// Eigen, GLM and Imath.
    template <typename V, typename = std::enable_if_t<detail::kIsForeignVector<V> &&
                                                      !std::is_base_of_v<Vector3, V>>>
    constexpr explicit Vector3(const V& v)
        : Vector3(detail::foreignComponent<0>(v), detail::foreignComponent<1>(v),
                  detail::foreignComponent<2>(v)) {}

    /// This vector as one of another library, `v.to<Eigen::Vector3f>()`: components are rounded to
    /// its element type.
    template <typename V>
    [[nodiscard]] constexpr V to() const {
        static_assert(detail::kIsForeignVector<V>,
                      "a type with x, y, z or three elements is wanted");
        return detail::makeForeign<V>(x, y, z);
    }

    /// Component 0, 1 or 2. Any other index is the caller's fault: asserted in debug builds, `z` in
    /// release builds.
    [[nodiscard]] constexpr double operator[](int i) const noexcept;
    [[nodiscard]] constexpr double& operator[](int i) noexcept;
    /// The three components one after the other.
    [[nodiscard]] const double* data() const noexcept;
    [[nodiscard]] double* data() noexcept;
    [[nodiscard]] const double* begin() const noexcept { return data(); }
    [[nodiscard]] double* begin() noexcept { return data(); }
    [[nodiscard]] const double* end() const noexcept { return data() + 3; }
    [[nodiscard]] double* end() noexcept { return data() + 3; }

    /// Equal within `kEqualDistSqTol`: the squared distance is strictly below 1e-16. Not
    /// transitive; false when a component is NaN. See `equalsExactly`.
    [[nodiscard]] constexpr bool operator==(const Vector3& v) const noexcept;
    [[nodiscard]] constexpr bool operator!=(const Vector3& v) const noexcept;
    /// Equal in every component, without tolerance. Both zeros are equal, NaN equals nothing.
    [[nodiscard]] constexpr bool equalsExactly(const Vector3& v) const noexcept;

    [[nodiscard]] constexpr Vector3 operator+(const Vector3& v) const noexcept;
    [[nodiscard]] constexpr Vector3 operator-(const Vector3& v) const noexcept;
    [[nodiscard]] constexpr Vector3 operator-() const noexcept;
    [[nodiscard]] constexpr Vector3 operator*(double s) const noexcept;
    /// Multiplies by the reciprocal 1/s, formed once. s = 0 is not checked: infinities or NaN.
    [[nodiscard]] constexpr Vector3 operator/(double s) const noexcept;
    /// Dot product, summed in the order x, y, z.
    [[nodiscard]] constexpr double operator*(const Vector3& v) const noexcept;
    /// Cross product, right-handed.
    [[nodiscard]] constexpr Vector3 operator%(const Vector3& v) const noexcept;

    constexpr Vector3& operator+=(const Vector3& v) noexcept;
    constexpr Vector3& operator-=(const Vector3& v) noexcept;
    constexpr Vector3& operator*=(double s) noexcept;
    /// As `/`: by the reciprocal.
    constexpr Vector3& operator/=(double s) noexcept;

    /// The dot product with itself.
    [[nodiscard]] constexpr double lengthSq() const noexcept;
    [[nodiscard]] double length() const noexcept;

    /// True when every component is strictly below 1e-13 in absolute value. It is a test per
    /// component, not of the length. False when a component is NaN.
    [[nodiscard]] bool isNull() const noexcept;

    /// Scales to length 1 and returns true; if `isNull()`, returns false and changes nothing. A
    /// finite vector whose squared length overflows becomes zero and returns true.
    bool autoNormalize() noexcept;

    /// The unit vector of this direction; a null vector (x, y, z) becomes (x, y, 1).
    [[nodiscard]] UVector3 normalize() const noexcept;

    /// True when the lines along both vectors (either orientation) are closer than the angle whose
    /// cosine is `cosTol`: (this . v)^2 > |this|^2 |v|^2 cosTol^2, strictly.
    /// A negative `cosTol` selects the default of 0.03 degrees. False if either vector is null.
    [[nodiscard]] bool isParallel(const Vector3& v, double cosTol) const noexcept;
    /// `isParallel` within 5 degrees.
    [[nodiscard]] bool isAlmostParallel(const Vector3& v) const noexcept;

    /// True when the vectors are perpendicular within the angle whose sine is `cosTol`:
    /// (this . v)^2 < |this|^2 |v|^2 cosTol^2, strictly. A negative `cosTol` selects the default of
    /// 0.03 degrees. False if either vector is null.
    [[nodiscard]] bool isNormal(const Vector3& v, double cosTol) const noexcept;
    /// `isNormal` within 5 degrees.
    [[nodiscard]] bool isAlmostNormal(const Vector3& v) const noexcept;

    /// With d = this - a and n the unit vector of b - a: a + (b - a)(n . d) - d.
    /// For |b - a| = 1 this is a moved by the negated part of d that is perpendicular to the line
    /// ab. For other lengths the unnormalised b - a scales the result; callers rely on that form.
    /// a = b takes n = (0, 0, 1).
    [[nodiscard]] Vector3 reflect(const Vector3& a, const Vector3& b) const noexcept;

    /// Least-squares coordinates of this vector in the plane of `basis[0]` and `basis[1]`, which
    /// need be neither unit nor perpendicular: writes (c0, c1, 0) to `coords` if it is not null.
    ///
    /// When the Gram determinant is below 1e-8 in absolute value, the longer basis vector alone is
    /// used (a tie takes the first) and the other coordinate is 0. If that one's squared length is
    /// below 1e-16 too, returns false and writes nothing.
    bool pullBack(const Vector3* basis, Vector3* coords) const noexcept;

    /// True when the foot of this point in the plane of the triangle lies inside it by more than
    /// 1e-13 in every barycentric weight (strict): edges and vertices are outside, and so is
    /// everything when the triangle has no usable edge.
    [[nodiscard]] bool isInTriangle(const Vector3& a, const Vector3& b,
                                    const Vector3& c) const noexcept;
};

[[nodiscard]] constexpr Vector3 operator*(double s, const Vector3& v) noexcept;

constexpr double Vector3::operator[](int i) const noexcept {
    assert(i >= 0 && i < 3);
    return i == 0 ? x : i == 1 ? y : z;
}

constexpr double& Vector3::operator[](int i) noexcept {
    assert(i >= 0 && i < 3);
    return i == 0 ? x : i == 1 ? y : z;
}

static_assert(sizeof(Vector3) == 3 * sizeof(double) && std::is_standard_layout_v<Vector3> &&
                  std::is_trivially_copyable_v<Vector3>,
              "arrays of Vector3 read as arrays of double");

// The pointers come from the object, not from `x`: a compiler may take a pointer to a member for
// one that cannot reach the next.
inline const double* Vector3::data() const noexcept {
    return reinterpret_cast<const double*>(this);
}

inline double* Vector3::data() noexcept {
    return reinterpret_cast<double*>(this);
}

constexpr bool Vector3::operator==(const Vector3& v) const noexcept {
    return (*this - v).lengthSq() < kEqualDistSqTol;
}

constexpr bool Vector3::operator!=(const Vector3& v) const noexcept {
    return !(*this == v);
}

constexpr bool Vector3::equalsExactly(const Vector3& v) const noexcept {
    return x == v.x && y == v.y && z == v.z;
}

constexpr Vector3 Vector3::operator+(const Vector3& v) const noexcept {
    return {x + v.x, y + v.y, z + v.z};
}

constexpr Vector3 Vector3::operator-(const Vector3& v) const noexcept {
    return {x - v.x, y - v.y, z - v.z};
}

constexpr Vector3 Vector3::operator-() const noexcept {
    return {-x, -y, -z};
}

constexpr Vector3 Vector3::operator*(double s) const noexcept {
    return {x * s, y * s, z * s};
}

constexpr Vector3 Vector3::operator/(double s) const noexcept {
    const double r = 1.0 / s;
    return {x * r, y * r, z * r};
}

constexpr double Vector3::operator*(const Vector3& v) const noexcept {
    return x * v.x + y * v.y + z * v.z;
}

constexpr Vector3 Vector3::operator%(const Vector3& v) const noexcept {
    return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
}

constexpr Vector3& Vector3::operator*=(double s) noexcept {
    x *= s;
    y *= s;
    z *= s;
    return *this;
}

constexpr Vector3& Vector3::operator+=(const Vector3& v) noexcept {
    x += v.x;
    y += v.y;
    z += v.z;
    return *this;
}

constexpr Vector3& Vector3::operator-=(const Vector3& v) noexcept {
    x -= v.x;
    y -= v.y;
    z -= v.z;
    return *this;
}

constexpr Vector3 operator*(double s, const Vector3& v) noexcept {
    return v * s;
}

constexpr Vector3& Vector3::operator/=(double s) noexcept {
    return *this = *this / s;
}

constexpr double Vector3::lengthSq() const noexcept {
    return *this * *this;
}

inline double Vector3::length() const noexcept {
    return std::sqrt(lengthSq());
}

inline bool Vector3::isNull() const noexcept {
    return std::abs(x) < kNullComponentTol && std::abs(y) < kNullComponentTol &&
           std::abs(z) < kNullComponentTol;
}

inline bool Vector3::autoNormalize() noexcept {
    if (isNull()) return false;
    *this *= 1.0 / length();
    return true;
}

inline bool Vector3::isParallel(const Vector3& v, double cosTol) const noexcept {
    if (isNull() || v.isNull()) return false;
    const double bound = cosTol < 0.0 ? kParallelCosSqDefault : cosTol * cosTol;
    const double dot = *this * v;
    return dot * dot > lengthSq() * v.lengthSq() * bound;
}

inline bool Vector3::isAlmostParallel(const Vector3& v) const noexcept {
    return isParallel(v, kAlmostParallelCos);
}

inline bool Vector3::isNormal(const Vector3& v, double cosTol) const noexcept {
    if (isNull() || v.isNull()) return false;
    const double c = cosTol < 0.0 ? kNormalCosDefault : cosTol;
    const double dot = *this * v;
    return dot * dot < lengthSq() * v.lengthSq() * (c * c);
}

inline bool Vector3::isAlmostNormal(const Vector3& v) const noexcept {
    return isNormal(v, kAlmostNormalCos);
}

inline bool Vector3::pullBack(const Vector3* basis, Vector3* coords) const noexcept {
    const Vector3& e0 = basis[0];
    const Vector3& e1 = basis[1];
    const double r0 = *this * e0;
    const double r1 = *this * e1;
    const double g00 = e0 * e0;
    const double g01 = e0 * e1;
    const double g10 = e1 * e0;
    const double g11 = e1 * e1;
    const double det = g00 * g11 - g01 * g10;

    double c0 = 0.0;
    double c1 = 0.0;
    if (std::abs(det) >= kGram2DetTol) {
        const double r = 1.0 / det;
        c0 = (g11 * r) * r0 + (-g01 * r) * r1;
        c1 = (-g10 * r) * r0 + (g00 * r) * r1;
    } else if (g11 > g00) {
        if (g11 < kGram2DiagTol) return false;
        c1 = r1 / g11;
    } else {
        if (g00 < kGram2DiagTol) return false;
        c0 = r0 / g00;
    }
    if (coords != nullptr) *coords = Vector3(c0, c1, 0.0);
    return true;
}

inline bool Vector3::isInTriangle(const Vector3& a, const Vector3& b,
                                  const Vector3& c) const noexcept {
    const Vector3 edges[2] = {b - a, c - a};
    Vector3 w;
    if (!(*this - a).pullBack(edges, &w)) return false;
    return w.x > kNullComponentTol && w.y > kNullComponentTol &&
           1.0 - w.x - w.y > kNullComponentTol;
}

}  // namespace geomKit

#include "geomKit/vAlgebra/UVector3.h"
