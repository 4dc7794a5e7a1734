#include "geomKit/transforms/Matrix.h"

#include <cstdio>
#include <ostream>

#include "geomKit/vAlgebra/UVector3.h"
#include "geomKit/vAlgebra/vectorUtils.h"

namespace geomKit {

namespace {

/// Axes shorter than this are no axes, unless the angle is larger than their length.
constexpr double kShortAxis = 1e-4;
/// How far, in the Frobenius norm, a rigid matrix may be from an orthonormal one.
constexpr double kRigidTol = 1e-4;

Matrix _translationMatrix(const Vector3& v) {
    return {Matrix3(), v};
}

/// Length of the first row of the linear part, which stands for the scale of the whole.
double _firstRowLength(const Matrix& m) {
    return Vector3(m(0, 0), m(0, 1), m(0, 2)).length();
}

}  // namespace

Matrix Matrix::iUnitScaleLinear() const noexcept {
    const double s = _firstRowLength(*this);
    Matrix u = *this;
    u.m_[3] = 0.0;
    u.m_[7] = 0.0;
    u.m_[11] = 0.0;
    for (double& entry : u.m_) {
        entry /= s;
    }
    return u;
}

bool Matrix::isRigid() const noexcept {
    if (m_[12] != 0.0 || m_[13] != 0.0 || m_[14] != 0.0 || m_[15] != 1.0) return false;
    const Matrix u = iUnitScaleLinear();
    return Matrix().distTo(u * u.transpose()) <= kRigidTol;
}

Matrix Matrix::rotationMatrix(const Vector3& axis, double angle) noexcept {
    const double length = axis.length();
    if (length >= angle && length < kShortAxis) return {};
    if (!(length > 0.0)) return {};
    const Vector3 u = axis / length;
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const double C = 1.0 - c;
    return {Matrix3(Vector3(C * (u.x * u.x) + c, C * u.x * u.y + s * u.z, C * u.x * u.z - s * u.y),
                    Vector3(C * u.x * u.y - s * u.z, C * (u.y * u.y) + c, C * u.y * u.z + s * u.x),
                    Vector3(C * u.x * u.z + s * u.y, C * u.y * u.z - s * u.x, C * (u.z * u.z) + c)),
            Vector3()};
}

Matrix Matrix::rigidTransform(const Vector3& p0, const Vector3& d0, const Vector3& p1,
                              const Vector3& d1) noexcept {
    const UVector3 a = d0.normalize();
    const UVector3 b = d1.normalize();
    const UVector3 axis = (d0 % d1).normalize();
    const double angle = std::atan2((a % b).length(), a * b);
    return _translationMatrix(p1) * rotationMatrix(axis, angle) * _translationMatrix(-p0);
}

Matrix Matrix::interpolate(const Matrix& a, const Matrix& b, double t) noexcept {
    if (!(t > 0.0)) return a;
    if (t >= 1.0) return b;
    const double logA = std::log(_firstRowLength(a));
    const double logB = std::log(_firstRowLength(b));
    const Matrix relative = a.inverse() * b;
    const Vector3 axis = relative.getRotationAxis();
    const double angle = relative.getRotationAngle(axis);
    const Matrix turned = a.iUnitScaleLinear() * rotationMatrix(axis, angle * t);
    const Matrix linear = turned.scale(std::exp(t * logB + (1.0 - t) * logA));
    return {Matrix3(linear), lerp(a.translation(), b.translation(), t)};
}

Vector3 Matrix::getRotationAxis() const noexcept {
    const Matrix3 unit;
    Vector3 moved[3];
    bool usable[3];
    for (int j = 0; j < 3; ++j) {
        moved[j] = Vector3(m_[j], m_[4 + j], m_[8 + j]);
        usable[j] = moved[j].autoNormalize();
        moved[j] -= unit.column(j);
    }
    for (int j = 0; j < 3; ++j) {
        const int k = (j + 1) % 3;
        if (!usable[j] || !usable[k]) continue;
        Vector3 axis = moved[j] % moved[k];
        if (axis.autoNormalize()) return axis;
    }
    return {1.0, 0.0, 0.0};
}

double Matrix::getRotationAngle(Vector3 axis) const noexcept {
    const UVector3 u(axis);
    return Matrix3(iUnitScaleLinear()).getRotationAngle(&u);
}

void Matrix::print() const {
    for (int i = 0; i < 4; ++i) {
        std::putchar(i == 0 ? '[' : ' ');
        for (int j = 0; j < 4; ++j) {
            std::printf("%.2f ", (*this)(i, j));
        }
        if (i == 3) std::putchar(']');
        std::putchar('\n');
    }
    std::fflush(stdout);
}

std::ostream& operator<<(std::ostream& os, const Matrix& m) {
    for (int i = 0; i < 4; ++i) {
        os << (i == 0 ? "[(" : ", (");
        for (int j = 0; j < 4; ++j)
            os << m(i, j) << (j < 3 ? ", " : ")");
    }
    return os << "]";
}

}  // namespace geomKit
