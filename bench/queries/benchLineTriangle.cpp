// One line against many triangles: count the hits and add up their line parameters.
//
// Triangles of about one size and any orientation lie along the lines, within a distance that gives
// the asked share of hits. Each pass takes the next of many lines, so that no branch predictor
// learns the outcomes.
#include <Eigen/Geometry>
#include <benchmark/benchmark.h>
#include <glm/glm.hpp>
#define GLM_ENABLE_EXPERIMENTAL
#include <cmath>
#include <vector>

#include <glm/gtx/intersect.hpp>

#include "bench/queries/lineTriangleScene.h"
#include "geomKit/queries/LineTriangleInt.h"
#include "geomKit/vAlgebra/vectorUtils.h"
#include "tests/reference/InputSource.h"

using namespace geomKit;

namespace lineTriangle {

namespace {

Scene makeScene(double spread) {
    InputSource in(7);
    Scene scene{{}, Vector3(0.4, -0.7, 0.6), {}};
    Vector3 e1;
    Vector3 e2;
    getBasis(scene.d, e1, e2);
    for (std::size_t i = 0; i < kLines; ++i) {
        const double u = in.uniform(-0.4, 0.4);
        const double v = in.uniform(-0.4, 0.4);
        scene.starts.push_back(e1 * u + e2 * v);
    }
    for (int i = 0; i < kTriangles; ++i) {
        const double u = in.uniform(-spread, spread);
        const double v = in.uniform(-spread, spread);
        const double t = in.uniform(10.0, 30.0);
        const Vector3 centre = scene.d * t + e1 * u + e2 * v;
        const UVector3 normal = in.vector(1.0);
        Vector3 f1;
        Vector3 f2;
        getBasis(normal, f1, f2);
        Vector3 corners[3];
        for (int k = 0; k < 3; ++k) {
            const double angle = 2.1 * k + in.uniform(-0.5, 0.5);
            const double radius = in.uniform(0.7, 1.3);
            corners[k] = centre + f1 * (radius * std::cos(angle)) + f2 * (radius * std::sin(angle));
        }
        scene.triangles.push_back({corners[0], corners[1], corners[2]});
    }
    return scene;
}

int hitsOfAllLines(const Scene& scene) {
    int hits = 0;
    for (std::size_t line = 0; line < kLines; ++line)
        hits += byGeomKit(scene, line).hits;
    return hits;
}

}  // namespace

Answer byGeomKit(const Scene& scene, std::size_t line) {
    const Vector3& p = scene.starts[line];
    Answer answer;
    for (const Triangle& t : scene.triangles) {
        const LineTriangleInt hit(p, scene.d, t.a, t.b, t.c, 0.0);
        if (hit.status == LineTriangleInt::kHit) {
            ++answer.hits;
            answer.paramSum += hit.param;
        }
    }
    return answer;
}

const Scene& sceneOf(int percent) {
    static const auto withShare = [](double share) {
        double lo = 0.0;
        double hi = 100.0;
        for (int i = 0; i < 30; ++i) {
            const double mid = 0.5 * (lo + hi);
            const double wanted = share * kTriangles * kLines;
            (hitsOfAllLines(makeScene(mid)) > wanted ? lo : hi) = mid;
        }
        return makeScene(lo);
    };
    static const Scene half = withShare(0.5);
    static const Scene hundredth = withShare(0.01);
    return percent == 50 ? half : hundredth;
}

double shareOfHits(const Scene& scene) {
    return hitsOfAllLines(scene) / double{kLines * kTriangles};
}

namespace {

void geomKit(benchmark::State& state) {
    const Scene& scene = sceneOf(static_cast<int>(state.range(0)));
    measure(state, [&](std::size_t line) { return byGeomKit(scene, line); });
}

void geomKitArray(benchmark::State& state) {
    const Scene& scene = sceneOf(static_cast<int>(state.range(0)));
    std::vector<Vector3> corners;
    for (const Triangle& t : scene.triangles)
        corners.insert(corners.end(), {t.a, t.b, t.c});
    std::vector<std::int32_t> statuses(scene.triangles.size());
    std::vector<double> params(scene.triangles.size());
    measure(state, [&](std::size_t line) {
        LineTriangleInt::intersect(scene.starts[line], scene.d, 0.0, corners.data(),
                                   scene.triangles.size(), statuses.data(), params.data(), nullptr);
        Answer answer;
        for (std::size_t i = 0; i < statuses.size(); ++i) {
            if (statuses[i] == LineTriangleInt::kHit) {
                ++answer.hits;
                answer.paramSum += params[i];
            }
        }
        return answer;
    });
}

void glmRay(benchmark::State& state) {
    const Scene& scene = sceneOf(static_cast<int>(state.range(0)));
    const auto convert = [](const Vector3& v) { return glm::dvec3(v.x, v.y, v.z); };
    std::vector<glm::dvec3> corners;
    for (const Triangle& t : scene.triangles) {
        for (const Vector3& v : {t.a, t.b, t.c})
            corners.push_back(convert(v));
    }
    std::vector<glm::dvec3> starts;
    for (const Vector3& p : scene.starts)
        starts.push_back(convert(p));
    const glm::dvec3 d = convert(scene.d);
    measure(state, [&](std::size_t line) {
        Answer answer;
        for (std::size_t i = 0; i < corners.size(); i += 3) {
            glm::dvec2 weights;
            double param = 0.0;
            if (glm::intersectRayTriangle(starts[line], d, corners[i], corners[i + 1],
                                          corners[i + 2], weights, param)) {
                ++answer.hits;
                answer.paramSum += param;
            }
        }
        return answer;
    });
}

// Moeller and Trumbore, "Fast, minimum storage ray-triangle intersection" (1997), for both sides.
bool moellerTrumbore(const Eigen::Vector3d& p, const Eigen::Vector3d& d, const Eigen::Vector3d& a,
                     const Eigen::Vector3d& b, const Eigen::Vector3d& c, double* param) {
    const Eigen::Vector3d ab = b - a;
    const Eigen::Vector3d ac = c - a;
    const Eigen::Vector3d pv = d.cross(ac);
    const double det = ab.dot(pv);
    if (std::abs(det) < 1e-12) return false;
    const double inv = 1.0 / det;
    const Eigen::Vector3d tv = p - a;
    const double u = tv.dot(pv) * inv;
    if (u < 0.0 || u > 1.0) return false;
    const Eigen::Vector3d qv = tv.cross(ab);
    const double v = d.dot(qv) * inv;
    if (v < 0.0 || u + v > 1.0) return false;
    *param = ac.dot(qv) * inv;
    return true;
}

void eigenMoellerTrumbore(benchmark::State& state) {
    const Scene& scene = sceneOf(static_cast<int>(state.range(0)));
    const auto convert = [](const Vector3& v) { return Eigen::Vector3d(v.x, v.y, v.z); };
    std::vector<Eigen::Vector3d> corners;
    for (const Triangle& t : scene.triangles) {
        for (const Vector3& v : {t.a, t.b, t.c})
            corners.push_back(convert(v));
    }
    std::vector<Eigen::Vector3d> starts;
    for (const Vector3& p : scene.starts)
        starts.push_back(convert(p));
    const Eigen::Vector3d d = convert(scene.d);
    measure(state, [&](std::size_t line) {
        Answer answer;
        for (std::size_t i = 0; i < corners.size(); i += 3) {
            double param = 0.0;
            if (moellerTrumbore(starts[line], d, corners[i], corners[i + 1], corners[i + 2],
                                &param)) {
                ++answer.hits;
                answer.paramSum += param;
            }
        }
        return answer;
    });
}

BENCHMARK(geomKit)->Name("LineTriangle/geomKit")->Arg(1)->Arg(50);
BENCHMARK(geomKitArray)->Name("LineTriangle/geomKit, array")->Arg(1)->Arg(50);
BENCHMARK(glmRay)->Name("LineTriangle/GLM")->Arg(1)->Arg(50);
BENCHMARK(eigenMoellerTrumbore)->Name("LineTriangle/EigenMoellerTrumbore")->Arg(1)->Arg(50);

}  // namespace

}  // namespace lineTriangle
