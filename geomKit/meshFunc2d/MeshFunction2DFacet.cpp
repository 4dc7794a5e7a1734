// Mesh functions in one facet and at one edge.
#include <limits>

#include "geomKit/internal/toIndex.h"
#include "geomKit/meshFunc2d/MeshFunction2D.h"
#include "geomKit/meshFunc2d/barycentric.h"
#include "geomKit/meshFunc2d/blend.h"
#include "geomKit/meshFunc2d/cellCoordinate.h"

namespace geomKit {

namespace {

using detail::blend;
using detail::FacetEdges;
using detail::FacetFrame;
using detail::FacetWeights;
using detail::kMeshEps;
using detail::toIndex;

bool _isIndex(int i, std::size_t size) {
    return i >= 0 && toIndex(i) < size;
}

}  // namespace

bool MeshFunction2D::iEvalInFacet(int i0, int i1, int i2, const Point& p, Point* outValue,
                                  float* outFloat, bool strict) const {
    const std::size_t size = params.size() < values.size() ? params.size() : values.size();
    if (!_isIndex(i0, size) || !_isIndex(i1, size) || !_isIndex(i2, size)) return false;
    const Point& p0 = params[toIndex(i0)];
    const FacetEdges edges(p0, params[toIndex(i1)], params[toIndex(i2)]);
    if (edges.isDegenerate()) return false;
    const FacetWeights weights = FacetFrame(p0, edges).weightsAt(p);
    if (strict && weights.isOutside()) return false;
    const int corner[3] = {i0, i1, i2};
    blend(*this, corner, weights, outValue, outFloat);
    return true;
}

double MeshFunction2D::iDistToEdge(int a, int b, const Point& p, bool* interior,
                                   bool useValues) const {
    if (interior != nullptr) *interior = false;
    const std::vector<Point>& points = useValues ? values : params;
    if (!_isIndex(a, points.size()) || !_isIndex(b, points.size())) {
        return std::numeric_limits<double>::infinity();
    }
    const Point e = points[toIndex(b)] - points[toIndex(a)];
    const Point w = p - points[toIndex(a)];
    const double lengthSq = e.v * e.v + e.u * e.u;
    const double toStartSq = w.v * w.v + w.u * w.u;
    if (lengthSq < kMeshEps * kMeshEps) return toStartSq;
    const double t = e * w;
    if (t < -lengthSq * kMeshEps) return toStartSq;
    if (t > lengthSq + kMeshEps * lengthSq) {
        const Point toEnd = p - points[toIndex(b)];
        return toEnd * toEnd;
    }
    if (interior != nullptr) *interior = true;
    return toStartSq - t * t / lengthSq;
}

}  // namespace geomKit
