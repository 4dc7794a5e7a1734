// The fit of the radial-basis field: against the same elimination as three plain loops, whose bits
// it has, and, for the reader, against solvers that are free to order their sums: Eigen's
// PartialPivLU and LAPACK's dgesv. The argument is the number of rows of the system.
#include <algorithm>
#include <cmath>

#include <Eigen/Dense>
#include <benchmark/benchmark.h>
#include <lapacke.h>

#include "bench/implicits/fieldSamples.h"
#include "geomKit/implicits/Implicit.h"

using namespace geomKit;

namespace {

std::size_t sampleCount(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0)) - 4;
}

void fitGeomKit(benchmark::State& state) {
    const PlainSamples samples = fieldSamples(sampleCount(state));
    const Implicit field(samples);
    const std::vector<double> expected = plainFit(samples).coefficients;
    if (!std::equal(field.weights.begin(), field.weights.end(), expected.begin())) {
        state.SkipWithError("differs from the plain loops");
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(Implicit(samples).offset);
}

void fitPlainLoops(benchmark::State& state) {
    const PlainSamples samples = fieldSamples(sampleCount(state));
    for (auto _ : state)
        benchmark::DoNotOptimize(plainFit(samples).coefficients.data());
}

std::vector<double> rightHandSide(const PlainSamples& samples) {
    std::vector<double> b(samples.size() + 4, 0.0);
    for (std::size_t i = 0; i < samples.size(); ++i)
        b[i] = samples[i].second;
    return b;
}

/// Other roundings: the weights agree to about the condition number of the system.
void expectClose(benchmark::State& state, const PlainSamples& samples, const double* weights) {
    const Implicit field(samples);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double error = std::abs(weights[i] - field.weights[i]);
        if (!(error <= 1e-5 * (1.0 + std::abs(field.weights[i])))) {
            state.SkipWithError("differs from geomKit");
        }
    }
}

void fitEigen(benchmark::State& state) {
    const PlainSamples samples = fieldSamples(sampleCount(state));
    const std::vector<double> b = rightHandSide(samples);
    const auto size = static_cast<Eigen::Index>(b.size());
    Eigen::VectorXd x;
    for (auto _ : state) {
        const std::vector<double> A = plainSystem(samples);
        x = Eigen::Map<const Eigen::MatrixXd>(A.data(), size, size)
                .partialPivLu()
                .solve(Eigen::Map<const Eigen::VectorXd>(b.data(), size));
        benchmark::DoNotOptimize(x.data());
    }
    expectClose(state, samples, x.data());
}

void fitLapack(benchmark::State& state) {
    const PlainSamples samples = fieldSamples(sampleCount(state));
    std::vector<double> x;
    for (auto _ : state) {
        std::vector<double> A = plainSystem(samples);
        x = rightHandSide(samples);
        const auto size = static_cast<lapack_int>(x.size());
        std::vector<lapack_int> pivots(x.size());
        LAPACKE_dgesv(LAPACK_COL_MAJOR, size, 1, A.data(), size, pivots.data(), x.data(), size);
        benchmark::DoNotOptimize(x.data());
    }
    expectClose(state, samples, x.data());
}

BENCHMARK(fitGeomKit)->Name("implicitFit/geomKit")->Arg(24)->Arg(200)->Arg(1000);
BENCHMARK(fitPlainLoops)->Name("implicitFit/plainLoops")->Arg(24)->Arg(200)->Arg(1000);
BENCHMARK(fitEigen)->Name("implicitFit/Eigen")->Arg(24)->Arg(200)->Arg(1000);
BENCHMARK(fitLapack)->Name("implicitFit/LAPACK")->Arg(24)->Arg(200)->Arg(1000);

}  // namespace
