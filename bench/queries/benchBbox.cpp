// The box of 100,000 points.
#include <vector>

#include <Eigen/Geometry>
#include <Imath/ImathBox.h>
#include <benchmark/benchmark.h>

#include "geomKit/queries/Bbox.h"
#include "tests/reference/InputSource.h"

using namespace geomKit;

namespace {

constexpr int kPoints = 100000;

const std::vector<Vector3>& points() {
    static const std::vector<Vector3> list = [] {
        InputSource in(11);
        std::vector<Vector3> out;
        for (int i = 0; i < kPoints; ++i)
            out.push_back(in.vector(100.0));
        return out;
    }();
    return list;
}

template <typename Run>
void measure(benchmark::State& state, Run run) {
    const Bbox expected(points());
    Bbox box;
    for (auto _ : state) {
        box = run();
        benchmark::DoNotOptimize(box);
    }
    const auto same = [](const Vector3& a, const Vector3& b) {
        return a.x == b.x && a.y == b.y && a.z == b.z;
    };
    if (!same(box.minPt, expected.minPt) || !same(box.maxPt, expected.maxPt))
        state.SkipWithError("peers disagree");
    state.SetItemsProcessed(state.iterations() * kPoints);
}

template <typename Point>
Bbox boxOf(const Point& lo, const Point& hi) {
    Bbox box;
    box.minPt = Vector3(lo[0], lo[1], lo[2]);
    box.maxPt = Vector3(hi[0], hi[1], hi[2]);
    return box;
}

void geomKit(benchmark::State& state) {
    measure(state, [] { return Bbox(points()); });
}

void geomKitUpdate(benchmark::State& state) {
    measure(state, [] {
        Bbox box;
        for (const Vector3& p : points())
            box.update(p);
        return box;
    });
}

void eigenAlignedBox(benchmark::State& state) {
    std::vector<Eigen::Vector3d> list;
    for (const Vector3& p : points())
        list.emplace_back(p.x, p.y, p.z);
    measure(state, [&] {
        Eigen::AlignedBox3d box;
        for (const Eigen::Vector3d& p : list)
            box.extend(p);
        return boxOf(box.min(), box.max());
    });
}

void eigenReductions(benchmark::State& state) {
    Eigen::Matrix3Xd list(3, kPoints);
    for (int i = 0; i < kPoints; ++i) {
        const Vector3& p = points()[static_cast<std::size_t>(i)];
        list.col(i) = Eigen::Vector3d(p.x, p.y, p.z);
    }
    measure(state, [&] {
        const Eigen::Vector3d lo = list.rowwise().minCoeff();
        const Eigen::Vector3d hi = list.rowwise().maxCoeff();
        return boxOf(lo, hi);
    });
}

void imath(benchmark::State& state) {
    std::vector<Imath::V3d> list;
    for (const Vector3& p : points())
        list.emplace_back(p.x, p.y, p.z);
    measure(state, [&] {
        Imath::Box3d box;
        for (const Imath::V3d& p : list)
            box.extendBy(p);
        return boxOf(box.min, box.max);
    });
}

BENCHMARK(geomKit)->Name("Bbox/geomKit");
BENCHMARK(geomKitUpdate)->Name("BboxByUpdate/geomKit");
BENCHMARK(eigenAlignedBox)->Name("Bbox/EigenAlignedBox");
BENCHMARK(eigenReductions)->Name("Bbox/EigenReductions");
BENCHMARK(imath)->Name("Bbox/Imath");

}  // namespace
