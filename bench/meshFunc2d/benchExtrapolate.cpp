// Extrapolation outside meshes of 1, 100 and 10,000 boundary chains, beside asking every chain; and
// over all of such a mesh, its gaps included, a row to an array beside a loop over single calls.
#include <cmath>
#include <memory>
#include <vector>

#include <benchmark/benchmark.h>

#include "geomKit/meshFunc2d/MeshFunction2D.h"
#include "tests/reference/InputSource.h"
#include "tests/reference/nearestChain.h"

using namespace geomKit;

namespace {

using Point = ktNM::vect2<double>;

constexpr std::size_t kQueries = std::size_t{1} << 14;

/// `patches` x `patches` squares of 8 x 8 cells with gaps between them.
std::unique_ptr<MeshFunction2D> patchwork(int patches) {
    std::vector<Point> params;
    std::vector<int> facets;
    for (int patch = 0; patch < patches * patches; ++patch) {
        const int first = static_cast<int>(params.size());
        for (int v = 0; v < 81; ++v) {
            params.emplace_back(12.0 * (patch / patches) + v / 9, 12.0 * (patch % patches) + v % 9);
            if (v / 9 == 8 || v % 9 == 8) continue;
            const int a = first + v;
            facets.insert(facets.end(), {a, a + 9, a + 10, a, a + 10, a + 1});
        }
    }
    return std::make_unique<MeshFunction2D>(params, params, facets, std::vector<float>());
}

bool byGeomKit(const MeshFunction2D& f, const Point& p, Point& value) {
    return f.extrapolate(p, &value, nullptr);
}

bool byEveryChain(const MeshFunction2D& f, const Point& p, Point& value) {
    if (f.evaluate(p, &value, nullptr)) return true;
    const int* corner = &f.facets[3 * static_cast<std::size_t>(facetOfNearestChain(f, p))];
    return f.iEvalInFacet(corner[0], corner[1], corner[2], p, &value, nullptr, false);
}

template <typename Extrapolate>
void outside(benchmark::State& state, Extrapolate extrapolate) {
    const auto f = patchwork(static_cast<int>(std::lround(std::sqrt(state.range(0)))));
    InputSource in(1);
    std::vector<Point> queries;
    const double size = f->boxMax.u;
    while (queries.size() < kQueries) {
        const double u = in.uniform(-0.5 * size, 1.5 * size);
        const double v = in.uniform(-0.5 * size, 1.5 * size);
        if (!f->evaluate({u, v}, nullptr, nullptr)) queries.emplace_back(u, v);
    }
    Point value;
    for (std::size_t k = 0; k < kQueries; k += 512) {
        Point expected;
        if (extrapolate(*f, queries[k], value) != byGeomKit(*f, queries[k], expected) ||
            value.u != expected.u || value.v != expected.v) {
            state.SkipWithError("another answer");
        }
    }
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(extrapolate(*f, queries[i], value));
        i = (i + 1) % kQueries;
    }
}

constexpr std::size_t kRow = 512;

std::size_t byLoop(const MeshFunction2D& f, const Point* points, Point* values, bool* found) {
    std::size_t hits = 0;
    for (std::size_t i = 0; i < kRow; ++i) {
        found[i] = f.extrapolate(points[i], &values[i], nullptr);
        hits += found[i] ? 1 : 0;
    }
    return hits;
}

std::size_t byArray(const MeshFunction2D& f, const Point* points, Point* values, bool* found) {
    return f.extrapolate(points, kRow, values, nullptr, found);
}

/// A raster of 512 x 512 points; time for each point.
template <typename Extrapolate>
void raster(benchmark::State& state, Extrapolate extrapolate) {
    const auto f = patchwork(static_cast<int>(std::lround(std::sqrt(state.range(0)))));
    std::vector<Point> points;
    const double step = f->boxMax.u / kRow;
    for (std::size_t i = 0; i < kRow * kRow; ++i)
        points.emplace_back(step * double(i % kRow), step * double(i / kRow));
    std::vector<Point> values(kRow);
    std::vector<Point> expected(kRow);
    const auto found = std::make_unique<bool[]>(kRow);
    for (std::size_t row = 0; row < kRow; row += 16) {
        extrapolate(*f, &points[row * kRow], values.data(), found.get());
        byLoop(*f, &points[row * kRow], expected.data(), found.get());
        if (values != expected) state.SkipWithError("another answer");
    }
    std::size_t first = 0;
    while (state.KeepRunningBatch(kRow)) {
        benchmark::DoNotOptimize(extrapolate(*f, &points[first], values.data(), found.get()));
        first = (first + kRow) % points.size();
    }
}

[[maybe_unused]] const bool kRegistered = [] {
    for (const int chains : {1, 100, 10000}) {
        benchmark::RegisterBenchmark("extrapolate raster/geomKit", [](benchmark::State& s) {
            raster(s, byLoop);
        })->Arg(chains);
        benchmark::RegisterBenchmark("extrapolate raster/geomKit arrays", [](benchmark::State& s) {
            raster(s, byArray);
        })->Arg(chains);
    }
    for (const int chains : {1, 100, 10000}) {
        benchmark::RegisterBenchmark("extrapolate/geomKit", [](benchmark::State& s) {
            outside(s, byGeomKit);
        })->Arg(chains);
        benchmark::RegisterBenchmark("extrapolate/every chain", [](benchmark::State& s) {
            outside(s, byEveryChain);
        })->Arg(chains);
    }
    return true;
}();

}  // namespace
