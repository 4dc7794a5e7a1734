// Extrapolation from the nearest boundary.
#include <algorithm>

#include "geomKit/internal/outputs.h"
#include "geomKit/internal/toIndex.h"
#include "geomKit/meshFunc2d/ChainTree.h"
#include "geomKit/meshFunc2d/MeshFunction2D.h"

namespace geomKit {

namespace {

using detail::ChainTree;
using detail::offset;
using detail::toIndex;

/// Points of an array that are looked for inside the mesh together.
constexpr std::size_t kChunk = 256;

/// The facet that owns a segment, or -1: hosts can edit the lists.
int _ownerOf(const ChainTree::Nearest& nearest, const std::vector<std::vector<int>>& owners) {
    if (nearest.chain < 0 || toIndex(nearest.chain) >= owners.size()) return -1;
    const std::vector<int>& chain = owners[toIndex(nearest.chain)];
    if (nearest.segment < 0 || toIndex(nearest.segment) >= chain.size()) return -1;
    return chain[toIndex(nearest.segment)];
}

}  // namespace

bool MeshFunction2D::extrapolate(const Point& p, Point* outValue, float* outFloat) const {
    if (!extrapolateFlag) return extrapolateOld(p, outValue, outFloat);
    return evaluate(p, outValue, outFloat) || iExtendBoundary(p, outValue, outFloat);
}

std::size_t MeshFunction2D::extrapolate(const Point* points, std::size_t count, Point* outValues,
                                        float* outFloats, bool* outFound) const {
    std::size_t hits = 0;
    for (std::size_t first = 0; first < count; first += kChunk) {
        const std::size_t end = first + (std::min)(kChunk, count - first);
        bool isInside[kChunk] = {};
        if (extrapolateFlag) {
            evaluate(points + first, end - first, offset(outValues, first),
                     offset(outFloats, first), isInside);
        }
        for (std::size_t i = first; i < end; ++i) {
            Point* const value = offset(outValues, i);
            float* const number = offset(outFloats, i);
            const bool hit =
                isInside[i - first] || (extrapolateFlag ? iExtendBoundary(points[i], value, number)
                                                        : extrapolateOld(points[i], value, number));
            if (outFound != nullptr) outFound[i] = hit;
            hits += hit ? 1 : 0;
        }
    }
    return hits;
}

bool MeshFunction2D::iExtendBoundary(const Point& p, Point* outValue, float* outFloat) const {
    if (!iIsIndexed() || !chainTree_) return false;
    const int facet = _ownerOf(chainTree_->nearest(p, boundaries), boundaryFacets);
    if (facet < 0 || 3 * toIndex(facet) + 2 >= facets.size()) return false;
    const int* corner = &facets[3 * toIndex(facet)];
    return iEvalInFacet(corner[0], corner[1], corner[2], p, outValue, outFloat, false);
}

}  // namespace geomKit
