/// @file
/// `Matrix`, the 4x4 matrix of affine maps in homogeneous coordinates.
#pragma once

#include <array>
#include <cassert>
#include <cmath>
#include <iosfwd>
#include <type_traits>
#include <typeindex>

#include "geomKit/export.h"
#include "geomKit/transforms/Matrixf.h"
#include "geomKit/vAlgebra/Matrix3.h"
#include "geomKit/vAlgebra/Vector3.h"

namespace geomKit {

/// Sixteen doubles stored row by row, acting on column vectors: the upper-left 3x3 block is the
/// linear part, the fourth column the translation, and the bottom row is normally (0, 0, 0, 1).
///
/// The class keeps no invariant. Scale is read off the first row of the linear part: where this
/// class speaks of the *unit-scale linear part*, it means the matrix without its translation, each
/// of the sixteen entries divided by the length of (m00, m01, m02). A zero first row gives NaN
/// there. No operation reports an error; all but `print` are pure, safe from any number of threads.
class Matrix {
public:
    /// The identity.
    constexpr Matrix() noexcept
        : m_{1.0, 0.0, 0.0, 0.0,  //
             0.0, 1.0, 0.0, 0.0,  //
             0.0, 0.0, 1.0, 0.0,  //
             0.0, 0.0, 0.0, 1.0} {}
    /// Sixteen numbers, row by row.
    constexpr Matrix(double m00, double m01, double m02, double m03,  //
                     double m10, double m11, double m12, double m13,  //
                     double m20, double m21, double m22, double m23,  //
                     double m30, double m31, double m32, double m33) noexcept;
    constexpr explicit Matrix(const std::array<double, 16>& rowByRow) noexcept;
    /// Implicit, because every float is a double too.
    constexpr Matrix(const Matrixf& f) noexcept;
    /// The affine map x -> linear x + translation.
    constexpr Matrix(const Matrix3& linear, const Vector3& translation) noexcept;

    /// Element in row i, column j, both in 0..3 (asserted in debug builds).
    [[nodiscard]] constexpr double operator()(int i, int j) const noexcept;
    [[nodiscard]] constexpr double& operator()(int i, int j) noexcept;
    /// The top three entries of the fourth column.
    [[nodiscard]] constexpr Vector3 translation() const noexcept;
    /// The sixteen elements, row by row.
    [[nodiscard]] constexpr const double* data() const noexcept { return m_; }
    [[nodiscard]] constexpr double* data() noexcept { return m_; }
    [[nodiscard]] constexpr const double* begin() const noexcept { return m_; }
    [[nodiscard]] constexpr double* begin() noexcept { return m_; }
    [[nodiscard]] constexpr const double* end() const noexcept { return m_ + 16; }
    [[nodiscard]] constexpr double* end() noexcept { return m_ + 16; }
    [[nodiscard]] constexpr std::array<double, 16> toArray() const noexcept;

    /// Equal in every element, without tolerance. Both zeros are equal, NaN equals nothing.
    [[nodiscard]] constexpr bool operator==(const Matrix& b) const noexcept;
    [[nodiscard]] constexpr bool operator!=(const Matrix& b) const noexcept;

    [[nodiscard]] constexpr Matrix operator*(const Matrix& b) const noexcept;
    /// The image of a point, as `transformPoint`.
    [[nodiscard]] constexpr Vector3 operator*(const Vector3& p) const noexcept;
    /// All sixteen elements times `s`. See `scale` for the map that is s times larger.
    [[nodiscard]] constexpr Matrix operator*(double s) const noexcept;
    /// Divides every element by `s`; 0 is not checked: infinities or NaN.
    [[nodiscard]] constexpr Matrix operator/(double s) const noexcept;
    [[nodiscard]] constexpr Matrix operator+(const Matrix& b) const noexcept;
    [[nodiscard]] constexpr Matrix operator-(const Matrix& b) const noexcept;
    [[nodiscard]] constexpr Matrix operator-() const noexcept;
    /// this * b.
    constexpr Matrix& operator*=(const Matrix& b) noexcept;
    constexpr Matrix& operator*=(double s) noexcept;
    constexpr Matrix& operator/=(double s) noexcept;
    constexpr Matrix& operator+=(const Matrix& b) noexcept;
    constexpr Matrix& operator-=(const Matrix& b) noexcept;

    /// The image of a point: linear part times `p`, plus the translation. Ignores the bottom row.
    [[nodiscard]] constexpr Vector3 transformPoint(const Vector3& p) const noexcept;
    /// The image of a direction: linear part times `d`. Ignores the bottom row.
    [[nodiscard]] constexpr Vector3 transformDirection(const Vector3& d) const noexcept;

