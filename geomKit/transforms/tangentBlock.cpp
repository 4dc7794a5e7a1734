#include "geomKit/transforms/tangentBlock.h"

#include <cmath>

#include "geomKit/transforms/wideVectors.h"
#include "geomKit/vAlgebra/Tolerances.h"

GEOMKIT_WIDE void normalize(VectorBlock& block) {
    for (int i = 0; i < VectorBlock::kSize; ++i) {
        const double x = block.x[i];
        const double y = block.y[i];
        const double z = block.z[i];
        const bool null = std::abs(x) < kNullComponentTol && std::abs(y) < kNullComponentTol &&
                          std::abs(z) < kNullComponentTol;
        const double r = 1.0 / std::sqrt(x * x + y * y + z * z);
        block.x[i] = null ? x : x * r;
        block.y[i] = null ? y : y * r;
        block.z[i] = null ? 1.0 : z * r;
    }
}

GEOMKIT_WIDE void cross(VectorBlock& a, const VectorBlock& b) {
    for (int i = 0; i < VectorBlock::kSize; ++i) {
        const double x = a.y[i] * b.z[i] - a.z[i] * b.y[i];
        const double y = a.z[i] * b.x[i] - a.x[i] * b.z[i];
        const double z = a.x[i] * b.y[i] - a.y[i] * b.x[i];
        a.x[i] = x;
        a.y[i] = y;
        a.z[i] = z;
    }
}

GEOMKIT_WIDE void basesOf(const UVector3* normals, int count, VectorBlock& b1, VectorBlock& b2) {
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
        b1.x[i] = seedX - x * dot;
        b1.y[i] = seedY - y * dot;
        b1.z[i] = seedZ - z * dot;
    }
    normalize(b1);
    for (int i = 0; i < VectorBlock::kSize; ++i) {
        b2.x[i] = n.y[i] * b1.z[i] - n.z[i] * b1.y[i];
        b2.y[i] = n.z[i] * b1.x[i] - n.x[i] * b1.z[i];
        b2.z[i] = n.x[i] * b1.y[i] - n.y[i] * b1.x[i];
    }
    normalize(b2);
}
