/// @file
/// The arithmetic of `LineTriangleInt`, for one triangle or for several side by side. Not for
/// hosts.
///
/// `V` is `Vector3`, or a type of several vectors with the same operators, whose dot product is
/// several numbers.
#pragma once

#include <utility>

#include "geomKit/export.h"

namespace geomKit::detail {

template <typename V>
using NumberOf = decltype(std::declval<const V&>() * std::declval<const V&>());
template <typename V>
using TruthOf = decltype(std::declval<NumberOf<V>>() < std::declval<NumberOf<V>>());

/// The first step: the sphere about the centroid of the triangle.
template <typename V>
struct LineTriangleSphere {
    V centroid;
    NumberOf<V> offsetSq;  ///< squared distance of p from the centroid
    NumberOf<V> distSq;    ///< squared distance of the line from the centroid

    GEOMKIT_ALWAYS_INLINE LineTriangleSphere(const V& p, const V& d, const V& a, const V& b,
                                             const V& c) noexcept {
        centroid = ((a + b) + c) / 3.0;
        const V v = p - centroid;
        const NumberOf<V> h = v * d;
        offsetSq = v.lengthSq();
        distSq = offsetSq - h * h;
    }

    /// The squared distance of a corner, and the larger one of two corners.
    [[nodiscard]] GEOMKIT_ALWAYS_INLINE NumberOf<V> radiusSq(const V& a) const noexcept {
        return (centroid - a).lengthSq();
    }
    [[nodiscard]] GEOMKIT_ALWAYS_INLINE NumberOf<V> radiusSq(const V& b,
                                                             const V& c) const noexcept {
        const NumberOf<V> ofB = radiusSq(b);
        const NumberOf<V> ofC = radiusSq(c);
        return ofB < ofC ? ofC : ofB;
    }
};

/// The remaining steps, settled without their roots and divisions wherever rounding cannot matter.
///
/// The weights of Moeller and Trumbore, times their determinant, have the signs of the areas that
/// the documented steps compare with -tol. `depth` is the least weight in absolute value if all
/// have one sign. Otherwise it is negative, and some weight of each sign is at least that far from
/// zero.
///
/// Let e^2 be edgesSq and z^2 be sizeSq. From |det| > e^2 / 1024 and |d|^2 < 2 it follows that the
/// relative error of n is below 4e-13 and that the sine between line and plane is above 1/730. In
/// the unit of the weights, the areas are then off by less than 1e-9 z e. |depth| exceeds
/// 7e-9 z e + 7 |tol|, so their signs are certain. The first comparison also keeps n from being
/// null and its length from overflowing. NaN and overflow fail the comparisons.
template <typename V>
struct LineTriangleSides {
    V fromLine;  ///< from p to the first corner
    V n;         ///< the cross product of the edges
    NumberOf<V> depth;
    TruthOf<V> areKnown;

    GEOMKIT_ALWAYS_INLINE LineTriangleSides(const V& p, const V& d, const V& a, const V& b,
                                            const V& c, double tol,
                                            const NumberOf<V>& offsetSq) noexcept
        : fromLine(a - p), n((b - a) % (c - a)) {
        const V ab = b - a;
        const V ac = c - a;
        const V moment = d % fromLine;
        const NumberOf<V> det = n * d;
        const NumberOf<V> wc = moment * ab;
        const NumberOf<V> wb = -(moment * ac);
        const NumberOf<V> wa = det - wb - wc;
        // Without a branch for each edge: which edge a line passes cannot be predicted.
        const NumberOf<V> lower = wc < wb ? wc : wb;
        const NumberOf<V> higher = wb < wc ? wc : wb;
        const NumberOf<V> lowest = wa < lower ? wa : lower;
        const NumberOf<V> highest = higher < wa ? wa : higher;
        depth = lowest < -highest ? -highest : lowest;

        const NumberOf<V> edgesSq = ab.lengthSq() + ac.lengthSq();
        const NumberOf<V> sizeSq = p.lengthSq() + offsetSq + edgesSq;
        const TruthOf<V> isSteep = det * det > 0x1p-20 * (edgesSq * edgesSq) + 1e-24;
        const TruthOf<V> isDeep = depth * depth > 1e-16 * (sizeSq * edgesSq) + 100.0 * (tol * tol);
        const TruthOf<V> isUnit = d.lengthSq() < 2.0;
        areKnown = isSteep & isDeep & isUnit;
    }

    /// The line's parameter in the plane of the triangle.
    [[nodiscard]] GEOMKIT_ALWAYS_INLINE NumberOf<V> param(const V& d) const noexcept {
        const V unit = n * (1.0 / n.length());
        return (fromLine * unit) / (d * unit);
    }
};

}  // namespace geomKit::detail