    [[nodiscard]] constexpr Matrix transpose() const noexcept;
    /// The top three rows times `s`, translation included, over the bottom row (0, 0, 0, 1).
    [[nodiscard]] constexpr Matrix scale(double s) const noexcept;

    /// The affine inverse: the bottom row is taken for (0, 0, 0, 1), never read. When the
    /// determinant of the linear part is not above 1e-13 in absolute value (absolute, so a uniform
    /// scale under 5e-5 counts as singular), or NaN, the result is the identity. Whether that has
    /// happened can be told from the determinant of `Matrix3(m)`.
    [[nodiscard]] Matrix inverse() const noexcept;

    /// True when the bottom row is exactly (0, 0, 0, 1) and C = U U^T, with U the unit-scale linear
    /// part, lies within the Frobenius distance 1e-4 (inclusive) of the identity: a rotation or a
    /// mirror, with any translation. C's last entry is 1/scale^2, so a uniform scale off 1 by more
    /// than about 5e-5 is not rigid either. False with NaN outside the translation.
    [[nodiscard]] GEOMKIT_API bool isRigid() const noexcept;

    /// Frobenius distance: the root of the summed squared differences of all sixteen entries.
    [[nodiscard]] double distTo(const Matrix& b) const noexcept;

    /// The rigid motion that takes the point `p0` to `p1` and the direction `d0` to `d1`.
    ///
    /// Opposite directions are turned by pi about z, whatever they are: right for directions in the
    /// xy plane only. A caller who cannot exclude them composes `Transform::rotate(d0, d1)` with
    /// the translations instead. The same holds when d0 x d1 is null because the directions are
    /// short.
    [[nodiscard]] GEOMKIT_API static Matrix rigidTransform(const Vector3& p0, const Vector3& d0,
                                                           const Vector3& p1,
                                                           const Vector3& d1) noexcept;

    /// Rotation by `angle` radians about `axis`, of any length, by the right-hand rule.
    ///
    /// The identity when the axis is shorter than 1e-4 and not shorter than `angle` is large
    /// (length >= angle, with its sign: every negative angle about a short axis gives the
    /// identity). Also the identity when the length is not above 0, or is NaN.
    [[nodiscard]] GEOMKIT_API static Matrix rotationMatrix(const Vector3& axis,
                                                           double angle) noexcept;

    /// Blend from `a` (t <= 0 or NaN) to `b` (t >= 1): the translation linearly, the scale
    /// geometrically, the rotation about the single axis of a^-1 b, in a's own frame.
    ///
    /// The axis comes from `getRotationAxis` with its limits: a turn under about 4e-7 rad that is
    /// not about x keeps a's orientation until t = 1, where it jumps, and a turn about an axis
    /// nearly in the xy plane may go far astray when the entries carry rounding, as those of a
    /// `Matrixf` do. `Transform::interpolate` blends such turns well, and is limited to turns above
    /// about 1e-4 rad; a caller who blends tiny turns interpolates the entries and orthonormalises
    /// them. A zero first row in either matrix gives NaN. Stretches are a's own until t = 1:
    /// `BoneTransform::interpolate` blends them.
    [[nodiscard]] GEOMKIT_API static Matrix interpolate(const Matrix& a, const Matrix& b,
                                                        double t) noexcept;

    /// Axis of the rotation in the linear part, whose columns are normalised one by one first: the
    /// cross product of the first pair of (R - I) columns that is not null. When none is, as for
    /// the identity and for turns under about 4e-7 rad, the result is (1, 0, 0). NaN gives NaN, or
    /// is passed over in the last column.
    ///
    /// About an axis in the xy plane, with neither x nor y zero, the first pair is parallel but for
    /// rounding. Entries that carry more than that, such as those of a `Matrixf`, make its product
    /// pass for an axis that is none: `Matrix3(m).getRotationAxis()`, with the scale divided out,
    /// takes the largest product instead.
    [[nodiscard]] GEOMKIT_API Vector3 getRotationAxis() const noexcept;

    /// `Matrix3::getRotationAngle` of the unit-scale linear part about `axis`, normalised: in
    /// (-pi, pi] but for rounding. See there for the axes (-1, 0, 0), (0, -1, 0) and (0, 0, -1),
    /// which answer 0.
    [[nodiscard]] GEOMKIT_API double getRotationAngle(Vector3 axis) const noexcept;

