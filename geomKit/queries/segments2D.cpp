#include "geomKit/queries/segments2D.h"

#include <cmath>

namespace geomKit {

bool segsIntersect(const Vector3& a0, const Vector3& a1, const Vector3& b0, const Vector3& b1,
                   double tol, bool inclusive) noexcept {
    const Vector3 along = a1 - a0;
    const UVector3 d(along);
    const double len = along * d;
    const Vector3 w0 = b0 - a0;
    const Vector3 w1 = b1 - a0;
    const double s0 = w0 * d;
    const double s1 = w1 * d;
    const double e = inclusive ? tol : -tol;
    if (s0 < -e && s1 < -e) return false;
    if (s0 > len + e && s1 > len + e) return false;

    const double c0 = d.x * w0.y - d.y * w0.x;
    const double c1 = d.x * w1.y - d.y * w1.x;
    if (c0 <= -e && c1 <= -e) return false;
    if (c0 >= e && c1 >= e) return false;

    // Both ends on A's line: the tests along A have found that the two overlap.
    const double spread = std::abs(c0) + std::abs(c1);
    if (spread < tol) return true;
    const double s = (s0 * std::abs(c1) + s1 * std::abs(c0)) / spread;
    return !(s < -e || s > len + e);
}

bool segIntersectRect2D(const Vector3& a, const Vector3& b, const Vector3& rmin,
                        const Vector3& rmax) noexcept {
    if (a.x <= rmin.x && b.x <= rmin.x) return false;
    if (a.x >= rmax.x && b.x >= rmax.x) return false;
    if (a.y <= rmin.y && b.y <= rmin.y) return false;
    if (a.y >= rmax.y && b.y >= rmax.y) return false;

    const auto inside = [&](const Vector3& p) {
        return rmin.x <= p.x && p.x <= rmax.x && rmin.y <= p.y && p.y <= rmax.y;
    };
    if (inside(a) || inside(b)) return true;

    // Both ends outside: the line separates two opposite corners, or it passes the rectangle.
    const double mx = b.y - a.y;
    const double my = a.x - b.x;
    const auto side = [&](double x, double y) { return (x - a.x) * mx + (y - a.y) * my; };
    return side(rmin.x, rmin.y) * side(rmax.x, rmax.y) <= 0.0 ||
           side(rmin.x, rmax.y) * side(rmax.x, rmin.y) <= 0.0;
}

bool segClipHalfPlane2D(Vector3& a, Vector3& b, const Vector3& q, const UVector3& n) noexcept {
    const double k = q * n;
    const double da = a * n - k;
    const double db = b * n - k;
    if (da <= 0.0 && db <= 0.0) return false;
    if (da >= 0.0 && db >= 0.0) return true;
    const Vector3 x = a + (a - b) * (da / (db - da));
    (da <= 0.0 ? a : b) = x;
    return true;
}

bool segClipRect2D(const Vector3& a, const Vector3& b, const Vector3& rmin, const Vector3& rmax,
                   Vector3& outA, Vector3& outB) noexcept {
    const Vector3 endB = b;
    outA = a;
    outB = endB;
    return segClipHalfPlane2D(outA, outB, rmin, UVector3(1.0, 0.0, 0.0)) &&
           segClipHalfPlane2D(outA, outB, rmin, UVector3(0.0, 1.0, 0.0)) &&
           segClipHalfPlane2D(outA, outB, rmax, UVector3(-1.0, 0.0, 0.0)) &&
           segClipHalfPlane2D(outA, outB, rmax, UVector3(0.0, -1.0, 0.0));
}

}  // namespace geomKit
