/// @file
/// Tangents and unit vectors for many vertices at once: what `getBasis` and `UVector3` compute, bit
/// for bit, written without branches over arrays so that compilers use whole vector registers.
/// Three roots and three divisions a vertex are most of the work of skinning a normal. Not
/// installed.
#pragma once

#include "geomKit/vAlgebra/UVector3.h"
#include "geomKit/vAlgebra/Vector3.h"

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
void normalize(VectorBlock& block);

/// Replaces every vector of `a` by its cross product with that of `b`.
void cross(VectorBlock& a, const VectorBlock& b);

/// The two `getBasis` vectors of each of the `count` normals; the rest of the block is filled with
/// those of (0, 0, 1).
void basesOf(const UVector3* normals, int count, VectorBlock& b1, VectorBlock& b2);
