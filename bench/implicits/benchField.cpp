// Value and gradient of the radial-basis field of 500 samples at 64 points: one point a call,
// arrays, and an Eigen array expression over the samples. Items are pairs of point and sample.
#include <cmath>

#include <Eigen/Dense>
#include <benchmark/benchmark.h>

#include "bench/implicits/fieldSamples.h"
#include "geomKit/implicits/Implicit.h"

using namespace geomKit;

namespace {

constexpr std::size_t kSamples = 500;
constexpr std::size_t kPoints = 64;

struct Scene {
    Implicit field{fieldSamples(kSamples)};
    std::vector<Vector3> points;
    Eigen::ArrayXd x{kSamples};
    Eigen::ArrayXd y{kSamples};
    Eigen::ArrayXd z{kSamples};
    Eigen::ArrayXd w{kSamples};

    Scene() {
        InputSource in(72);
        for (std::size_t i = 0; i < kPoints; ++i)
            points.push_back(in.vector(1.5));
        for (std::size_t i = 0; i < kSamples; ++i) {
            const auto k = static_cast<Eigen::Index>(i);
            x[k] = field.centers[i].x;
            y[k] = field.centers[i].y;
            z[k] = field.centers[i].z;
            w[k] = field.weights[i];
        }
    }

    double eigenValue(const Vector3& p) const {
        const auto sq = (x - p.x).square() + (y - p.y).square() + (z - p.z).square();
        return field.offset + field.linear * p + (sq * sq.sqrt() * w).sum();
    }

    Vector3 eigenGradient(const Vector3& p) const {
        const Eigen::ArrayXd factor =
            3.0 * w * ((x - p.x).square() + (y - p.y).square() + (z - p.z).square()).sqrt();
        return field.linear + Vector3((factor * (p.x - x)).sum(), (factor * (p.y - y)).sum(),
                                      (factor * (p.z - z)).sum());
    }
};

const Scene& scene() {
    static const Scene theScene;
    return theScene;
}

void countPairs(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kPoints * kSamples));
}

void evaluateOne(benchmark::State& state) {
    for (auto _ : state)
        for (const Vector3& p : scene().points)
            benchmark::DoNotOptimize(scene().field.evaluate(p));
    countPairs(state);
}

void evaluateArray(benchmark::State& state) {
    std::vector<double> values(kPoints);
    for (auto _ : state) {
        scene().field.evaluate(scene().points.data(), kPoints, values.data());
        benchmark::DoNotOptimize(values.data());
        benchmark::ClobberMemory();
    }
    countPairs(state);
}

void evaluateEigen(benchmark::State& state) {
    for (const Vector3& p : scene().points) {
        const double value = scene().field.evaluate(p);
        if (!(std::abs(scene().eigenValue(p) - value) <= 1e-6)) state.SkipWithError("differs");
    }
    for (auto _ : state)
        for (const Vector3& p : scene().points)
            benchmark::DoNotOptimize(scene().eigenValue(p));
    countPairs(state);
}

void gradientOne(benchmark::State& state) {
    for (auto _ : state)
        for (const Vector3& p : scene().points)
            benchmark::DoNotOptimize(scene().field.getGradient(p));
    countPairs(state);
}

void gradientArray(benchmark::State& state) {
    std::vector<Vector3> gradients(kPoints);
    for (auto _ : state) {
        scene().field.getGradient(scene().points.data(), kPoints, gradients.data());
        benchmark::DoNotOptimize(gradients.data());
        benchmark::ClobberMemory();
    }
    countPairs(state);
}

void gradientEigen(benchmark::State& state) {
    for (const Vector3& p : scene().points) {
        const Vector3 error = scene().eigenGradient(p) - scene().field.getGradient(p);
        if (!(error.length() <= 1e-6)) state.SkipWithError("differs");
    }
    for (auto _ : state)
        for (const Vector3& p : scene().points)
            benchmark::DoNotOptimize(scene().eigenGradient(p));
    countPairs(state);
}

BENCHMARK(evaluateOne)->Name("implicitValue/geomKit");
BENCHMARK(evaluateEigen)->Name("implicitValue/Eigen");
BENCHMARK(evaluateArray)->Name("implicitValues/geomKit");
BENCHMARK(evaluateEigen)->Name("implicitValues/Eigen");
BENCHMARK(gradientOne)->Name("implicitGradient/geomKit");
BENCHMARK(gradientEigen)->Name("implicitGradient/Eigen");
BENCHMARK(gradientArray)->Name("implicitGradients/geomKit");
BENCHMARK(gradientEigen)->Name("implicitGradients/Eigen");

}  // namespace
