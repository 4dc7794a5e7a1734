// Vector and matrix operations over the same arrays in the types of four libraries.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include <Eigen/Dense>
#include <ImathMatrix.h>
#include <ImathVec.h>
#include <benchmark/benchmark.h>
#include <glm/glm.hpp>

#include "geomKit/vAlgebra/Matrix3.h"
#include "tests/reference/InputSource.h"

using namespace geomKit;

namespace {

constexpr int kCount = 1024;  // matrices and results take a quarter of a megabyte

struct GeomKit {
    using Vector = Vector3;
    using Matrix = Matrix3;
    static Vector vector(const Vector3& v) { return v; }
    static Matrix matrix(const Matrix3& m) { return m; }
    static double dot(const Vector& a, const Vector& b) { return a * b; }
    static Vector cross(const Vector& a, const Vector& b) { return a % b; }
    static Vector unit(const Vector& a) { return a.normalize(); }
    static Vector image(const Matrix& m, const Vector& v) { return m * v; }
    static Matrix product(const Matrix& m, const Matrix& n) { return m * n; }
    static Matrix inverse(const Matrix& m) { return m.inverse(); }
};

struct EigenLib {
    using Vector = Eigen::Vector3d;
    using Matrix = Eigen::Matrix3d;
    static Vector vector(const Vector3& v) { return {v.x, v.y, v.z}; }
    static Matrix matrix(const Matrix3& m) {
        Matrix e;
        e << m(0, 0), m(0, 1), m(0, 2), m(1, 0), m(1, 1), m(1, 2), m(2, 0), m(2, 1), m(2, 2);
        return e;
    }
    static double dot(const Vector& a, const Vector& b) { return a.dot(b); }
    static Vector cross(const Vector& a, const Vector& b) { return a.cross(b); }
    static Vector unit(const Vector& a) { return a.normalized(); }
    static Vector image(const Matrix& m, const Vector& v) { return m * v; }
    static Matrix product(const Matrix& m, const Matrix& n) { return m * n; }
    static Matrix inverse(const Matrix& m) { return m.inverse(); }
};

struct Glm {
    using Vector = glm::dvec3;
    using Matrix = glm::dmat3;
    static Vector vector(const Vector3& v) { return {v.x, v.y, v.z}; }
    static Matrix matrix(const Matrix3& m) {
        return {vector(m.column(0)), vector(m.column(1)), vector(m.column(2))};
    }
    static double dot(const Vector& a, const Vector& b) { return glm::dot(a, b); }
    static Vector cross(const Vector& a, const Vector& b) { return glm::cross(a, b); }
    static Vector unit(const Vector& a) { return glm::normalize(a); }
    static Vector image(const Matrix& m, const Vector& v) { return m * v; }
    static Matrix product(const Matrix& m, const Matrix& n) { return m * n; }
    static Matrix inverse(const Matrix& m) { return glm::inverse(m); }
};

/// Imath multiplies row vectors from the left: its matrices are the transposed ones, and their
/// products run in the opposite order.
struct ImathLib {
    using Vector = Imath::V3d;
    using Matrix = Imath::M33d;
    static Vector vector(const Vector3& v) { return {v.x, v.y, v.z}; }
    static Matrix matrix(const Matrix3& m) {
        return {m(0, 0), m(1, 0), m(2, 0), m(0, 1), m(1, 1), m(2, 1), m(0, 2), m(1, 2), m(2, 2)};
    }
    static double dot(const Vector& a, const Vector& b) { return a.dot(b); }
    static Vector cross(const Vector& a, const Vector& b) { return a.cross(b); }
    static Vector unit(const Vector& a) { return a.normalized(); }
    static Vector image(const Matrix& m, const Vector& v) { return v * m; }
    static Matrix product(const Matrix& m, const Matrix& n) { return n * m; }
    static Matrix inverse(const Matrix& m) { return m.inverse(); }
};

template <typename Lib>
struct Inputs {
    std::vector<typename Lib::Vector> a, b;
    std::vector<typename Lib::Matrix> m, n;

