#include <algorithm>
#include <cmath>
#include <limits>

#include "geomKit/WideCall.h"
#include "geomKit/at.h"
#include "geomKit/meshFunc2d/ChainTree.h"
#include "geomKit/meshFunc2d/FacetIndex.h"
#include "geomKit/meshFunc2d/MeshFunction2D.h"
#include "geomKit/meshFunc2d/barycentric.h"
#include "geomKit/meshFunc2d/cellCoordinate.h"

namespace {

bool isIndex(int i, std::size_t size) {
    return i >= 0 && at(i) < size;
}

/// Queries of an array that go together, so that their memory accesses overlap.
constexpr std::size_t kBatch = 32;
/// Candidates of each whose data are fetched ahead: few queries need more.
constexpr int kPrefetched = 2;
/// Meshes of up to this many vertices stay in the cache by themselves.
constexpr std::size_t kCachedVertices = 8192;

void prefetch([[maybe_unused]] const void* address) {
#if defined(__GNUC__)
    __builtin_prefetch(address);
#endif
}

/// Fetches what the first candidates need. Always inlined, because g++ takes a function that only
/// prefetches for one without effect.
GEOMKIT_INLINE_KERNEL void prefetchData(const MeshFunction2D& mesh, const FacetCell& cell,
                                        unsigned candidates) {
    const bool hasFloats = mesh.normaldots.size() >= mesh.values.size();
    for (int n = 0; n < kPrefetched && candidates != 0; ++n, candidates &= candidates - 1) {
        for (int k = 0; k < 3; ++k) {
            const std::size_t vertex = at(cell.vertex(lowestBit(candidates), k));
            prefetch(&mesh.params[vertex]);
            prefetch(&mesh.values[vertex]);
            if (hasFloats) prefetch(&mesh.normaldots[vertex]);
        }
    }
}

/// A point of an array on its way: the candidates left, and the weights in the first of them once
/// that accepts the point.
struct ArrayQuery {
    FacetPlace place;
    unsigned candidates = 0;
    FacetWeights weights = {};
};

}  // namespace

FacetPlace MeshFunction2D::locate(const Point& p) const {
    if (cellCounts.u < 1 || cellCounts.v < 1) return {};
    Point x;
    int cell[2];
    for (int k = 0; k < 2; ++k) {
        x[k] = (p[k] - boxMin[k]) * cellScale[k];
        // Written so that NaN is outside too.
        if (!(x[k] >= -kMeshEps && x[k] <= cellCounts[k] + kMeshEps)) return {};
        cell[k] = cellCoordinate(x[k], cellCounts[k]);
    }
    return facetIndex_->find(x, cell[0], cell[1], cellIndex(cell[0], cell[1]));
}

bool MeshFunction2D::evaluate(const Point& p, Point* outValue, float* outFloat) const {
    const FacetPlace place = locate(p);
    if (place.cell == nullptr) return false;
    const FacetCell& cell = *place.cell;
    if (cell.isListed()) return evaluateListed(cell, p, outValue, outFloat);
    for (unsigned rest = cell.facetsOfPart[place.part]; rest != 0; rest &= rest - 1) {
        const unsigned f = lowestBit(rest);
        const FacetWeights weights = cell.frame(f, params.data()).weightsAt(p);
        if (weights.isOutside()) continue;
        blend(cell, f, weights, outValue, outFloat);
        return true;
    }
    return false;
}

bool MeshFunction2D::evaluateListed(const FacetCell& cell, const Point& p, Point* outValue,
                                    float* outFloat) const {
    for (const int* f = facetIndex_->begin(cell); f != facetIndex_->end(cell); ++f) {
        const int* corner = &facets[3 * at(*f)];
        if (iEvalInFacet(corner[0], corner[1], corner[2], p, outValue, outFloat, true)) return true;
    }
    return false;
}

std::size_t MeshFunction2D::evaluate(const Point* points, std::size_t count, Point* outValues,
                                     float* outFloats, bool* outFound) const {
    std::size_t hits = 0;
    for (std::size_t i = 0; i < count; i += kBatch) {
        hits += evaluateBatch(points + i, (std::min)(kBatch, count - i),
                              outValues != nullptr ? outValues + i : nullptr,
                              outFloats != nullptr ? outFloats + i : nullptr,
                              outFound != nullptr ? outFound + i : nullptr);
    }
    return hits;
}

