// Eigenvalues and eigenvectors of symmetric 3x3 matrices, against Eigen's iterative solver.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include <Eigen/Eigenvalues>
#include <benchmark/benchmark.h>

#include "geomKit/vAlgebra/Matrix3.h"
#include "tests/reference/InputSource.h"

using namespace geomKit;

namespace {

constexpr int kCount = 20000;  // more than branch predictors learn

/// Covariances of thirty points each, drawn from a randomly turned box with random sides.
std::vector<Matrix3> covariances() {
    InputSource in(1);
    std::vector<Matrix3> result;
    for (int i = 0; i < kCount; ++i) {
        const Vector3 axis = in.vector(1.0);
        const Matrix3 turn = Matrix3::rotationMatrix(UVector3(axis), in.uniform(-3.0, 3.0));
        const Vector3 sides(std::exp(in.uniform(-3.0, 1.0)), std::exp(in.uniform(-3.0, 1.0)), 1.0);
        Matrix3 sum;
        sum.zero();
        for (int k = 0; k < 30; ++k) {
            const Vector3 p = in.vector(1.0);
            const Vector3 q = turn * Vector3(p.x * sides.x, p.y * sides.y, p.z * sides.z);
            sum = sum + Matrix3::tensor(q, q) * (1.0 / 30.0);
        }
        result.push_back(sum);
    }
    return result;
}

std::vector<Matrix3> randomSymmetric() {
    InputSource in(2);
    std::vector<Matrix3> result;
    for (int i = 0; i < kCount; ++i) {
        const Matrix3 m = in.matrix(1.0);
        result.push_back((m + m.transpose()) * 0.5);
    }
    return result;
}

std::vector<Eigen::Matrix3d> toEigen(const std::vector<Matrix3>& matrices) {
    std::vector<Eigen::Matrix3d> result(matrices.size());
    for (std::size_t i = 0; i < matrices.size(); ++i) {
        for (int k = 0; k < 9; ++k)
            result[i](k / 3, k % 3) = matrices[i](k / 3, k % 3);
    }
    return result;
}

void ours(benchmark::State& state, std::vector<Matrix3> (*source)()) {
    const std::vector<Matrix3> matrices = source();
    for (auto _ : state) {
        for (const Matrix3& m : matrices) {
            double eigs[3];
            UVector3 vecs[3];
            m.getEigensystem(eigs, vecs);
            benchmark::DoNotOptimize(eigs);
            benchmark::DoNotOptimize(vecs);
        }
    }
}

void theirs(benchmark::State& state, std::vector<Matrix3> (*source)()) {
    const std::vector<Matrix3> originals = source();
    const std::vector<Eigen::Matrix3d> matrices = toEigen(originals);
    Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> solver;
    for (std::size_t i = 0; i < matrices.size(); ++i) {
        double eigs[3];
        originals[i].getEigensystem(eigs, nullptr);
        solver.compute(matrices[i]);
        if (!((solver.eigenvalues() - Eigen::Vector3d(eigs)).norm() <= 1e-7)) {
            std::fputs("the solvers disagree\n", stderr);
            std::exit(1);
        }
    }
    for (auto _ : state) {
        for (const Eigen::Matrix3d& m : matrices) {
            solver.compute(m);
            benchmark::DoNotOptimize(solver);
        }
    }
}

BENCHMARK_CAPTURE(ours, ours, covariances)->Name("getEigensystem, covariances/geomKit");
BENCHMARK_CAPTURE(theirs, theirs, covariances)->Name("getEigensystem, covariances/Eigen");
BENCHMARK_CAPTURE(ours, ours, randomSymmetric)->Name("getEigensystem, random/geomKit");
BENCHMARK_CAPTURE(theirs, theirs, randomSymmetric)->Name("getEigensystem, random/Eigen");

}  // namespace