    Inputs() {
        InputSource in(1);
        for (int i = 0; i < kCount; ++i) {
            a.push_back(Lib::vector(in.vector(2.0)));
            b.push_back(Lib::vector(in.vector(2.0)));
            m.push_back(Lib::matrix(in.matrix(2.0)));
            n.push_back(Lib::matrix(in.matrix(2.0)));
        }
    }
};

/// Applies `op` to every index and keeps each result.
template <typename Result, typename Op>
void overAll(benchmark::State& state, Op op) {
    std::vector<Result> results(kCount);
    for (auto _ : state) {
        for (std::size_t i = 0; i < kCount; ++i)
            results[i] = op(i);
        benchmark::DoNotOptimize(results.data());
        benchmark::ClobberMemory();
    }
}

template <typename Lib>
void add(const std::string& library) {
    using Vector = typename Lib::Vector;
    using Matrix = typename Lib::Matrix;
    static const Inputs<Lib> in;
    const auto named = [&library](const char* name) { return name + ("/" + library); };
    benchmark::RegisterBenchmark(named("dot").c_str(), [](benchmark::State& state) {
        overAll<double>(state, [](std::size_t i) { return Lib::dot(in.a[i], in.b[i]); });
    });
    benchmark::RegisterBenchmark(named("cross").c_str(), [](benchmark::State& state) {
        overAll<Vector>(state, [](std::size_t i) { return Lib::cross(in.a[i], in.b[i]); });
    });
    benchmark::RegisterBenchmark(named("a + b * s").c_str(), [](benchmark::State& state) {
        overAll<Vector>(state, [](std::size_t i) -> Vector { return in.a[i] + in.b[i] * 0.3; });
    });
    benchmark::RegisterBenchmark(named("normalize").c_str(), [](benchmark::State& state) {
        overAll<Vector>(state, [](std::size_t i) { return Lib::unit(in.a[i]); });
    });
    benchmark::RegisterBenchmark(named("matrix * vector").c_str(), [](benchmark::State& state) {
        overAll<Vector>(state, [](std::size_t i) { return Lib::image(in.m[i], in.a[i]); });
    });
    benchmark::RegisterBenchmark(named("matrix * matrix").c_str(), [](benchmark::State& state) {
        overAll<Matrix>(state, [](std::size_t i) { return Lib::product(in.m[i], in.n[i]); });
    });
    benchmark::RegisterBenchmark(named("inverse").c_str(), [](benchmark::State& state) {
        overAll<Matrix>(state, [](std::size_t i) { return Lib::inverse(in.m[i]); });
    });
}

/// Stops the program unless `difference` is nothing but rounding in values as large as `size`.
void expectSmall(double difference, double size) {
    if (!(std::abs(difference) <= 1e-9 * (1.0 + size))) {
        std::fputs("a peer computes something else\n", stderr);
        std::exit(1);
    }
}

template <typename PeerVector>
void expectEqual(const Vector3& ours, const PeerVector& theirs) {
    expectSmall((ours - Vector3(theirs[0], theirs[1], theirs[2])).length(), ours.lengthSq());
}

/// Stops the program when a peer computes something else.
template <typename Lib>
void verify() {
    const Inputs<GeomKit> ours;
    const Inputs<Lib> theirs;
    for (std::size_t i = 0; i < kCount; ++i) {
        const Vector3& a = ours.a[i];
        const Vector3& b = ours.b[i];
        const auto& peerA = theirs.a[i];
        const auto& peerB = theirs.b[i];
        expectSmall(a * b - Lib::dot(peerA, peerB), a.length() * b.length());
        expectEqual(a + b * 0.3, typename Lib::Vector(peerA + peerB * 0.3));

        const Vector3 normal = (a % b).normalize();
        const auto peerNormal = Lib::unit(Lib::cross(peerA, peerB));
        expectEqual(normal, peerNormal);
        expectEqual(ours.m[i].inverse() * normal,
                    Lib::image(Lib::inverse(theirs.m[i]), peerNormal));
        expectEqual(ours.m[i] * ours.n[i] * a,
                    Lib::image(Lib::product(theirs.m[i], theirs.n[i]), peerA));
    }
}

const bool kRegistered = [] {
    verify<EigenLib>();
    verify<Glm>();
    verify<ImathLib>();
    add<GeomKit>("geomKit");
    add<EigenLib>("Eigen");
    add<Glm>("GLM");
    add<ImathLib>("Imath");
    return true;
}();

}  // namespace