std::size_t MeshFunction2D::evaluateBatch(const Point* points, std::size_t count, Point* outValues,
                                          float* outFloats, bool* outFound) const {
    ArrayQuery queries[kBatch];
    for (std::size_t i = 0; i < count; ++i) {
        queries[i].place = locate(points[i]);
        if (const FacetCell* cell = queries[i].place.cell) {
            prefetch(cell->facetsOfPart);
            prefetch(cell->vertices);
        }
    }

    std::size_t active[kBatch];
    std::size_t activeCount = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const auto [cell, part] = queries[i].place;
        if (cell == nullptr || cell->isListed()) continue;
        const unsigned candidates = cell->facetsOfPart[part];
        queries[i].candidates = candidates;
        active[activeCount] = i;
        activeCount += candidates != 0 ? 1 : 0;
        if (params.size() > kCachedVertices) prefetchData(*this, *cell, candidates);
    }

    // One candidate of every point in turn, and without a branch on the outcome: which of a
    // point's candidates accepts it cannot be predicted.
    while (activeCount > 0) {
        std::size_t rejectedCount = 0;
        for (std::size_t j = 0; j < activeCount; ++j) {
            const std::size_t i = active[j];
            ArrayQuery& query = queries[i];
            const unsigned f = lowestBit(query.candidates);
            query.weights = query.place.cell->frame(f, params.data()).weightsAt(points[i]);
            const unsigned rejected = query.weights.isOutside() ? 1 : 0;
            query.candidates &= query.candidates - rejected;
            active[rejectedCount] = i;
            rejectedCount += rejected & (query.candidates != 0 ? 1U : 0U);
        }
        activeCount = rejectedCount;
    }

    std::size_t hits = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const auto& [place, candidates, weights] = queries[i];
        Point* outValue = outValues != nullptr ? outValues + i : nullptr;
        float* outFloat = outFloats != nullptr ? outFloats + i : nullptr;
        bool found = candidates != 0;
        if (found) {
            blend(*place.cell, lowestBit(candidates), weights, outValue, outFloat);
        } else if (place.cell != nullptr && place.cell->isListed()) {
            found = evaluateListed(*place.cell, points[i], outValue, outFloat);
        }
        if (outFound != nullptr) outFound[i] = found;
        hits += found ? 1 : 0;
    }
    return hits;
}

bool MeshFunction2D::extrapolate(const Point& p, Point* outValue, float* outFloat) const {
    if (!extrapolateFlag) return extrapolateOld(p, outValue, outFloat);
    if (cellCounts.u < 1 || cellCounts.v < 1) return false;
    if (evaluate(p, outValue, outFloat)) return true;

    if (!chainTree_) return false;
    const ChainTree::Nearest nearest = chainTree_->nearest(p, boundaries);
    if (nearest.chain < 0) return false;
    const int chosen = boundaryFacets[at(nearest.chain)][at(nearest.segment)];
    if (3 * at(chosen) + 2 >= facets.size()) return false;
    const int* corner = &facets[3 * at(chosen)];
    return iEvalInFacet(corner[0], corner[1], corner[2], p, outValue, outFloat, false);
}

std::size_t MeshFunction2D::extrapolate(const Point* points, std::size_t count, Point* outValues,
                                        float* outFloats, bool* outFound) const {
    std::size_t hits = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const bool hit = extrapolate(points[i], outValues != nullptr ? outValues + i : nullptr,
                                     outFloats != nullptr ? outFloats + i : nullptr);
        if (outFound != nullptr) outFound[i] = hit;
        hits += hit ? 1 : 0;
    }
    return hits;
}

