/// @file
/// `Bbox`: an axis-aligned box with an explicit empty state.
#pragma once

#include <vector>

#include "geomKit/export.h"
#include "geomKit/vAlgebra/Tolerances.h"
#include "geomKit/vAlgebra/UVector3.h"
#include "geomKit/vAlgebra/Vector3.h"

/// The box between two corners.
///
/// A box is valid when on every axis `minPt` <= `maxPt` + 1e-13 (inclusive). The marker of the
/// empty box is (0, 0, 0), (0, 0, -2); every other box with a corner out of order or NaN is as
/// invalid. The rules on invalid boxes differ from those of other libraries:
///
/// - `a + b` is invalid as soon as one operand is: the empty box is not neutral.
/// - `a += b` copies b when a is invalid, and makes a valid a invalid when b is invalid.
/// - a box of no points is the valid box at the origin.
///
/// To join boxes of which some may be empty: `if (b.isValid()) a += b;`.
///
/// Pure value type; const members may be called from any number of threads.
class Bbox {
public:
    Vector3 minPt;
    Vector3 maxPt;

    /// The empty box.
    Bbox() : maxPt(0.0, 0.0, kInvalidMark) {}
    /// The box of some points; of none, the valid box at the origin, unlike `Bbox()`.
    ///
    /// A coordinate widens the box when it is strictly smaller or larger: a NaN is passed over,
    /// unless it is in the first point, where it stays and makes the box invalid. Of zeros of both
    /// signs the first in the list is kept. Implicit: a list of points may be passed for its box.
    GEOMKIT_API Bbox(const std::vector<Vector3>& pts);

    /// Makes this the empty box.
    void reset() { *this = Bbox(); }
    /// Makes this the box of one point.
    void init(const Vector3& p);
    /// Widens a valid box to hold `p`; an invalid one becomes the box of `p`.
    void update(const Vector3& p);

    bool isValid() const;
    /// The box around both; the empty box when either is invalid.
    GEOMKIT_API Bbox operator+(const Bbox& other) const;
    /// Adds in place; an invalid box becomes a copy of `other`, valid or not.
    GEOMKIT_API Bbox& operator+=(const Bbox& other);
    /// True when the box is valid and holds `p`, faces included, without tolerance.
    bool filter(const Vector3& p) const;
    /// Product of the edge lengths; -2 when invalid. A box that is valid by its slack only, with an
    /// edge down to -1e-13, has a product that may be negative.
    double volume() const;
    /// Reduces this box to the part shared with `other`. An invalid box stays as it is; an invalid
    /// `other` empties this one. Disjoint boxes come out with a lower corner above the upper:
    /// invalid when they are more than 1e-13 apart.
    GEOMKIT_API void isec(const Bbox& other);
    /// The corners with the smallest and the largest projection on `dir`; either pointer may be
    /// null. Validity is not asked for.
    ///
    /// A corner must be better by more than 1e-13 to replace another: the lower and upper corner
    /// (swapped when they point against `dir`) first, then the eight in order, x outermost. So for
    /// a direction along an axis the answers are those two, not others of the same faces.
    GEOMKIT_API void boundsInDir(UVector3 dir, Vector3* low, Vector3* high) const;

private:
    /// In `maxPt.z` of the empty box, and the volume of any invalid one.
    static constexpr double kInvalidMark = -2.0;
};

inline void Bbox::init(const Vector3& p) {
    minPt = p;
    maxPt = p;
}

inline void Bbox::update(const Vector3& p) {
    if (!isValid()) {
        init(p);
        return;
    }
    const auto widen = [](double v, double& lo, double& hi) {
        if (v < lo) {
            lo = v;
        } else if (v > hi) {
            hi = v;
        }
    };
    widen(p.x, minPt.x, maxPt.x);
    widen(p.y, minPt.y, maxPt.y);
    widen(p.z, minPt.z, maxPt.z);
}

inline bool Bbox::isValid() const {
    return minPt.x <= maxPt.x + kNullComponentTol && minPt.y <= maxPt.y + kNullComponentTol &&
           minPt.z <= maxPt.z + kNullComponentTol;
}

inline bool Bbox::filter(const Vector3& p) const {
    return isValid() && minPt.x <= p.x && p.x <= maxPt.x && minPt.y <= p.y && p.y <= maxPt.y &&
           minPt.z <= p.z && p.z <= maxPt.z;
}

inline double Bbox::volume() const {
    if (!isValid()) return kInvalidMark;
    const Vector3 edges = maxPt - minPt;
    return edges.x * edges.y * edges.z;
}
