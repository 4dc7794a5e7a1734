#include "geomKit/vAlgebra/vectorUtils.h"

#include <ostream>

namespace geomKit {

namespace {

constexpr double kTwoPi = 6.283185307179586;

/// The coordinate axis along which `v` extends least.
Vector3 _smallestAxis(const Vector3& v) {
    const double ax = std::abs(v.x);
    const double ay = std::abs(v.y);
    const double az = std::abs(v.z);
    if (ax < ay && ax < az) return {1.0, 0.0, 0.0};
    if (ay < az) return {0.0, 1.0, 0.0};
    return {0.0, 0.0, 1.0};
}

}  // namespace

void getBasis(const Vector3& v, Vector3& e1, Vector3& e2) noexcept {
    const Vector3 seed = _smallestAxis(v);
    const UVector3 u1 = (seed - v * (seed * v)).normalize();
    const UVector3 u2 = (v % u1).normalize();
    e1 = u1;
    e2 = u2;
}

double getAngleBetween(const Vector3& a, const Vector3& b, const Vector3& n) noexcept {
    const Vector3 c = a % b;
    const double angle = std::atan2(c.length(), a * b);
    return c * n < 0.0 ? kTwoPi - angle : angle;
}

bool samePlane(const Vector3& pA, const UVector3& nA, const Vector3& pB,
               const UVector3& nB) noexcept {
    if (!nA.isParallel(nB, -1.0)) return false;
    const Vector3 d = pB - pA;
    return d.isNull() || nA.isNormal(d, -1.0);
}

double calcCurvature(const Vector3& d1, const Vector3& d2) noexcept {
    const double q = d1.lengthSq();
    if (q < kNullComponentTol) return 0.0;
    const Vector3 w = d2 - d1 * ((d1 * d2) / q);
    return (w / q).length();
}

bool principalCurvatures(const Vector3* d1, const Vector3* d2, double* kMin,
                         double* kMax) noexcept {
    const Vector3& su = d1[0];
    const Vector3& sv = d1[1];
    Vector3 n = su % sv;
    if (!n.autoNormalize()) return false;

    const double E = su * su;
    const double F = su * sv;
    const double G = sv * sv;
    const double D = E * G - F * F;
    if (D < kNullComponentTol) return false;

    const double L = d2[0] * n;
    const double M = d2[1] * n;
    const double N = d2[2] * n;
    const double K = (L * N - M * M) / D;
    const double H = (N * E + L * G - 2.0 * M * F) * 0.5 / D;
    const double r = H * H - K;
    const double root = r < kEqualDistSqTol ? 0.0 : std::sqrt(r);
    if (kMin != nullptr) *kMin = H - root;
    if (kMax != nullptr) *kMax = H + root;
    return true;
}

std::ostream& operator<<(std::ostream& os, const Vector3& v) {
    return os << "(" << v.x << ", " << v.y << ", " << v.z << ")";
}

}  // namespace geomKit
