/// @file
/// One line against many triangles: what its competitors share.
#pragma once

#include <cmath>
#include <cstddef>
#include <vector>

#include <benchmark/benchmark.h>

#include "geomKit/vAlgebra/UVector3.h"
#include "geomKit/vAlgebra/Vector3.h"

namespace lineTriangle {

constexpr int kTriangles = 16000;
constexpr std::size_t kLines = 64;

struct Triangle {
    geomKit::Vector3 a;
    geomKit::Vector3 b;
    geomKit::Vector3 c;
};

/// Parallel lines.
struct Scene {
    std::vector<geomKit::Vector3> starts;
    geomKit::UVector3 d;
    std::vector<Triangle> triangles;
};

struct Answer {
    int hits = 0;
    double paramSum = 0.0;
};

/// The scene with half the triangles hit, or one in a hundred.
const Scene& sceneOf(int percent);
/// The hits of one line and the sum of their line parameters.
Answer byGeomKit(const Scene& scene, std::size_t line);
double shareOfHits(const Scene& scene);

/// Checks the answers of `run` for every line, then times it.
template <typename Run>
void measure(benchmark::State& state, Run run, bool withParams = true) {
    const Scene& scene = sceneOf(static_cast<int>(state.range(0)));
    for (std::size_t line = 0; line < kLines; ++line) {
        const Answer answer = run(line);
        const Answer expected = byGeomKit(scene, line);
        const double paramError = withParams ? answer.paramSum - expected.paramSum : 0.0;
        if (answer.hits != expected.hits || !(std::abs(paramError) <= 1e-6))
            state.SkipWithError("peers disagree");
    }
    std::size_t line = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(run(line));
        line = (line + 1) % kLines;
    }
    state.counters["share"] = shareOfHits(scene);
    state.SetItemsProcessed(state.iterations() * kTriangles);
}

}  // namespace lineTriangle
