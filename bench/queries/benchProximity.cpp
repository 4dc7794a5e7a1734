// "Is this point near the set?" against a radius search in a k-d tree, and the building of both.
#include <memory>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>
#include <nanoflann.hpp>

#include "geomKit/queries/ProximityTester.h"
#include "geomKit/vAlgebra/vectorUtils.h"
#include "tests/reference/InputSource.h"

using namespace geomKit;

namespace {

constexpr double kRadius = 0.5;
constexpr int kPoints = 10000;
/// Branch predictors learn the answers to 50,000 queries that are asked again and again.
constexpr int kQueries = 500000;

/// A wavy sheet of 20 by 20.
std::vector<Vector3> sheet() {
    InputSource in(31);
    std::vector<Vector3> pts;
    for (int i = 0; i < kPoints; ++i) {
        const double x = in.uniform(-10.0, 10.0);
        const double y = in.uniform(-10.0, 10.0);
        pts.emplace_back(x, y, 0.05 * x * (y - 3.0) + 0.02 * y * y);
    }
    return pts;
}

/// Half of them anywhere around the sheet, half of them within about two radii of it.
std::vector<Vector3> queries(const std::vector<Vector3>& pts) {
    InputSource in(32);
    std::vector<Vector3> list;
    for (int i = 0; i < kQueries; ++i) {
        const int near = in.index(2 * kPoints);
        const Vector3 offset = in.vector(2.0 * kRadius);
        list.push_back(near < kPoints ? pts[static_cast<std::size_t>(near)] + offset
                                      : offset * (12.0 / (2.0 * kRadius)));
    }
    return list;
}

struct Adaptor {
    const std::vector<Vector3>& pts;

    std::size_t kdtree_get_point_count() const { return pts.size(); }
    double kdtree_get_pt(std::size_t i, std::size_t d) const { return pts[i][static_cast<int>(d)]; }
    template <typename Box>
    bool kdtree_get_bbox(Box&) const {
        return false;
    }
};

using Tree =
    nanoflann::KDTreeSingleIndexAdaptor<nanoflann::L2_Simple_Adaptor<double, Adaptor>, Adaptor, 3>;

/// nanoflann takes the square of the radius.
bool isNear(const Tree& tree, const Vector3& q,
            std::vector<std::pair<std::uint32_t, double>>& found) {
    const double at[3] = {q.x, q.y, q.z};
    return tree.radiusSearch(at, kRadius * kRadius, found, nanoflann::SearchParams(32, 0, false)) >
           0;
}

template <typename Near>
void measureQueries(benchmark::State& state, Near near) {
    const std::vector<Vector3> list = queries(sheet());
    for (auto _ : state) {
        int count = 0;
        for (const Vector3& q : list)
            count += near(q) ? 1 : 0;
        benchmark::DoNotOptimize(count);
    }
    state.SetItemsProcessed(state.iterations() * kQueries);
}

void queryGeomKit(benchmark::State& state) {
    const std::vector<Vector3> pts = sheet();
    const ProximityTester tester(pts, kRadius);
    const Adaptor adaptor = {pts};
    const Tree tree(3, adaptor);
    std::vector<std::pair<std::uint32_t, double>> found;
    for (const Vector3& q : queries(pts)) {
        if (isNear(tree, q, found) && !tester.test(q)) state.SkipWithError("a near query was lost");
    }
    measureQueries(state, [&](const Vector3& q) { return tester.test(q); });
}

void queryGeomKitArray(benchmark::State& state) {
    const std::vector<Vector3> pts = sheet();
    const ProximityTester tester(pts, kRadius);
    const std::vector<Vector3> list = queries(pts);
    const auto answers = std::make_unique<bool[]>(list.size());
    tester.test(list.data(), list.size(), answers.get());
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (answers[i] != tester.test(list[i])) state.SkipWithError("array and single call differ");
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(tester.test(list.data(), list.size(), answers.get()));
    state.SetItemsProcessed(state.iterations() * kQueries);
}

void queryNanoflann(benchmark::State& state) {
    const std::vector<Vector3> pts = sheet();
    const Adaptor adaptor = {pts};
    const Tree tree(3, adaptor);
    std::vector<std::pair<std::uint32_t, double>> found;
    measureQueries(state, [&](const Vector3& q) { return isNear(tree, q, found); });
}

void buildGeomKit(benchmark::State& state) {
    const std::vector<Vector3> pts = sheet();
    for (auto _ : state) {
        const ProximityTester tester(pts, kRadius);
        benchmark::DoNotOptimize(&tester);
    }
}

void buildNanoflann(benchmark::State& state) {
    const std::vector<Vector3> pts = sheet();
    const Adaptor adaptor = {pts};
    for (auto _ : state) {
        const Tree tree(3, adaptor);
        benchmark::DoNotOptimize(&tree);
    }
}

BENCHMARK(queryGeomKit)->Name("proximityQuery/geomKit");
BENCHMARK(queryGeomKitArray)->Name("proximityQuery/geomKit, array");
BENCHMARK(queryNanoflann)->Name("proximityQuery/nanoflann");
BENCHMARK(buildGeomKit)->Name("proximityBuild/geomKit");
BENCHMARK(buildNanoflann)->Name("proximityBuild/nanoflann");

}  // namespace
