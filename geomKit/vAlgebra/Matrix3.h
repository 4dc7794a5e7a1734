/// @file
/// `Matrix3`, the 3x3 matrix of rotations, shapes and covariances.
#pragma once

#include <array>
#include <cassert>
#include <iosfwd>
#include <type_traits>
#include <typeindex>

#include "geomKit/export.h"
#include "geomKit/vAlgebra/UVector3.h"
#include "geomKit/vAlgebra/Vector3.h"
#include "geomKit/vAlgebra/hashNumbers.h"

namespace geomKit {

class Matrix;

/// Nine doubles stored row by row, acting on column vectors: the image of v is M * v, and the
/// columns of a rotation are the images of the x, y and z axes.
///
/// The class keeps no invariant: each operation states what it assumes. No operation reports an
/// error; thresholds are absolute (1e-8 on determinants and entries). Pure value computations
/// without shared state.
class Matrix3 {
public:
    /// The identity.
    constexpr Matrix3() noexcept : m_{1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0} {}
    /// Nine numbers, row by row.
    constexpr Matrix3(double m00, double m01, double m02, double m10, double m11, double m12,
                      double m20, double m21, double m22) noexcept;
    constexpr explicit Matrix3(const std::array<double, 9>& rowByRow) noexcept;
    /// The matrix with the columns a, b, c.
    constexpr Matrix3(const Vector3& a, const Vector3& b, const Vector3& c) noexcept;
    /// The upper-left 3x3 block of a 4x4 matrix; defined in transforms/Matrix.h.
    constexpr Matrix3(const Matrix& m) noexcept;
    /// The matrix with the rows a, b, c.
    [[nodiscard]] static constexpr Matrix3 fromRows(const Vector3& a, const Vector3& b,
                                                    const Vector3& c) noexcept;
    /// a, b and c on the diagonal, zeros beside it.
    [[nodiscard]] static constexpr Matrix3 diagonal(double a, double b, double c) noexcept;

    /// Element in row r, column c, both in 0..2 (asserted in debug builds).
    [[nodiscard]] constexpr double operator()(int r, int c) const noexcept;
    [[nodiscard]] constexpr double& operator()(int r, int c) noexcept;
    [[nodiscard]] constexpr Vector3 row(int i) const noexcept;
    [[nodiscard]] constexpr Vector3 column(int j) const noexcept;
    /// The nine elements, row by row.
    [[nodiscard]] constexpr const double* data() const noexcept { return m_; }
    [[nodiscard]] constexpr double* data() noexcept { return m_; }
    [[nodiscard]] constexpr const double* begin() const noexcept { return m_; }
    [[nodiscard]] constexpr double* begin() noexcept { return m_; }
    [[nodiscard]] constexpr const double* end() const noexcept { return m_ + 9; }
    [[nodiscard]] constexpr double* end() noexcept { return m_ + 9; }
    [[nodiscard]] constexpr std::array<double, 9> toArray() const noexcept;

    /// Equal in every element, without tolerance. Both zeros are equal, NaN equals nothing.
    [[nodiscard]] constexpr bool operator==(const Matrix3& b) const noexcept;
    [[nodiscard]] constexpr bool operator!=(const Matrix3& b) const noexcept;

    [[nodiscard]] constexpr Matrix3 operator*(const Matrix3& b) const noexcept;
    [[nodiscard]] constexpr Vector3 operator*(const Vector3& v) const noexcept;
    [[nodiscard]] constexpr Matrix3 operator*(double s) const noexcept;
    /// Divides every element by `s`; 0 is not checked: infinities or NaN.
    [[nodiscard]] constexpr Matrix3 operator/(double s) const noexcept;
    [[nodiscard]] constexpr Matrix3 operator+(const Matrix3& b) const noexcept;
    [[nodiscard]] constexpr Matrix3 operator-(const Matrix3& b) const noexcept;
    [[nodiscard]] constexpr Matrix3 operator-() const noexcept;
    /// this * b.
    constexpr Matrix3& operator*=(const Matrix3& b) noexcept;
    constexpr Matrix3& operator*=(double s) noexcept;
    constexpr Matrix3& operator/=(double s) noexcept;
    constexpr Matrix3& operator+=(const Matrix3& b) noexcept;
    constexpr Matrix3& operator-=(const Matrix3& b) noexcept;
    [[nodiscard]] constexpr Matrix3 transpose() const noexcept;
    [[nodiscard]] constexpr double determinant() const noexcept;

