#include <algorithm>
#include <cmath>
#include <limits>

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
constexpr std::size_t kBatch = 16;
/// Candidates of each that are fetched ahead: more than half the queries need no further ones.
constexpr std::ptrdiff_t kPrefetched = 4;

void prefetch([[maybe_unused]] const void* address) {
#if defined(__GNUC__)
    __builtin_prefetch(address);
#endif
}

}  // namespace

const std::uint32_t* MeshFunction2D::locate(const Point& p) const {
    if (cellCounts.u < 1 || cellCounts.v < 1) return nullptr;
    Point x;
    int cell[2];
    for (int k = 0; k < 2; ++k) {
        x[k] = (p[k] - boxMin[k]) * cellScale[k];
        // Written so that NaN is outside too.
        if (!(x[k] >= -kMeshEps && x[k] <= cellCounts[k] + kMeshEps)) return nullptr;
        cell[k] = cellCoordinate(x[k], cellCounts[k]);
    }
    return facetIndex_->find(x, cell[0], cell[1], cellIndex(cell[0], cell[1]));
}

bool MeshFunction2D::evaluateFound(const std::uint32_t* found, const Point& p, Point* outValue,
                                   float* outFloat) const {
    const FacetIndex::Candidates candidates = facetIndex_->candidates(found);
    const FacetIndex::Facet* prepared = facetIndex_->prepared().data();
    if (prepared != nullptr) {
        for (const int f : candidates) {
            const FacetWeights weights = prepared[f].frame.weightsAt(p);
            if (weights.isOutside()) continue;
            blend(prepared[f].corner, weights, outValue, outFloat);
            return true;
        }
        return false;
    }
    for (const int f : candidates) {
        const int* corner = &facets[3 * at(f)];
        const Point& p0 = params[at(corner[0])];
        const FacetEdges edges(p0, params[at(corner[1])], params[at(corner[2])]);
        const FacetWeights weights = FacetFrame(p0, edges).weightsAt(p);
        if (weights.isOutside()) continue;
        blend(corner, weights, outValue, outFloat);
        return true;
    }
    return false;
}

bool MeshFunction2D::evaluate(const Point& p, Point* outValue, float* outFloat) const {
    const std::uint32_t* found = locate(p);
    return found != nullptr && evaluateFound(found, p, outValue, outFloat);
}

std::size_t MeshFunction2D::evaluate(const Point* points, std::size_t count, Point* outValues,
                                     float* outFloats, bool* outFound) const {
    std::size_t hits = 0;
    for (std::size_t begin = 0; begin < count; begin += kBatch) {
        const std::size_t size = (std::min)(kBatch, count - begin);
        const std::uint32_t* found[kBatch];
        for (std::size_t i = 0; i < size; ++i)
            found[i] = locate(points[begin + i]);
        if (facetIndex_ && facetIndex_->prepared().empty()) prefetchCandidates(found, size);
        for (std::size_t i = 0; i < size; ++i) {
            const std::size_t q = begin + i;
            const bool hit =
                found[i] != nullptr &&
                evaluateFound(found[i], points[q], outValues != nullptr ? outValues + q : nullptr,
                              outFloats != nullptr ? outFloats + q : nullptr);
            if (outFound != nullptr) outFound[q] = hit;
            hits += hit ? 1 : 0;
        }
    }
    return hits;
}

void MeshFunction2D::prefetchCandidates(const std::uint32_t* const* found,
                                        std::size_t count) const {
    const auto forEach = [this, found, count](auto&& touch) {
        for (std::size_t i = 0; i < count; ++i) {
            if (found[i] == nullptr) continue;
            const FacetIndex::Candidates candidates = facetIndex_->candidates(found[i]);
            const std::ptrdiff_t n = candidates.last - candidates.first;
            for (std::ptrdiff_t k = 0; k < (std::min)(n, kPrefetched); ++k) {
                touch(candidates.first + k);
            }
        }
    };
    for (std::size_t i = 0; i < count; ++i) {
        if (found[i] != nullptr) prefetch(found[i]);
    }
    forEach([](const int* entry) { prefetch(entry); });
    forEach([this](const int* entry) { prefetch(&facets[3 * at(*entry)]); });
    forEach([this](const int* entry) {
        for (std::size_t k = 0; k < 3; ++k) {
            const std::size_t vertex = at(facets[3 * at(*entry) + k]);
            prefetch(&params[vertex]);
            prefetch(&values[vertex]);
        }
    });
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
