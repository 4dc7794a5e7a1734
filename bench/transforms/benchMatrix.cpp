// 4x4 products and affine inverses, over arrays that stay in the first-level cache, against Eigen,
// GLM and Imath. Every peer's result is compared with ours.
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

#include <Eigen/Geometry>
#include <Imath/ImathMatrix.h>
#include <benchmark/benchmark.h>
#include <glm/gtc/matrix_inverse.hpp>
#include <glm/mat4x4.hpp>

#include "geomKit/transforms/Transform.h"

using namespace geomKit;

namespace {

constexpr std::size_t kCount = 48;

struct GeomKit {
    using Type = Matrix;
    static Matrix convert(const Matrix& m) { return m; }
    static double entry(const Matrix& m, int i, int j) { return m(i, j); }
    static Matrix multiply(const Matrix& a, const Matrix& b) { return a * b; }
    static Matrix invert(const Matrix& a) { return a.inverse(); }
};

/// Eigen's affine type leaves the bottom row out of both operations.
struct EigenAffine {
    using Type = Eigen::Affine3d;
    static Type convert(const Matrix& m) {
        Type t;
        for (int i = 0; i < 4; ++i) {
            for (int j = 0; j < 4; ++j) {
                t.matrix()(i, j) = m(i, j);
            }
        }
        return t;
    }
    static double entry(const Type& m, int i, int j) { return m.matrix()(i, j); }
    static Type multiply(const Type& a, const Type& b) { return Type(a.matrix() * b.matrix()); }
    static Type invert(const Type& a) { return a.inverse(Eigen::Affine); }
};

struct Glm {
    using Type = glm::dmat4;
    static Type convert(const Matrix& m) {
        Type t;
        for (int i = 0; i < 4; ++i) {
            for (int j = 0; j < 4; ++j) {
                t[j][i] = m(i, j);
            }
        }
        return t;
    }
    static double entry(const Type& m, int i, int j) { return m[j][i]; }
    static Type multiply(const Type& a, const Type& b) { return a * b; }
    static Type invert(const Type& a) { return glm::affineInverse(a); }
};

/// Row vectors: the transposed matrices in the opposite order.
struct ImathRows {
    using Type = Imath::M44d;
    static Type convert(const Matrix& m) {
        Type t;
        for (int i = 0; i < 4; ++i) {
            for (int j = 0; j < 4; ++j) {
                t[j][i] = m(i, j);
            }
        }
        return t;
    }
    static double entry(const Type& m, int i, int j) { return m[j][i]; }
    static Type multiply(const Type& a, const Type& b) { return b * a; }
    static Type invert(const Type& a) { return a.inverse(); }
};

std::vector<Matrix> randomMatrices(unsigned seed) {
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> uniform(-2.0, 2.0);
    std::vector<Matrix> matrices;
    for (std::size_t k = 0; k < kCount; ++k) {
        Transform t(Vector3(uniform(random), 1.0, uniform(random)), uniform(random));
        t.scale = 1.5 + 0.5 * uniform(random) / 2.0;
        t.translation = Vector3(uniform(random), uniform(random), uniform(random));
        matrices.push_back(t.getMatrix());
    }
    return matrices;
}

template <typename Peer>
std::vector<typename Peer::Type> converted(const std::vector<Matrix>& matrices) {
    std::vector<typename Peer::Type> result;
    for (const Matrix& m : matrices) {
        result.push_back(Peer::convert(m));
    }
    return result;
}

template <typename Peer>
void requireEqual(const typename Peer::Type& got, const Matrix& want) {
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            if (!(std::abs(Peer::entry(got, i, j) - want(i, j)) < 1e-9)) {
                std::fprintf(stderr, "a peer computes something else\n");
                std::exit(1);
            }
        }
    }
}

template <typename Peer>
void product(benchmark::State& state) {
    const std::vector<Matrix> a = randomMatrices(1);
    const std::vector<Matrix> b = randomMatrices(2);
    const auto peerA = converted<Peer>(a);
    const auto peerB = converted<Peer>(b);
    auto out = peerA;
    for (auto _ : state) {
        for (std::size_t k = 0; k < kCount; ++k) {
            out[k] = Peer::multiply(peerA[k], peerB[k]);
        }
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    for (std::size_t k = 0; k < kCount; ++k) {
        requireEqual<Peer>(out[k], a[k] * b[k]);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kCount));
}

template <typename Peer>
void inverse(benchmark::State& state) {
    const std::vector<Matrix> a = randomMatrices(1);
    const auto peerA = converted<Peer>(a);
    auto out = peerA;
    for (auto _ : state) {
        for (std::size_t k = 0; k < kCount; ++k) {
            out[k] = Peer::invert(peerA[k]);
        }
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    for (std::size_t k = 0; k < kCount; ++k) {
        requireEqual<Peer>(out[k], a[k].inverse());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kCount));
}

BENCHMARK(product<GeomKit>)->Name("4x4 product/geomKit");
BENCHMARK(product<EigenAffine>)->Name("4x4 product/Eigen");
BENCHMARK(product<Glm>)->Name("4x4 product/GLM");
BENCHMARK(product<ImathRows>)->Name("4x4 product/Imath");
BENCHMARK(inverse<GeomKit>)->Name("affine inverse/geomKit");
BENCHMARK(inverse<EigenAffine>)->Name("affine inverse/Eigen");
BENCHMARK(inverse<Glm>)->Name("affine inverse/GLM");
BENCHMARK(inverse<ImathRows>)->Name("affine inverse/Imath");

}  // namespace