    /// The outer product of `v` with itself in the upper-left block, 1 at [3][3], zero elsewhere.
    [[nodiscard]] static constexpr Matrix vvt(const Vector3& v) noexcept;

    /// Writes the four rows to the C standard output, two decimals an entry, and flushes it:
    /// "[" before the first row, a blank before the others, "]" after the last entry.
    GEOMKIT_API void print() const;

private:
    [[nodiscard]] Matrix iUnitScaleLinear() const noexcept;

    double m_[16];
};

static_assert(sizeof(Matrix) == 16 * sizeof(double) && std::is_standard_layout_v<Matrix> &&
                  std::is_trivially_copyable_v<Matrix>,
              "arrays of Matrix read as arrays of double");

[[nodiscard]] constexpr Matrix operator*(double s, const Matrix& m) noexcept;

/// Writes "[(a, b, c, d), ...]", a row in each pair of brackets, in the stream's own number format.
GEOMKIT_API std::ostream& operator<<(std::ostream& os, const Matrix& m);

constexpr Matrix3::Matrix3(const Matrix& m) noexcept
    : m_{m(0, 0), m(0, 1), m(0, 2), m(1, 0), m(1, 1), m(1, 2), m(2, 0), m(2, 1), m(2, 2)} {}

constexpr Matrix::Matrix(double m00, double m01, double m02, double m03,  //
                         double m10, double m11, double m12, double m13,  //
                         double m20, double m21, double m22, double m23,  //
                         double m30, double m31, double m32, double m33) noexcept
    : m_{m00, m01, m02, m03, m10, m11, m12, m13, m20, m21, m22, m23, m30, m31, m32, m33} {}

constexpr Matrix::Matrix(const std::array<double, 16>& rowByRow) noexcept : Matrix() {
    for (int k = 0; k < 16; ++k)
        m_[k] = rowByRow[static_cast<std::size_t>(k)];
}

constexpr Matrix::Matrix(const Matrixf& f) noexcept : Matrix() {
    for (int k = 0; k < 16; ++k)
        m_[k] = static_cast<double>(f.data()[k]);
}

constexpr Matrix::Matrix(const Matrix3& linear, const Vector3& translation) noexcept
    : m_{linear(0, 0), linear(0, 1), linear(0, 2), translation.x,  //
         linear(1, 0), linear(1, 1), linear(1, 2), translation.y,  //
         linear(2, 0), linear(2, 1), linear(2, 2), translation.z,  //
         0.0,          0.0,          0.0,          1.0} {}

constexpr double Matrix::operator()(int i, int j) const noexcept {
    assert(i >= 0 && i < 4 && j >= 0 && j < 4);
    return m_[4 * i + j];
}

constexpr double& Matrix::operator()(int i, int j) noexcept {
    assert(i >= 0 && i < 4 && j >= 0 && j < 4);
    return m_[4 * i + j];
}

constexpr Vector3 Matrix::translation() const noexcept {
    return {m_[3], m_[7], m_[11]};
}

constexpr std::array<double, 16> Matrix::toArray() const noexcept {
    return {m_[0], m_[1], m_[2],  m_[3],  m_[4],  m_[5],  m_[6],  m_[7],
            m_[8], m_[9], m_[10], m_[11], m_[12], m_[13], m_[14], m_[15]};
}

constexpr bool Matrix::operator==(const Matrix& b) const noexcept {
    for (int k = 0; k < 16; ++k) {
        if (!(m_[k] == b.m_[k])) return false;
    }
    return true;
}

constexpr bool Matrix::operator!=(const Matrix& b) const noexcept {
    return !(*this == b);
}

constexpr Matrix Matrix::operator*(const Matrix& b) const noexcept {
    Matrix p;
    for (int i = 0; i < 16; i += 4) {
        for (int j = 0; j < 4; ++j) {
            p.m_[i + j] = m_[i] * b.m_[j] + m_[i + 1] * b.m_[4 + j] + m_[i + 2] * b.m_[8 + j] +
                          m_[i + 3] * b.m_[12 + j];
        }
    }
    return p;
}

constexpr Vector3 Matrix::operator*(const Vector3& p) const noexcept {
    return transformPoint(p);
}

constexpr Matrix Matrix::operator*(double s) const noexcept {
    Matrix p;
    for (int k = 0; k < 16; ++k)
        p.m_[k] = m_[k] * s;
    return p;
}

constexpr Matrix Matrix::operator/(double s) const noexcept {
    Matrix p;
    for (int k = 0; k < 16; ++k)
        p.m_[k] = m_[k] / s;
    return p;
}

constexpr Matrix Matrix::operator+(const Matrix& b) const noexcept {
    Matrix p;
    for (int k = 0; k < 16; ++k)
        p.m_[k] = m_[k] + b.m_[k];
    return p;
}

constexpr Matrix Matrix::operator-(const Matrix& b) const noexcept {
    Matrix p;
    for (int k = 0; k < 16; ++k)
        p.m_[k] = m_[k] - b.m_[k];
    return p;
}

constexpr Matrix Matrix::operator-() const noexcept {
    Matrix p;
    for (int k = 0; k < 16; ++k)
        p.m_[k] = -m_[k];
    return p;
}

constexpr Matrix& Matrix::operator*=(const Matrix& b) noexcept {
    return *this = *this * b;
}

constexpr Matrix& Matrix::operator*=(double s) noexcept {
    return *this = *this * s;
}

constexpr Matrix& Matrix::operator/=(double s) noexcept {
    return *this = *this / s;
}

constexpr Matrix& Matrix::operator+=(const Matrix& b) noexcept {
    return *this = *this + b;
}

constexpr Matrix& Matrix::operator-=(const Matrix& b) noexcept {
    return *this = *this - b;
}

constexpr Matrix operator*(double s, const Matrix& m) noexcept {
    return m * s;
}

constexpr Vector3 Matrix::transformPoint(const Vector3& p) const noexcept {
    return transformDirection(p) + translation();
}

constexpr Vector3 Matrix::transformDirection(const Vector3& d) const noexcept {
    return {m_[0] * d.x + m_[1] * d.y + m_[2] * d.z, m_[4] * d.x + m_[5] * d.y + m_[6] * d.z,
            m_[8] * d.x + m_[9] * d.y + m_[10] * d.z};
}

constexpr Matrix Matrix::transpose() const noexcept {
    Matrix p;
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            p.m_[4 * j + i] = m_[4 * i + j];
        }
    }
    return p;
}

