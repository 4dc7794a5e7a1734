/// @file
/// Tangents and unit vectors for many vertices at once: what `getBasis` and `UVector3` compute, bit
/// for bit, written without branches over arrays so that compilers use whole vector registers.
/// Three roots and three divisions a vertex are most of the work of skinning a normal. Not
/// installed.
#pragma once

#include <cmath>

#include "geomKit/internal/wideCall.h"
#include "geomKit/vAlgebra/Tolerances.h"
#include "geomKit/vAlgebra/UVector3.h"
#include "geomKit/vAlgebra/Vector3.h"

namespace geomKit::detail {

/// A block of vectors, component by component.
struct VectorBlock {
    static constexpr int kSize = 64;
    double x[kSize];
    double y[kSize];
    double z[kSize];

    Vector3 get(int i) const { return {x[i], y[i], z[i]}; }
    void set(int i, const Vector3& v) {
        x[i] = v.x;
        y[i] = v.y;
        z[i] = v.z;
    }
};

/// Replaces every vector v of the block by `UVector3(v)`.
GEOMKIT_INLINE_KERNEL void normalize(VectorBlock* block);

/// Replaces every vector of `a` by the `UVector3` of its cross product with that of `b`.
GEOMKIT_INLINE_KERNEL void unitCross(VectorBlock* a, const VectorBlock* b);

/// The two `getBasis` vectors of each of the `count` normals; the rest of the block is filled with
/// those of (0, 0, 1).
GEOMKIT_INLINE_KERNEL void basesOf(const UVector3* normals, int count, VectorBlock* b1,
                                   VectorBlock* b2);

GEOMKIT_INLINE_KERNEL void normalize(VectorBlock* block) {
    for (int i = 0; i < VectorBlock::kSize; ++i) {
        const double x = block->x[i];
        const double y = block->y[i];
        const double z = block->z[i];
        const bool null = std::abs(x) < kNullComponentTol && std::abs(y) < kNullComponentTol &&
                          std::abs(z) < kNullComponentTol;
        const double r = 1.0 / std::sqrt(x * x + y * y + z * z);
        block->x[i] = null ? x : x * r;
        block->y[i] = null ? y : y * r;
        block->z[i] = null ? 1.0 : z * r;
    }
}

GEOMKIT_INLINE_KERNEL void unitCross(VectorBlock* a, const VectorBlock* b) {
    for (int i = 0; i < VectorBlock::kSize; ++i) {
        a->set(i, a->get(i) % b->get(i));
    }
    normalize(a);
}

GEOMKIT_INLINE_KERNEL void basesOf(const UVector3* normals, int count, VectorBlock* b1,
                                   VectorBlock* b2) {
    VectorBlock n;
    for (int i = 0; i < VectorBlock::kSize; ++i) {
        n.set(i, i < count ? normals[i] : UVector3());
    }
    for (int i = 0; i < VectorBlock::kSize; ++i) {
        const double x = n.x[i];
        const double y = n.y[i];
        const double z = n.z[i];
        const double ax = std::abs(x);
        const double ay = std::abs(y);
        const double az = std::abs(z);
        const double seedX = (ax < ay && ax < az) ? 1.0 : 0.0;
        const double seedY = ay < az ? 1.0 - seedX : 0.0;
        const double seedZ = 1.0 - seedX - seedY;
        const double dot = seedX * x + seedY * y + seedZ * z;
        b1->x[i] = seedX - x * dot;
        b1->y[i] = seedY - y * dot;
        b1->z[i] = seedZ - z * dot;
    }
    normalize(b1);
    for (int i = 0; i < VectorBlock::kSize; ++i) {
        b2->set(i, n.get(i) % b1->get(i));
    }
    normalize(b2);
}

}  // namespace geomKit::detail
