// Saving and loading a mesh function of 100,489 vertices and 199,712 facets, against pugixml and
// tinyxml2 used directly. Before anything is timed, each library must write and read what ours
// does.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <utility>

#include <benchmark/benchmark.h>

#include "bench/tags/peakMemory.h"
#include "bench/tags/peers.h"
#include "geomKit/tags/loadDocument.h"
#include "geomKit/tags/saveDocument.h"

using namespace geomKit;

namespace {

using Point = MeshFunction2D::Point;

constexpr int kSide = 317;

std::unique_ptr<MeshFunction2D> makeFunction() {
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> jitter(-0.3, 0.3);
    std::vector<Point> params;
    std::vector<Point> values;
    std::vector<float> floats;
    std::vector<int> facets;
    for (int i = 0; i < kSide * kSide; ++i) {
        const double u = i % kSide + jitter(random);
        const double v = i / kSide + jitter(random);
        const double w = jitter(random);
        params.emplace_back(u, v);
        values.emplace_back(w, u * w);
        floats.push_back(static_cast<float>(w));
    }
    for (int i = 0; i + 1 < kSide; ++i) {
        for (int j = 0; j + 1 < kSide; ++j) {
            const int a = i * kSide + j;
            facets.insert(facets.end(), {a, a + 1, a + kSide});
            facets.insert(facets.end(), {a + 1, a + kSide + 1, a + kSide});
        }
    }
    return std::make_unique<MeshFunction2D>(params, values, facets, floats);
}

const MeshFunction2D& function() {
    static const std::unique_ptr<MeshFunction2D> result = makeFunction();
    return *result;
}

std::string saveGeomKit(const MeshFunction2D& object) {
    return std::move(saveDocumentText(object).document);
}

std::unique_ptr<MeshFunction2D> loadGeomKit(const std::string& text) {
    return std::move(loadDocumentText<MeshFunction2D>(text).object);
}

const std::string& document() {
    static const std::string result = saveGeomKit(function());
    return result;
}

void require(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "the libraries disagree: %s\n", what);
    std::exit(1);
}

/// The document without blanks, which each library sets its own way.
std::string squeezed(const std::string& text) {
    std::string result;
    for (std::size_t i = text.find("<MeshFunction2D"); i < text.size(); ++i) {
        if (std::strchr(" \n", text[i]) == nullptr) result += text[i];
    }
    return result;
}

void compare() {
    const std::string ours = squeezed(document());
    require(squeezed(savePugixml(function())) == ours, "text of pugixml");
    require(squeezed(saveTinyxml2(function())) == ours, "text of tinyxml2");
    const auto loaded = loadGeomKit(document());
    require(loaded != nullptr, "nothing loaded");
    const std::string again = saveGeomKit(*loaded);
    require(saveGeomKit(*loadPugixml(document())) == again, "object of pugixml");
    require(saveGeomKit(*loadTinyxml2(document())) == again, "object of tinyxml2");
}

template <typename Save>
void save(benchmark::State& state, Save saver) {
    static const bool compared = (compare(), true);
    benchmark::DoNotOptimize(compared);
    state.counters["peakMB"] = peakMegabytes([&] { benchmark::DoNotOptimize(saver(function())); });
    for (auto _ : state)
        benchmark::DoNotOptimize(saver(function()));
}

template <typename Load>
void load(benchmark::State& state, Load loader) {
    state.counters["peakMB"] = peakMegabytes([&] { benchmark::DoNotOptimize(loader(document())); });
    for (auto _ : state)
        benchmark::DoNotOptimize(loader(document()));
}

BENCHMARK_CAPTURE(save, geomKit, saveGeomKit)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(save, pugixml, savePugixml)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(save, tinyxml2, saveTinyxml2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(load, geomKit, loadGeomKit)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(load, pugixml, loadPugixml)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(load, tinyxml2, loadTinyxml2)->Unit(benchmark::kMillisecond);

}  // namespace
