#include "geomKit/queries/Bbox.h"

#include <cstring>

namespace {

// The comparisons decide what NaN and zeros of both signs give: `v` replaces `kept` only when it is
// strictly beyond it. Written this way each is one vector instruction.
double lower(double v, double kept) {
    return v < kept ? v : kept;
}

double higher(double v, double kept) {
    return v > kept ? v : kept;
}

Vector3 lower(const Vector3& v, const Vector3& kept) {
    return {lower(v.x, kept.x), lower(v.y, kept.y), lower(v.z, kept.z)};
}

Vector3 higher(const Vector3& v, const Vector3& kept) {
    return {higher(v.x, kept.x), higher(v.y, kept.y), higher(v.z, kept.z)};
}

// The first zero of an axis in the list; its sign is the one that a pass in order would have kept.
double firstZero(const std::vector<Vector3>& pts, double Vector3::*axis) {
    for (const Vector3& p : pts) {
        if (p.*axis == 0.0) return p.*axis;
    }
    return 0.0;
}

constexpr std::size_t kBlock = 4;

}  // namespace

Bbox::Bbox(const std::vector<Vector3>& pts) {
    if (pts.empty()) {
        maxPt = Vector3();
        return;
    }
    init(pts[0]);

    // Four boxes side by side, each over every fourth point: twelve coordinates are compared as
    // whole vectors, and no comparison waits for the one before it.
    double lo[3 * kBlock];
    double hi[3 * kBlock];
    for (std::size_t k = 0; k < kBlock; ++k) {
        std::memcpy(lo + 3 * k, &pts[0], sizeof(Vector3));
        std::memcpy(hi + 3 * k, &pts[0], sizeof(Vector3));
    }
    std::size_t i = 0;
    for (; i + kBlock <= pts.size(); i += kBlock) {
        double v[3 * kBlock];
        std::memcpy(v, &pts[i], sizeof v);
        for (std::size_t k = 0; k < 3 * kBlock; ++k) {
            lo[k] = lower(v[k], lo[k]);
            hi[k] = higher(v[k], hi[k]);
        }
    }
    for (std::size_t k = 0; k < kBlock; ++k) {
        minPt = lower(Vector3(lo[3 * k], lo[3 * k + 1], lo[3 * k + 2]), minPt);
        maxPt = higher(Vector3(hi[3 * k], hi[3 * k + 1], hi[3 * k + 2]), maxPt);
    }
    for (; i < pts.size(); ++i) {
        minPt = lower(pts[i], minPt);
        maxPt = higher(pts[i], maxPt);
    }

    for (double Vector3::*axis : {&Vector3::x, &Vector3::y, &Vector3::z}) {
        if (minPt.*axis == 0.0) minPt.*axis = firstZero(pts, axis);
        if (maxPt.*axis == 0.0) maxPt.*axis = firstZero(pts, axis);
    }
}

Bbox Bbox::operator+(const Bbox& other) const {
    Bbox sum;
    if (isValid() && other.isValid()) {
        sum.minPt = lower(other.minPt, minPt);
        sum.maxPt = higher(other.maxPt, maxPt);
    }
    return sum;
}

Bbox& Bbox::operator+=(const Bbox& other) {
    *this = isValid() ? *this + other : other;
    return *this;
}

void Bbox::isec(const Bbox& other) {
    if (!isValid()) return;
    if (!other.isValid()) {
        reset();
        return;
    }
    minPt = higher(other.minPt, minPt);
    maxPt = lower(other.maxPt, maxPt);
}

void Bbox::boundsInDir(UVector3 dir, Vector3* low, Vector3* high) const {
    const bool swapped = (maxPt - minPt) * dir < -kNullComponentTol;
    Vector3 lowest = swapped ? maxPt : minPt;
    Vector3 highest = swapped ? minPt : maxPt;
    for (const double x : {minPt.x, maxPt.x}) {
        for (const double y : {minPt.y, maxPt.y}) {
            for (const double z : {minPt.z, maxPt.z}) {
                const Vector3 corner(x, y, z);
                if ((corner - lowest) * dir < -kNullComponentTol) {
                    lowest = corner;
                } else if ((corner - highest) * dir > kNullComponentTol) {
                    highest = corner;
                }
            }
        }
    }
    if (low != nullptr) *low = lowest;
    if (high != nullptr) *high = highest;
}
