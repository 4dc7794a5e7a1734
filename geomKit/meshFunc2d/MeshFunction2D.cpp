#include "geomKit/meshFunc2d/MeshFunction2D.h"

#include <utility>

#include "geomKit/meshFunc2d/ChainTree.h"
#include "geomKit/meshFunc2d/fineGrid/FineGrid.h"

namespace geomKit {

namespace {

using detail::ChainTree;
using detail::FineGrid;

}  // namespace

MeshFunction2D::MeshFunction2D(bool extrapolate_) : extrapolateFlag(extrapolate_) {
    initEvaluatorHelper();
}

MeshFunction2D::MeshFunction2D(const std::vector<Point>& params_, const std::vector<Point>& values_,
                               const std::vector<int>& facets_,
                               const std::vector<float>& normaldots_)
    : params(params_),
      values(values_),
      normaldots(normaldots_),
      facets(facets_),
      extrapolateFlag(true) {
    initEvaluatorHelper();
}

MeshFunction2D::~MeshFunction2D() = default;

MeshFunction2D::MeshFunction2D(MeshFunction2D&& other) noexcept
    : MeshFunction2D(other.extrapolateFlag) {
    iSwap(other);
}

MeshFunction2D& MeshFunction2D::operator=(MeshFunction2D&& other) noexcept {
    MeshFunction2D taken(std::move(other));
    iSwap(taken);
    return *this;
}

void MeshFunction2D::iSwap(MeshFunction2D& other) noexcept {
    using std::swap;
    swap(params, other.params);
    swap(values, other.values);
    swap(normaldots, other.normaldots);
    swap(facets, other.facets);
    swap(cells, other.cells);
    swap(boxMin, other.boxMin);
    swap(boxMax, other.boxMax);
    swap(cellScale, other.cellScale);
    swap(cellCounts, other.cellCounts);
    swap(extrapolateFlag, other.extrapolateFlag);
    swap(boundaries, other.boundaries);
    swap(boundaryFacets, other.boundaryFacets);
    swap(fineGrid_, other.fineGrid_);
    swap(chainTree_, other.chainTree_);
}

MeshFunction2D* MeshFunction2D::copy() const {
    return clone().release();
}

std::unique_ptr<MeshFunction2D> MeshFunction2D::clone() const {
    auto result = std::make_unique<MeshFunction2D>(extrapolateFlag);
    result->params = params;
    result->values = values;
    result->normaldots = normaldots;
    result->facets = facets;
    result->cells = cells;
    result->boxMin = boxMin;
    result->boxMax = boxMax;
    result->cellScale = cellScale;
    result->cellCounts = cellCounts;
    result->boundaryFacets = boundaryFacets;
    result->boundaries.reserve(boundaries.size());
    for (const auto& boundary : boundaries) {
        result->boundaries.push_back(
            boundary ? std::make_unique<PolylineProjector>(boundary->points) : nullptr);
    }
    if (fineGrid_) result->fineGrid_ = std::make_unique<const FineGrid>(*fineGrid_);
    if (chainTree_) result->chainTree_ = std::make_unique<const ChainTree>(*chainTree_);
    return result;
}

}  // namespace geomKit
