// The time to build, and the heap bytes that stay for each facet: geomKit's mesh function, CGAL's
// Delaunay triangulation, a Boost.Geometry R-tree over the facets' boxes, and the public data of
// the mesh function built as they are documented.
#include <algorithm>
#include <cmath>

#include <benchmark/benchmark.h>
#include <malloc.h>

#include "bench/meshFunc2d/TriangulationScene.h"
#include "bench/meshFunc2d/facetTree.h"
#include "tests/reference/LiteralMesh.h"

using namespace geomKit;

namespace {

using Scene = TriangulationScene;
using Point = Scene::Point;

std::size_t facetCount(const Scene& scene) {
    return scene.facets.size() / 3;
}

bool isRight(const Scene& scene, const Scene::Delaunay& built) {
    return built.number_of_faces() == facetCount(scene);
}

bool isRight(const Scene& scene, const FacetTree& built) {
    return built.size() == facetCount(scene);
}

/// By the linear function that the values sample.
bool isRight(const Scene& scene, const LiteralMesh& built) {
    for (std::size_t i = 0; i < scene.randomQueries.size(); i += 1000) {
        const Point& p = scene.randomQueries[i];
        Point value;
        float cosine = 0.0f;
        if (!built.evaluate(p, &value, &cosine)) return false;
        if (!(std::abs(value.u - (2.0 * p.u - p.v)) < 1e-6)) return false;
    }
    return true;
}

/// To the bit, by the documented way.
bool isRight(const Scene& scene, const MeshFunction2D& built) {
    const LiteralMesh literal(scene.params, scene.values, scene.facets, scene.normaldots);
    if (built.cells != literal.cells || built.boundaryFacets != literal.boundaryFacets)
        return false;
    for (std::size_t k = 0; k < literal.boundaries.size(); ++k) {
        const std::vector<Vector3>& points = built.boundaries[k]->points;
        const std::vector<Vector3>& plain = literal.boundaries[k]->points;
        if (!std::equal(points.begin(), points.end(), plain.begin(), plain.end())) return false;
    }
    for (std::size_t i = 0; i < scene.randomQueries.size(); i += 1000) {
        const Point& p = scene.randomQueries[i];
        Point values[2];
        float cosines[2] = {};
        const bool isFound = built.evaluate(p, &values[0], &cosines[0]);
        if (isFound != literal.evaluate(p, &values[1], &cosines[1])) return false;
        if (values[0].u != values[1].u || values[0].v != values[1].v) return false;
        if (cosines[0] != cosines[1]) return false;
    }
    return true;
}

template <typename Build>
void build(benchmark::State& state, Build make) {
    const Scene& scene = Scene::ofSize(static_cast<int>(state.range(0)));
    if (!isRight(scene, *make(scene))) {
        state.SkipWithError("wrong answer");
        return;
    }
    std::size_t bytes = 0;
    for (auto _ : state) {
        const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
        const auto built = make(scene);
        benchmark::DoNotOptimize(built.get());
        bytes = mallinfo2().uordblks + mallinfo2().hblkhd - before;
        state.PauseTiming();
        const_cast<std::remove_const_t<decltype(built)>&>(built).reset();
        state.ResumeTiming();
    }
    state.counters["bytes/facet"] =
        static_cast<double>(bytes) / static_cast<double>(facetCount(scene));
}

template <typename Build>
void compete(const char* name, Build make) {
    benchmark::RegisterBenchmark((std::string("build/") + name).c_str(),
                                 [make](benchmark::State& state) { build(state, make); })
        ->Arg(1000)
        ->Arg(100000)
        ->Arg(1000000)
        ->Unit(benchmark::kMicrosecond);
}

[[maybe_unused]] const bool kRegistered = [] {
    compete("geomKit", [](const Scene& s) {
        return std::make_unique<MeshFunction2D>(s.params, s.values, s.facets, s.normaldots);
    });
    compete("CGAL Delaunay",
            [](const Scene& s) { return std::make_unique<Scene::Delaunay>(s.delaunayOf()); });
    compete("Boost R-tree", [](const Scene& s) { return facetTree(s); });
    compete("literal", [](const Scene& s) {
        return std::make_unique<LiteralMesh>(s.params, s.values, s.facets, s.normaldots);
    });
    return true;
}();

}  // namespace
