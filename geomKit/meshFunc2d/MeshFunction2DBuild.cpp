// What a mesh function derives from its data: the grid, the index and the boundaries.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "geomKit/internal/toIndex.h"
#include "geomKit/meshFunc2d/ChainTree.h"
#include "geomKit/meshFunc2d/MeshFunction2D.h"
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
    std::uint8_t first[2] = {255, 255};
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

/// The bounding box of some points.
void _bound(const std::vector<ktNM::vect2<double>>& points, ktNM::vect2<double>& low,
            ktNM::vect2<double>& high) {
    low = high = points[0];
    for (const auto& p : points) {
        for (int k = 0; k < 2; ++k) {
            if (low[k] > p[k]) {
                low[k] = p[k];
            } else if (high[k] < p[k]) {
                high[k] = p[k];
            }
        }
    }
}

Vector3 _lift(const ktNM::vect2<double>& p) {
    return {p.u, p.v, 0.0};
}

}  // namespace

int MeshFunction2D::iVertexCount() const noexcept {
    constexpr std::size_t kMost = (std::numeric_limits<int>::max)();
    return static_cast<int>((std::min)({params.size(), values.size(), kMost}));
}

void MeshFunction2D::initEvaluatorHelper() {
    Point low = boxMin;
    Point high = boxMax;
    if (!params.empty()) _bound(params, low, high);
    const Point extent = high - low;
    if (params.empty() || extent * extent < kMeshEps * kMeshEps) {
        boxMin = low;
        boxMax = high;
        cellScale = Point(-1.0, -1.0);
        cellCounts = ktNM::vect2<int>(0, 0);
        fineGrid_.reset();
        return;
    }

    const Point margin = extent * kMargin;
    low -= margin;
    high += margin;
    const ktNM::vect2<int> counts(kCellsPerAxis, kCellsPerAxis);
    const CellFrame frame = {
        low, {counts.u / (high.u - low.u), counts.v / (high.v - low.v)}, counts};
    std::vector<std::vector<int>> lists = iListFacets(frame);
    auto fineGrid = std::make_unique<const FineGrid>(frame, lists, params, facets);
    if (extrapolateFlag) initBoundaries();

    // Nothing throws from here on.
    boxMin = low;
    boxMax = high;
    cellScale = frame.scale;
    cellCounts = counts;
    cells = std::move(lists);
    fineGrid_ = std::move(fineGrid);
}

std::vector<std::vector<int>> MeshFunction2D::iListFacets(const CellFrame& frame) const {
    const int vertexCount = iVertexCount();
    std::vector<CellBox> boxes(facets.size() / 3);
    std::vector<std::size_t> counts(toIndex(kCellsPerAxis * kCellsPerAxis));
    for (std::size_t f = 0; f < boxes.size(); ++f) {
        CellBox box;
        bool placed = true;
        for (std::size_t corner = 3 * f; corner < 3 * f + 3; ++corner) {
            const int vertex = facets[corner];
            placed = placed && vertex >= 0 && vertex < vertexCount;
            for (int k = 0; placed && k < 2; ++k) {
                const double x = (params[toIndex(vertex)][k] - frame.origin[k]) * frame.scale[k];
                placed = std::isfinite(x);
                if (placed) box.include(k, cellCoordinate(x, kCellsPerAxis));
            }
        }
        if (!placed) continue;
        boxes[f] = box;
        box.forEach([&](int cu, int cv) { ++counts[toIndex(cu * kCellsPerAxis + cv)]; });
    }
    // Counted first: lists that grow step by step are moved again and again.
    std::vector<std::vector<int>> lists(counts.size());
    for (std::size_t i = 0; i < counts.size(); ++i)
        lists[i].reserve(counts[i]);
    for (std::size_t f = 0; f < boxes.size(); ++f) {
        boxes[f].forEach([&](int cu, int cv) {
            lists[toIndex(cu * kCellsPerAxis + cv)].push_back(static_cast<int>(f));
        });
    }
    return lists;
}

void MeshFunction2D::initBoundaries() {
    std::vector<std::unique_ptr<PolylineProjector>> projectors;
    std::vector<std::vector<int>> owners;
    std::unique_ptr<const ChainTree> tree;
    constexpr std::size_t kMost = (std::numeric_limits<int>::max)();
    if (facets.size() > 2 && facets.size() % 3 == 0 && facets.size() <= kMost) {
        std::vector<Vector3> points;
        for (BoundaryChain& chain : findBoundaryChains(facets, iVertexCount())) {
            points.clear();
            for (const int v : chain.vertices) {
                points.push_back(_lift(params[toIndex(v)]));
            }
            projectors.push_back(std::make_unique<PolylineProjector>(points));
            owners.push_back(std::move(chain.facets));
        }
        tree = std::make_unique<const ChainTree>(projectors);
    }
    // Nothing throws from here on.
    boundaries = std::move(projectors);
    boundaryFacets = std::move(owners);
    chainTree_ = std::move(tree);
}

}  // namespace geomKit
