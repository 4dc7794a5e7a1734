#include "geomKit/vAlgebra/Matrix3.h"

#include <ostream>

#include "geomKit/vAlgebra/eigensystem.h"
#include "geomKit/vAlgebra/vectorUtils.h"

namespace geomKit {

Matrix3 Matrix3::rotationMatrix(const UVector3& axis, double angle) noexcept {
    const double x = axis.x;
    const double y = axis.y;
    const double z = axis.z;
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const double t = 1.0 - c;
    return {t * x * x + c,     t * x * y - s * z, t * x * z + s * y,
            t * x * y + s * z, t * y * y + c,     t * y * z - s * x,
            t * x * z - s * y, t * y * z + s * x, t * z * z + c};
}

Matrix3 Matrix3::rotationMatrix(const UVector3& from, const UVector3& to) noexcept {
    Vector3 n = from % to;
    const double s = n.length();
    if (!n.autoNormalize()) {
        Vector3 unused;
        getBasis(from, n, unused);
    }
    return rotationMatrix(UVector3(n), std::atan2(s, from * to));
}

bool Matrix3::isNearIdentity() const noexcept {
    for (int i = 0; i < 9; ++i) {
        const bool near = i % 4 == 0 ? m_[i] >= kNearIdentityCos && m_[i] <= 2.0 - kNearIdentityCos
                                     : std::abs(m_[i]) <= kNormalCosDefault;
        if (!near) return false;
    }
    return true;
}

bool Matrix3::isNearZero() const noexcept {
    for (const double entry : m_) {
        if (!(std::abs(entry) < kDetTol)) return false;
    }
    return true;
}

UVector3 Matrix3::getRotationAxis() const noexcept {
    const Vector3 moved[3] = {Vector3(m_[0] - 1.0, m_[3], m_[6]),
                              Vector3(m_[1], m_[4] - 1.0, m_[7]),
                              Vector3(m_[2], m_[5], m_[8] - 1.0)};
    const Vector3 x[3] = {moved[0] % moved[1], moved[1] % moved[2], moved[2] % moved[0]};
    const double q[3] = {x[0].lengthSq(), x[1].lengthSq(), x[2].lengthSq()};
    if (q[0] >= kCrossSqTol || q[1] >= kCrossSqTol || q[2] >= kCrossSqTol) {
        int k = q[1] > q[0] ? 1 : 0;
        if (q[2] > q[0] && q[2] > q[1]) k = 2;
        return UVector3(x[k]);
    }
    const double p[3] = {moved[0].lengthSq(), moved[1].lengthSq(), moved[2].lengthSq()};
    int k = p[1] < p[0] ? 1 : 0;
    if (p[2] < p[0] && p[2] < p[1]) k = 2;
    return UVector3(column(k));
}

double Matrix3::getRotationAngle(const UVector3* axis) const noexcept {
    const UVector3 a = axis != nullptr ? *axis : getRotationAxis();
    int k = a.y < a.x ? 1 : 0;
    if (a.z < a.x && a.z < a.y) k = 2;
    const Vector3 p = a % Matrix3().column(k);
    const Vector3 q = a % column(k);
    return std::atan2((p % q) * a, p * q);
}

Matrix3 Matrix3::getMatrixFromEigs(const double* eigs, const Vector3* vecs) noexcept {
    const Matrix3 v(vecs[0], vecs[1], vecs[2]);
    return (v * diagonal(eigs[0], eigs[1], eigs[2])) * v.inverse();
}

int Matrix3::getNullspace(UVector3* out, bool force) const noexcept {
    if (std::abs(determinant()) > kDetTol && !force) return 0;
    if (isNearZero()) {
        out[0] = UVector3(1.0, 0.0, 0.0);
        out[1] = UVector3(0.0, 1.0, 0.0);
        out[2] = UVector3(0.0, 0.0, 1.0);
        return 3;
    }

    const auto writeBasisOf = [out](const Vector3& v) {
        getBasis(v, out[0], out[1]);
        return 2;
    };
    const Vector3 c[3] = {column(0), column(1), column(2)};
    const double s01 = (c[0] % c[1]).lengthSq();
    const double s02 = (c[0] % c[2]).lengthSq();
    const double s12 = (c[1] % c[2]).lengthSq();

    if (s01 >= kCrossSqTol || s02 >= kCrossSqTol || s12 >= kCrossSqTol) {
        // Rank two or more: in coordinates of two spanning columns, M becomes a 2x3 matrix whose
        // rows P and Q are perpendicular to the null space.
        const bool pair21 = s12 >= s01 && s12 >= s02;
        const Vector3& first = pair21 ? c[2] : c[0];
        const Vector3& second = pair21 ? c[1] : s01 <= s02 ? c[2] : c[1];
        const Vector3 basis[2] = {first.normalize(), second.normalize()};
        Vector3 w[3];
        for (int j = 0; j < 3; ++j)
            c[j].pullBack(basis, &w[j]);
        const Vector3 P(w[0].x, w[1].x, w[2].x);
        const Vector3 Q(w[0].y, w[1].y, w[2].y);
        const Vector3 v = P % Q;
        if (!v.isNull()) {
            out[0] = UVector3(v);
            return 1;
        }
        return writeBasisOf(Q * Q < P * P ? P : Q);
    }

    // Rank one: every row is a multiple of r.
    Vector3 u = c[0];
    if (c[1].lengthSq() > u.lengthSq()) u = c[1];
    if (c[2].lengthSq() > u.lengthSq()) u = c[2];
    u = u.normalize();
    return writeBasisOf(UVector3(c[0] * u, c[1] * u, c[2] * u));
}

int Matrix3::getEigensystem(double* eigs, UVector3* vecs) const noexcept {
    jacobiMethod(*this, eigs, vecs);
    return 3;
}

std::ostream& operator<<(std::ostream& os, const Matrix3& m) {
    return os << "[" << m.row(0) << ", " << m.row(1) << ", " << m.row(2) << "]";
}

}  // namespace geomKit
