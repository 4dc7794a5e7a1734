// Blends between two similarity transforms, one at a time and many between the same two, against
// GLM's spherical interpolation on quaternions that are converted from and to matrices.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include <benchmark/benchmark.h>
#include <glm/gtc/quaternion.hpp>
#include <glm/mat3x3.hpp>

#include "geomKit/transforms/Transform.h"
#include "tests/reference/InputSource.h"

using namespace geomKit;

namespace {

constexpr std::size_t kBlends = 1000;

struct Scene {
    Transform a;
    Transform b;
    std::vector<double> params;

    Scene() {
        InputSource in(71);
        const auto random = [&in] {
            Transform t(in.vector(1.0), in.uniform(0.2, 1.5));
            t.translation = in.vector(3.0);
            t.scale = in.uniform(0.5, 2.0);
            return t;
        };
        a = random();
        b = random();
        for (std::size_t i = 0; i < kBlends; ++i)
            params.push_back(in.uniform(0.0, 1.0));
    }
};

const Scene& scene() {
    static const Scene s;
    return s;
}

struct OneByOne {
    static void blend(const Scene& s, Transform* out) {
        for (std::size_t i = 0; i < kBlends; ++i)
            out[i] = Transform::interpolate(s.a, s.b, s.params[i]);
    }
};

struct Many {
    static void blend(const Scene& s, Transform* out) {
        Transform::interpolate(s.a, s.b, s.params.data(), kBlends, out);
    }
};

glm::dmat3 toGlm(const Matrix3& m) {
    glm::dmat3 g;
    for (int i = 0; i < 9; ++i)
        g[i % 3][i / 3] = m(i / 3, i % 3);
    return g;
}

struct GlmSlerp {
    static void blend(const Scene& s, Transform* out) {
        for (std::size_t i = 0; i < kBlends; ++i) {
            const double t = s.params[i];
            const glm::dquat q = glm::slerp(glm::quat_cast(toGlm(s.a.rotation)),
                                            glm::quat_cast(toGlm(s.b.rotation)), t);
            const glm::dmat3 g = glm::mat3_cast(q);
            for (int k = 0; k < 9; ++k)
                out[i].rotation(k / 3, k % 3) = g[k % 3][k / 3];
            out[i].translation = s.a.translation * (1.0 - t) + s.b.translation * t;
            out[i].scale = s.a.scale * std::pow(s.b.scale / s.a.scale, t);
        }
    }
};

template <typename Competitor>
void interpolate(benchmark::State& state) {
    std::vector<Transform> out(kBlends);
    for (auto _ : state) {
        Competitor::blend(scene(), out.data());
        benchmark::ClobberMemory();
    }
    for (std::size_t i = 0; i < kBlends; ++i) {
        const Transform want = Transform::interpolate(scene().a, scene().b, scene().params[i]);
        if (!(want.getMatrix().distTo(out[i].getMatrix()) < 1e-9)) {
            std::fprintf(stderr, "a competitor computes something else\n");
            std::exit(1);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kBlends));
}

BENCHMARK(interpolate<OneByOne>)->Name("interpolate/geomKit");
BENCHMARK(interpolate<Many>)->Name("interpolate/geomKit, array");
BENCHMARK(interpolate<GlmSlerp>)->Name("interpolate/GLM slerp");

}  // namespace