    /// The adjugate times 1/det. When |det| < 1e-8 (strict, not scaled by the entries) the result
    /// is the zero matrix: diag(1e-3, 1e-3, 1e-3) counts as singular. NaN entries give NaN.
    [[nodiscard]] Matrix3 inverse() const noexcept;

    /// Rotation by `angle` radians about `axis`, counter-clockwise seen from its tip (right-hand
    /// rule). The axis is used as given. Source: Rodrigues' rotation formula.
    [[nodiscard]] GEOMKIT_API static Matrix3 rotationMatrix(const UVector3& axis,
                                                            double angle) noexcept;

    /// The rotation that takes `from` to `to` about their common normal. Parallel directions give
    /// the identity, opposite ones a half turn about the first `getBasis` vector of `from`.
    [[nodiscard]] GEOMKIT_API static Matrix3 rotationMatrix(const UVector3& from,
                                                            const UVector3& to) noexcept;

    /// Overwrites this matrix with the identity.
    constexpr void identity() noexcept { *this = Matrix3(); }
    /// Overwrites this matrix with zeros.
    constexpr void zero() noexcept;

    /// Outer product: element (r, c) = a[r] b[c].
    [[nodiscard]] static constexpr Matrix3 tensor(const Vector3& a, const Vector3& b) noexcept;

    /// True when each diagonal entry is in [0.999999863, 2 - 0.999999863] and each other one in
    /// [-0.000523599, 0.000523599], bounds included: a rotation by at most 0.03 degrees. False with
    /// NaN.
    [[nodiscard]] GEOMKIT_API bool isNearIdentity() const noexcept;
    /// True when every entry is strictly below 1e-8 in absolute value. False with NaN.
    [[nodiscard]] GEOMKIT_API bool isNearZero() const noexcept;

    /// Axis of a rotation matrix R, from the cross products of the columns of R - I. Its sign is
    /// whatever the largest of these gives; `getRotationAngle` supplies the matching signed angle.
    /// For rotations under about 1e-4 rad the products are below 1e-16 and the result is the
    /// column of R that moved least: a coordinate axis, nearly, (1, 0, 0) for the identity. A
    /// caller who needs the axis of a tiny turn takes (R32 - R23, R13 - R31, R21 - R12) instead.
    [[nodiscard]] GEOMKIT_API UVector3 getRotationAxis() const noexcept;

    /// Signed angle in (-pi, pi] of a rotation matrix about `*axis`, which is only read; null means
    /// `getRotationAxis()`. Consistent with `rotationMatrix(axis, angle)`. A half turn may come out
    /// as -pi by rounding.
    ///
    /// The angle is measured on the coordinate axis of the smallest signed component. When the
    /// rotation axis is opposite to that coordinate axis, as (-1, 0, 0), (0, -1, 0) and (0, 0, -1)
    /// are, the answer is 0 whatever the matrix: pass the opposite axis and negate.
    [[nodiscard]] GEOMKIT_API double getRotationAngle(const UVector3* axis) const noexcept;

    /// V D V^-1 with the columns `vecs[0..2]` of V and D = diag(eigs[0..2]). The vectors need not
    /// be orthogonal; |det V| < 1e-8 makes the result the zero matrix.
    [[nodiscard]] GEOMKIT_API static Matrix3 getMatrixFromEigs(const double* eigs,
                                                               const Vector3* vecs) noexcept;

    /// Dimension d of the null space {v : M v = 0}; writes d unit vectors to out[0..d-1]. `out`
    /// must hold three.
    ///
    /// |det| > 1e-8 returns 0 and writes nothing, unless `force`: then a vector is given even for a
    /// regular matrix. A determinant of exactly 1e-8 counts as singular here, while `inverse`
    /// inverts it. Coordinates that `Vector3::pullBack` cannot give count as zero.
    GEOMKIT_API int getNullspace(UVector3* out, bool force) const noexcept;

