/// @file
/// `Bbox`: an axis-aligned box with an explicit empty state.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <iosfwd>
#include <type_traits>
#include <typeindex>
#include <vector>

#include "geomKit/export.h"
#include "geomKit/vAlgebra/Tolerances.h"
#include "geomKit/vAlgebra/UVector3.h"
#include "geomKit/vAlgebra/Vector3.h"
#include "geomKit/vAlgebra/hashNumbers.h"

namespace geomKit {

/// The box between two corners.
///
/// A box is valid when on every axis `minPt` <= `maxPt` + 1e-13 (inclusive). The marker of the
/// empty box is (0, 0, 0), (0, 0, -2); every other box with a corner out of order or NaN is as
/// invalid. What invalid boxes do may surprise:
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
    constexpr Bbox() noexcept : maxPt(0.0, 0.0, kInvalidMark) {}
    /// The box with these corners, as they are: invalid when they are out of order.
    constexpr Bbox(const Vector3& minPt_, const Vector3& maxPt_) noexcept
        : minPt(minPt_), maxPt(maxPt_) {}
    /// The box of some points; of none, the valid box at the origin, unlike `Bbox()`.
    ///
    /// A coordinate widens the box when it is strictly smaller or larger: a NaN is passed over,
    /// unless it is in the first point, where it stays and makes the box invalid. Of zeros of both
    /// signs the first in the list is kept. Implicit: a list of points may be passed for its box.
    Bbox(const std::vector<Vector3>& pts) noexcept : Bbox(pts.data(), pts.size()) {}
    /// The same for the points in braces: `Bbox{a, b}` is the box of two points in any order, while
    /// `Bbox(a, b)` takes them for its corners.
    Bbox(std::initializer_list<Vector3> pts) noexcept : Bbox(pts.begin(), pts.size()) {}
    /// The same for an array; null when there are no points.
    GEOMKIT_API Bbox(const Vector3* pts, std::size_t count) noexcept;

    /// Makes this the empty box.
    constexpr void reset() noexcept { *this = Bbox(); }
    /// Makes this the box of one point.
    constexpr void init(const Vector3& p) noexcept;
    /// Widens a valid box to hold `p`; an invalid one becomes the box of `p`.
    constexpr void update(const Vector3& p) noexcept;

    /// Equal in every coordinate, without tolerance. Both zeros are equal, NaN equals nothing. Two
    /// invalid boxes may differ.
    [[nodiscard]] constexpr bool operator==(const Bbox& other) const noexcept;
    [[nodiscard]] constexpr bool operator!=(const Bbox& other) const noexcept;

    [[nodiscard]] constexpr bool isValid() const noexcept;
    /// The point midway between the corners, (minPt + maxPt) / 2; of an invalid box too.
    [[nodiscard]] constexpr Vector3 center() const noexcept { return (minPt + maxPt) * 0.5; }
    /// The lengths of the edges, maxPt - minPt: some are negative when the box is invalid.
    [[nodiscard]] constexpr Vector3 size() const noexcept { return maxPt - minPt; }
    /// The box around both; the empty box when either is invalid.
    [[nodiscard]] GEOMKIT_API Bbox operator+(const Bbox& other) const noexcept;
    /// Adds in place; an invalid box becomes a copy of `other`, valid or not.
    GEOMKIT_API Bbox& operator+=(const Bbox& other) noexcept;
    /// True when the box is valid and holds `p`, faces included, without tolerance.
    [[nodiscard]] constexpr bool filter(const Vector3& p) const noexcept;
    /// Product of the edge lengths; -2 when invalid. A box that is valid by its slack only, with an
    /// edge down to -1e-13, has a product that may be negative.
    [[nodiscard]] constexpr double volume() const noexcept;
    /// Reduces this box to the part shared with `other`. An invalid box stays as it is; an invalid
    /// `other` empties this one. Disjoint boxes come out with a lower corner above the upper:
    /// invalid when they are more than 1e-13 apart.
    GEOMKIT_API void isec(const Bbox& other) noexcept;
    /// The corners with the smallest and the largest projection on `dir`; either pointer may be
    /// null. Validity is not asked for.
    ///
    /// A corner must be better by more than 1e-13 to replace another: the lower and upper corner
    /// (swapped when they point against `dir`) first, then the eight in order, x outermost. So for
    /// a direction along an axis the answers are those two, not others of the same faces.
    GEOMKIT_API void boundsInDir(UVector3 dir, Vector3* low, Vector3* high) const noexcept;

private:
    /// In `maxPt.z` of the empty box, and the volume of any invalid one.
    static constexpr double kInvalidMark = -2.0;
};

static_assert(sizeof(Bbox) == 6 * sizeof(double) && std::is_standard_layout_v<Bbox> &&
                  std::is_trivially_copyable_v<Bbox>,
              "a Bbox is six numbers: the lower and the upper corner");

/// Writes "(x, y, z) to (x, y, z)", or "empty" for an invalid box, in the stream's own number
/// format.
GEOMKIT_API std::ostream& operator<<(std::ostream& os, const Bbox& box);

constexpr void Bbox::init(const Vector3& p) noexcept {
    minPt = p;
    maxPt = p;
}

constexpr void Bbox::update(const Vector3& p) noexcept {
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

constexpr bool Bbox::operator==(const Bbox& other) const noexcept {
    return minPt.equalsExactly(other.minPt) && maxPt.equalsExactly(other.maxPt);
}

constexpr bool Bbox::operator!=(const Bbox& other) const noexcept {
    return !(*this == other);
}

constexpr bool Bbox::isValid() const noexcept {
    return minPt.x <= maxPt.x + kNullComponentTol && minPt.y <= maxPt.y + kNullComponentTol &&
           minPt.z <= maxPt.z + kNullComponentTol;
}

constexpr bool Bbox::filter(const Vector3& p) const noexcept {
    return isValid() && minPt.x <= p.x && p.x <= maxPt.x && minPt.y <= p.y && p.y <= maxPt.y &&
           minPt.z <= p.z && p.z <= maxPt.z;
}

constexpr double Bbox::volume() const noexcept {
    if (!isValid()) return kInvalidMark;
    const Vector3 edges = size();
    return edges.x * edges.y * edges.z;
}

}  // namespace geomKit

namespace std {

/// Goes with `==`.
template <>
struct hash<geomKit::Bbox> {
    std::size_t operator()(const geomKit::Bbox& box) const noexcept {
        using geomKit::detail::hashNumbers;
        return hashNumbers(box.maxPt.data(), 3, hashNumbers(box.minPt.data(), 3));
    }
};

}  // namespace std
