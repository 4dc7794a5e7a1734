#include "geomKit/meshFunc2d/MeshFunction2D.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "geomKit/internal/toIndex.h"
#include "geomKit/meshFunc2d/ChainTree.h"
#include "geomKit/meshFunc2d/boundaryChains.h"
#include "geomKit/meshFunc2d/cellCoordinate.h"
#include "geomKit/meshFunc2d/fineGrid/FineGrid.h"

namespace geomKit {

namespace {

using detail::BoundaryChain;
using detail::cellCoordinate;
using detail::CellFrame;
using detail::ChainTree;
using detail::findBoundaryChains;
using detail::FineGrid;
using detail::kMeshEps;
using detail::toIndex;

constexpr int kCellsPerAxis = 20;
constexpr double kMargin = 0.01;

/// The cells of the bounding rectangle of a facet's vertices, or none. Small: there is one a facet.
struct CellBox {
    std::uint8_t first[2] = {kCellsPerAxis, kCellsPerAxis};
    std::uint8_t last[2] = {0, 0};

    void include(int axis, int cell) {
        const auto c = static_cast<std::uint8_t>(cell);
        first[axis] = (std::min)(first[axis], c);
        last[axis] = (std::max)(last[axis], c);
    }
    template <typename Visit>
    void forEach(Visit visit) const {
        for (int cu = first[0]; cu <= last[0]; ++cu) {
            for (int cv = first[1]; cv <= last[1]; ++cv)
                visit(cu, cv);
        }
    }
};

Vector3 _lift(const ktNM::vect2<double>& p) {
    return {p.u, p.v, 0.0};
}

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

MeshFunction2D* MeshFunction2D::copy() const {
    auto result = std::make_unique<MeshFunction2D>(false);
    result->params = params;
    result->values = values;
    result->normaldots = normaldots;
    result->facets = facets;
    result->cells = cells;
    result->boxMin = boxMin;
    result->boxMax = boxMax;
    result->cellScale = cellScale;
    result->cellCounts = cellCounts;
    result->extrapolateFlag = extrapolateFlag;
    result->boundaryFacets = boundaryFacets;
    result->boundaries.reserve(boundaries.size());
    if (fineGrid_) result->fineGrid_ = std::make_unique<const FineGrid>(*fineGrid_);
    if (chainTree_) result->chainTree_ = std::make_unique<const ChainTree>(*chainTree_);
    for (const auto& boundary : boundaries) {
        result->boundaries.push_back(std::make_unique<PolylineProjector>(boundary->points));
    }
    return result.release();
}

void MeshFunction2D::initEvaluatorHelper() {
    cellScale = Point(-1.0, -1.0);
    cellCounts = ktNM::vect2<int>(0, 0);
    if (params.empty()) return;

    boxMin = boxMax = params[0];
    for (const Point& p : params) {
        for (int k = 0; k < 2; ++k) {
            if (boxMin[k] > p[k]) {
                boxMin[k] = p[k];
            } else if (boxMax[k] < p[k]) {
                boxMax[k] = p[k];
            }
        }
    }
    const Point extent = boxMax - boxMin;
    if (extent * extent < kMeshEps * kMeshEps) return;

    const Point margin = extent * kMargin;
    boxMin = boxMin - margin;
    boxMax += margin;
    cellCounts = ktNM::vect2<int>(kCellsPerAxis, kCellsPerAxis);
    for (int k = 0; k < 2; ++k)
        cellScale[k] = cellCounts[k] / (boxMax[k] - boxMin[k]);
    iFillCells();
    const CellFrame frame = {boxMin, cellScale, cellCounts};
    fineGrid_ = std::make_unique<const FineGrid>(frame, cells, params, facets);
    if (extrapolateFlag) initBoundaries();
}

void MeshFunction2D::iFillCells() {
    const int vertexCount = static_cast<int>((std::min)(params.size(), values.size()));
    std::vector<CellBox> boxes(facets.size() / 3);
    std::vector<std::size_t> counts(toIndex(cellCounts.u) * toIndex(cellCounts.v));
    for (std::size_t f = 0; f < boxes.size(); ++f) {
        CellBox box;
        bool placed = true;
        for (std::size_t corner = 3 * f; corner < 3 * f + 3; ++corner) {
            const int vertex = facets[corner];
            placed = placed && vertex >= 0 && vertex < vertexCount;
            for (int k = 0; placed && k < 2; ++k) {
                const double x = (params[toIndex(vertex)][k] - boxMin[k]) * cellScale[k];
                placed = std::isfinite(x);
                if (placed) box.include(k, cellCoordinate(x, cellCounts[k]));
            }
        }
        if (!placed) continue;
        boxes[f] = box;
        box.forEach([&](int cu, int cv) { ++counts[iCellIndex(cu, cv)]; });
    }
    // Counted first: lists that grow step by step are moved again and again.
    cells.assign(counts.size(), std::vector<int>());
    for (std::size_t i = 0; i < counts.size(); ++i)
        cells[i].reserve(counts[i]);
    for (std::size_t f = 0; f < boxes.size(); ++f) {
        boxes[f].forEach(
            [&](int cu, int cv) { cells[iCellIndex(cu, cv)].push_back(static_cast<int>(f)); });
    }
}

void MeshFunction2D::initBoundaries() {
    boundaries.clear();
    boundaryFacets.clear();
    chainTree_.reset();
    if (facets.size() <= 2 || facets.size() % 3 != 0) return;

    const int vertexCount = static_cast<int>((std::min)(params.size(), values.size()));
    std::vector<Vector3> points;
    for (BoundaryChain& chain : findBoundaryChains(facets, vertexCount)) {
        points.clear();
        for (const int v : chain.vertices) {
            points.push_back(_lift(params[toIndex(v)]));
        }
        boundaries.push_back(std::make_unique<PolylineProjector>(points));
        boundaryFacets.push_back(std::move(chain.facets));
    }
    chainTree_ = std::make_unique<const ChainTree>(boundaries);
}

}  // namespace geomKit