    /// Eigenvalues, ascending, and unit eigenvectors of the symmetric part of this matrix: see
    /// `jacobiMethod`. Either pointer may be null, else it holds three. Returns 3 in every case,
    /// also when the iteration did not converge.
    GEOMKIT_API int getEigensystem(double* eigs, UVector3* vecs) const noexcept;

private:
    double m_[9];
};

static_assert(sizeof(Matrix3) == 9 * sizeof(double) && std::is_standard_layout_v<Matrix3> &&
                  std::is_trivially_copyable_v<Matrix3>,
              "arrays of Matrix3 read as arrays of double");

[[nodiscard]] constexpr Matrix3 operator*(double s, const Matrix3& m) noexcept;

/// Writes "[(a, b, c), (d, e, f), (g, h, i)]", a row in each pair of brackets, in the stream's own
/// number format.
GEOMKIT_API std::ostream& operator<<(std::ostream& os, const Matrix3& m);

constexpr Matrix3::Matrix3(double m00, double m01, double m02, double m10, double m11, double m12,
                           double m20, double m21, double m22) noexcept
    : m_{m00, m01, m02, m10, m11, m12, m20, m21, m22} {}

constexpr Matrix3::Matrix3(const std::array<double, 9>& e) noexcept
    : m_{e[0], e[1], e[2], e[3], e[4], e[5], e[6], e[7], e[8]} {}

constexpr Matrix3::Matrix3(const Vector3& a, const Vector3& b, const Vector3& c) noexcept
    : m_{a.x, b.x, c.x, a.y, b.y, c.y, a.z, b.z, c.z} {}

constexpr Matrix3 Matrix3::fromRows(const Vector3& a, const Vector3& b, const Vector3& c) noexcept {
    return {a.x, a.y, a.z, b.x, b.y, b.z, c.x, c.y, c.z};
}

constexpr Matrix3 Matrix3::diagonal(double a, double b, double c) noexcept {
    return {a, 0.0, 0.0, 0.0, b, 0.0, 0.0, 0.0, c};
}

constexpr double Matrix3::operator()(int r, int c) const noexcept {
    assert(r >= 0 && r < 3 && c >= 0 && c < 3);
    return m_[3 * r + c];
}

constexpr double& Matrix3::operator()(int r, int c) noexcept {
    assert(r >= 0 && r < 3 && c >= 0 && c < 3);
    return m_[3 * r + c];
}

constexpr Vector3 Matrix3::row(int i) const noexcept {
    assert(i >= 0 && i < 3);
    return {m_[3 * i], m_[3 * i + 1], m_[3 * i + 2]};
}

constexpr Vector3 Matrix3::column(int j) const noexcept {
    assert(j >= 0 && j < 3);
    return {m_[j], m_[3 + j], m_[6 + j]};
}

constexpr std::array<double, 9> Matrix3::toArray() const noexcept {
    return {m_[0], m_[1], m_[2], m_[3], m_[4], m_[5], m_[6], m_[7], m_[8]};
}

constexpr bool Matrix3::operator==(const Matrix3& b) const noexcept {
    for (int i = 0; i < 9; ++i) {
        if (!(m_[i] == b.m_[i])) return false;
    }
    return true;
}

constexpr bool Matrix3::operator!=(const Matrix3& b) const noexcept {
    return !(*this == b);
}

constexpr Matrix3 Matrix3::operator*(const Matrix3& b) const noexcept {
    Matrix3 p;
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 3; ++c) {
            p.m_[3 * r + c] =
                m_[3 * r] * b.m_[c] + m_[3 * r + 1] * b.m_[3 + c] + m_[3 * r + 2] * b.m_[6 + c];
        }
    }
    return p;
}

constexpr Vector3 Matrix3::operator*(const Vector3& v) const noexcept {
    // All products before the sums: they lie as the elements do, which vectorises best.
    const double factors[3] = {v.x, v.y, v.z};
    double p[9] = {};
    for (int i = 0; i < 9; ++i)
        p[i] = m_[i] * factors[i % 3];
    return {p[0] + p[1] + p[2], p[3] + p[4] + p[5], p[6] + p[7] + p[8]};
}

