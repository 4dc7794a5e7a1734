// What it costs to be ready: geomKit's mesh function beside CGAL's Delaunay triangulation and a
// Boost.Geometry R-tree over the facets' boxes, and beside what it shows built plainly; time, and
// heap bytes that stay for each facet.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include "bench/meshFunc2d/LiteralMesh.h"
#include "bench/meshFunc2d/TriangulationScene.h"
#include "bench/meshFunc2d/facetTree.h"

using namespace geomKit;

namespace {

using Scene = TriangulationScene;

template <typename Build>
void build(benchmark::State& state, Build make) {
    const Scene& scene = Scene::ofSize(static_cast<int>(state.range(0)));
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
        static_cast<double>(bytes) / (static_cast<double>(scene.facets.size()) / 3.0);
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
    compete("literal", [](const Scene& s) { return std::make_unique<LiteralMesh>(s); });
    return true;
}();

}  // namespace
