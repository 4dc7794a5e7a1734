/// @file
/// What a mesh function answers in a facet. Internal to mesh functions.
#pragma once

#include "geomKit/internal/toIndex.h"
#include "geomKit/meshFunc2d/MeshFunction2D.h"
#include "geomKit/meshFunc2d/barycentric.h"

namespace geomKit::detail {

/// Blends the data of three vertices, which must be there: v1 a + v2 b + v0 c, in this order. The
/// float is rounded to float after each term, and -1 when there are fewer floats than values.
/// Either output may be null.
inline void blend(const MeshFunction2D& mesh, const int* corner, const FacetWeights& w,
                  MeshFunction2D::Point* outValue, float* outFloat) {
    const std::size_t i0 = toIndex(corner[0]);
    const std::size_t i1 = toIndex(corner[1]);
    const std::size_t i2 = toIndex(corner[2]);
    if (outValue != nullptr) {
        *outValue = mesh.values[i1] * w.a + mesh.values[i2] * w.b + mesh.values[i0] * w.c;
    }
    if (outFloat == nullptr) return;
    if (mesh.normaldots.size() < mesh.values.size()) {
        *outFloat = -1.0f;
        return;
    }
    auto f = static_cast<float>(mesh.normaldots[i1] * w.a);
    f = static_cast<float>(mesh.normaldots[i2] * w.b + f);
    f = static_cast<float>(mesh.normaldots[i0] * w.c + f);
    *outFloat = f;
}

}  // namespace geomKit::detail