constexpr Matrix Matrix::scale(double s) const noexcept {
    Matrix p;
    for (int k = 0; k < 12; ++k) {
        p.m_[k] = m_[k] * s;
    }
    return p;
}

inline Matrix Matrix::inverse() const noexcept {
    const double* r0 = m_;
    const double* r1 = m_ + 4;
    const double* r2 = m_ + 8;
    const double det = r0[2] * (r1[0] * r2[1] - r1[1] * r2[0]) +
                       r0[0] * (r1[1] * r2[2] - r1[2] * r2[1]) -
                       r0[1] * (r1[0] * r2[2] - r1[2] * r2[0]);
    Matrix inv;
    if (!(std::abs(det) > kNullComponentTol)) return inv;

    const double s = 1.0 / det;
    inv.m_[0] = (r1[1] * r2[2] - r1[2] * r2[1]) * s;
    inv.m_[1] = (r0[2] * r2[1] - r0[1] * r2[2]) * s;
    inv.m_[2] = (r0[1] * r1[2] - r0[2] * r1[1]) * s;
    inv.m_[4] = (r1[2] * r2[0] - r1[0] * r2[2]) * s;
    inv.m_[5] = (r0[0] * r2[2] - r0[2] * r2[0]) * s;
    inv.m_[6] = (r0[2] * r1[0] - r0[0] * r1[2]) * s;
    inv.m_[8] = (r1[0] * r2[1] - r1[1] * r2[0]) * s;
    inv.m_[9] = (r0[1] * r2[0] - r0[0] * r2[1]) * s;
    inv.m_[10] = (r0[0] * r1[1] - r0[1] * r1[0]) * s;
    const Vector3 moved = inv.transformDirection(translation());
    inv.m_[3] = -moved.x;
    inv.m_[7] = -moved.y;
    inv.m_[11] = -moved.z;
    return inv;
}

inline double Matrix::distTo(const Matrix& b) const noexcept {
    double sum = 0.0;
    for (int k = 0; k < 16; ++k) {
        const double d = m_[k] - b.m_[k];
        sum += d * d;
    }
    return std::sqrt(sum);
}

constexpr Matrix Matrix::vvt(const Vector3& v) noexcept {
    return {Matrix3::tensor(v, v), Vector3()};
}

}  // namespace geomKit

namespace std {

/// Goes with `==`.
template <>
struct hash<geomKit::Matrix> {
    std::size_t operator()(const geomKit::Matrix& m) const noexcept {
        return geomKit::detail::hashNumbers(m.data(), 16);
    }
};

}  // namespace std