bool MeshFunction2D::extrapolateOld(const Point& p, Point* outValue, float* outFloat) const {
    if (cellCounts.u < 1 || cellCounts.v < 1) return false;
    int cell[2];
    for (int k = 0; k < 2; ++k) {
        const double x = (p[k] - boxMin[k]) * cellScale[k];
        if (!std::isfinite(x)) return false;
        cell[k] = cellCoordinate(x, cellCounts[k]);
    }

    if (cells[cellIndex(cell[0], cell[1])].empty()) {
        Point position(cell[0], cell[1]);
        Point step(0.5 * cellCounts.u - cell[0], 0.5 * cellCounts.v - cell[1]);
        const double absU = std::abs(step.u);
        const double absV = std::abs(step.v);
        const double longest = absU >= absV ? absU : absV;
        if (longest < kMeshEps) return false;
        step.u /= longest;
        step.v /= longest;
        do {
            for (int k = 0; k < 2; ++k) {
                position[k] += step[k];
                cell[k] = static_cast<int>(std::floor(position[k]));
                if (cell[k] < 0 || cell[k] >= cellCounts[k]) return false;
            }
        } while (cells[cellIndex(cell[0], cell[1])].empty());
    }

    double best = -1.0;
    const int* nearest = nullptr;
    for (const int f : cells[cellIndex(cell[0], cell[1])]) {
        const int* corner = &facets[3 * at(f)];
        for (int e = 0; e < 3; ++e) {
            bool interior = false;
            const double d = iDistToEdge(corner[e], corner[(e + 1) % 3], p, &interior, false);
            if (best < 0.0 || d < best - kMeshEps || (interior && d < best + kMeshEps)) {
                best = d;
                nearest = corner;
            }
        }
    }
    if (nearest == nullptr) return false;
    return iEvalInFacet(nearest[0], nearest[1], nearest[2], p, outValue, outFloat, false);
}

bool MeshFunction2D::iEvalInFacet(int i0, int i1, int i2, const Point& p, Point* outValue,
                                  float* outFloat, bool strict) const {
    const std::size_t size = params.size() < values.size() ? params.size() : values.size();
    if (!isIndex(i0, size) || !isIndex(i1, size) || !isIndex(i2, size)) return false;
    const Point& p0 = params[at(i0)];
    const FacetEdges edges(p0, params[at(i1)], params[at(i2)]);
    if (edges.isDegenerate()) return false;
    const FacetWeights weights = FacetFrame(p0, edges).weightsAt(p);
    if (strict && weights.isOutside()) return false;
    const int corner[3] = {i0, i1, i2};
    blend(corner, weights, outValue, outFloat);
    return true;
}

void MeshFunction2D::blend(const FacetCell& cell, unsigned f, const FacetWeights& weights,
                           Point* outValue, float* outFloat) const {
    const int corner[3] = {cell.vertex(f, 0), cell.vertex(f, 1), cell.vertex(f, 2)};
    blend(corner, weights, outValue, outFloat);
}

void MeshFunction2D::blend(const int* corner, const FacetWeights& w, Point* outValue,
                           float* outFloat) const {
    const std::size_t i0 = at(corner[0]);
    const std::size_t i1 = at(corner[1]);
    const std::size_t i2 = at(corner[2]);
    if (outValue != nullptr) {
        *outValue = values[i1] * w.a + values[i2] * w.b + values[i0] * w.c;
    }
    if (outFloat == nullptr) return;
    if (normaldots.size() < values.size()) {
        *outFloat = -1.0f;
        return;
    }
    auto f = static_cast<float>(normaldots[i1] * w.a);
    f = static_cast<float>(normaldots[i2] * w.b + f);
    f = static_cast<float>(normaldots[i0] * w.c + f);
    *outFloat = f;
}

double MeshFunction2D::iDistToEdge(int a, int b, const Point& p, bool* interior,
                                   bool useValues) const {
    if (interior != nullptr) *interior = false;
    const std::vector<Point>& points = useValues ? values : params;
    if (!isIndex(a, points.size()) || !isIndex(b, points.size())) {
        return std::numeric_limits<double>::infinity();
    }
    const Point e = points[at(b)] - points[at(a)];
    const Point w = p - points[at(a)];
    const double lengthSq = e.v * e.v + e.u * e.u;
    const double toStartSq = w.v * w.v + w.u * w.u;
    if (lengthSq < kMeshEps * kMeshEps) return toStartSq;
    const double t = e * w;
    if (t < -lengthSq * kMeshEps) return toStartSq;
    if (t > lengthSq + kMeshEps * lengthSq) {
        const Point toEnd = p - points[at(b)];
        return toEnd * toEnd;
    }
    if (interior != nullptr) *interior = true;
    return toStartSq - t * t / lengthSq;
}