constexpr Matrix3 Matrix3::operator*(double s) const noexcept {
    Matrix3 p;
    for (int i = 0; i < 9; ++i)
        p.m_[i] = m_[i] * s;
    return p;
}

constexpr Matrix3 Matrix3::operator/(double s) const noexcept {
    Matrix3 p;
    for (int i = 0; i < 9; ++i)
        p.m_[i] = m_[i] / s;
    return p;
}

constexpr Matrix3 Matrix3::operator+(const Matrix3& b) const noexcept {
    Matrix3 p;
    for (int i = 0; i < 9; ++i)
        p.m_[i] = m_[i] + b.m_[i];
    return p;
}

constexpr Matrix3 Matrix3::operator-(const Matrix3& b) const noexcept {
    Matrix3 p;
    for (int i = 0; i < 9; ++i)
        p.m_[i] = m_[i] - b.m_[i];
    return p;
}

constexpr Matrix3 Matrix3::operator-() const noexcept {
    Matrix3 p;
    for (int i = 0; i < 9; ++i)
        p.m_[i] = -m_[i];
    return p;
}

constexpr Matrix3& Matrix3::operator*=(const Matrix3& b) noexcept {
    return *this = *this * b;
}

constexpr Matrix3& Matrix3::operator*=(double s) noexcept {
    return *this = *this * s;
}

constexpr Matrix3& Matrix3::operator/=(double s) noexcept {
    return *this = *this / s;
}

constexpr Matrix3& Matrix3::operator+=(const Matrix3& b) noexcept {
    return *this = *this + b;
}

constexpr Matrix3& Matrix3::operator-=(const Matrix3& b) noexcept {
    return *this = *this - b;
}

constexpr Matrix3 operator*(double s, const Matrix3& m) noexcept {
    return m * s;
}

constexpr Matrix3 Matrix3::transpose() const noexcept {
    return {m_[0], m_[3], m_[6], m_[1], m_[4], m_[7], m_[2], m_[5], m_[8]};
}

constexpr double Matrix3::determinant() const noexcept {
    return m_[0] * (m_[4] * m_[8] - m_[5] * m_[7]) - m_[1] * (m_[3] * m_[8] - m_[5] * m_[6]) +
           m_[2] * (m_[3] * m_[7] - m_[4] * m_[6]);
}

inline Matrix3 Matrix3::inverse() const noexcept {
    // The first column of the adjugate expands the determinant too: a10 is the minor's exact
    // negative, so that adding m01 a10 rounds as subtracting m01 times the minor does.
    const double a00 = m_[4] * m_[8] - m_[5] * m_[7];
    const double a10 = m_[5] * m_[6] - m_[3] * m_[8];
    const double a20 = m_[3] * m_[7] - m_[4] * m_[6];
    const double det = m_[0] * a00 + m_[1] * a10 + m_[2] * a20;
    if (std::abs(det) < kDetTol) return diagonal(0.0, 0.0, 0.0);
    const double r = 1.0 / det;
    return {a00 * r, (m_[2] * m_[7] - m_[1] * m_[8]) * r, (m_[1] * m_[5] - m_[2] * m_[4]) * r,
            a10 * r, (m_[0] * m_[8] - m_[2] * m_[6]) * r, (m_[2] * m_[3] - m_[0] * m_[5]) * r,
            a20 * r, (m_[1] * m_[6] - m_[0] * m_[7]) * r, (m_[0] * m_[4] - m_[1] * m_[3]) * r};
}

constexpr void Matrix3::zero() noexcept {
    *this = diagonal(0.0, 0.0, 0.0);
}

constexpr Matrix3 Matrix3::tensor(const Vector3& a, const Vector3& b) noexcept {
    return {a.x * b.x, a.x * b.y, a.x * b.z, a.y * b.x, a.y * b.y,
            a.y * b.z, a.z * b.x, a.z * b.y, a.z * b.z};
}

}  // namespace geomKit

namespace std {

/// Goes with `==`.
template <>
struct hash<geomKit::Matrix3> {
    std::size_t operator()(const geomKit::Matrix3& m) const noexcept {
        return geomKit::detail::hashNumbers(m.data(), 9);
    }
};

}  // namespace std
