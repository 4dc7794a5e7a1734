// Point location plus linear interpolation: geomKit beside CGAL's Delaunay triangulation (with and
// without a hint) and a Boost.Geometry R-tree over the triangles' boxes.
#include <benchmark/benchmark.h>
#include <boost/geometry.hpp>
#include <boost/geometry/index/rtree.hpp>

#include "bench/meshFunc2d/TriangulationScene.h"

namespace {

namespace bg = boost::geometry;
using Scene = TriangulationScene;
using Point = Scene::Point;
using BoostPoint = bg::model::point<double, 2, bg::cs::cartesian>;
using Box = bg::model::box<BoostPoint>;
using Tree = bg::index::rtree<std::pair<Box, int>, bg::index::rstar<16>>;

struct Answer {
    Point value;
    float cosine = 0.0f;
};

/// What a user of the other libraries would write once the triangle is known.
bool interpolate(const Scene& scene, const int* corner, const Point& p, Answer& answer) {
    const auto vertex = [corner](int k) { return static_cast<std::size_t>(corner[k]); };
    const Point& p0 = scene.params[vertex(0)];
    const Point e1 = scene.params[vertex(1)] - p0;
    const Point e2 = scene.params[vertex(2)] - p0;
    const Point d = p - p0;
    const double r = 1.0 / (e1.u * e2.v - e2.u * e1.v);
    const double a = (d.u * e2.v - d.v * e2.u) * r;
    const double b = (d.v * e1.u - d.u * e1.v) * r;
    const double c = 1.0 - a - b;
    if (a < -1e-8 || b < -1e-8 || c < -1e-8) return false;
    answer.value =
        scene.values[vertex(0)] * c + scene.values[vertex(1)] * a + scene.values[vertex(2)] * b;
    answer.cosine =
        static_cast<float>(scene.normaldots[vertex(0)] * c + scene.normaldots[vertex(1)] * a +
                           scene.normaldots[vertex(2)] * b);
    return true;
}

class ByGeomKit {
public:
    explicit ByGeomKit(const Scene& scene) : function_(*scene.function) {}
    bool operator()(const Point& p, Answer& answer) {
        return function_.evaluate(p, &answer.value, &answer.cosine);
    }

private:
    const MeshFunction2D& function_;
};

template <bool WithHint>
class ByCgal {
public:
    explicit ByCgal(const Scene& scene) : scene_(scene) {}
    bool operator()(const Point& p, Answer& answer) {
        const Scene::Kernel::Point_2 q(p.u, p.v);
        const auto face = WithHint ? scene_.delaunay.locate(q, last_) : scene_.delaunay.locate(q);
        if (scene_.delaunay.is_infinite(face)) return false;
        if (WithHint) last_ = face;
        const int corner[3] = {face->vertex(0)->info(), face->vertex(1)->info(),
                               face->vertex(2)->info()};
        return interpolate(scene_, corner, p, answer);
    }

private:
    const Scene& scene_;
    Scene::Delaunay::Face_handle last_;
};

class ByRTree {
public:
    explicit ByRTree(const Scene& scene) : scene_(scene), tree_(treeOf(scene)) {}
    bool operator()(const Point& p, Answer& answer) {
        const BoostPoint q(p.u, p.v);
        for (auto it = tree_.qbegin(bg::index::intersects(q)); it != tree_.qend(); ++it) {
            const std::size_t first = 3 * static_cast<std::size_t>(it->second);
            if (interpolate(scene_, &scene_.facets[first], p, answer)) return true;
        }
        return false;
    }

private:
    static const Tree& treeOf(const Scene& scene) {
        static std::vector<std::pair<const Scene*, std::unique_ptr<Tree>>> made;
        for (const auto& [owner, tree] : made) {
            if (owner == &scene) return *tree;
        }
        std::vector<std::pair<Box, int>> boxes;
        for (std::size_t f = 0; 3 * f < scene.facets.size(); ++f) {
            Box box = bg::make_inverse<Box>();
            for (std::size_t k = 0; k < 3; ++k) {
                const Point& p = scene.params[static_cast<std::size_t>(scene.facets[3 * f + k])];
                bg::expand(box, BoostPoint(p.u, p.v));
            }
            boxes.emplace_back(box, static_cast<int>(f));
        }
        made.emplace_back(&scene, std::make_unique<Tree>(boxes));
        return *made.back().second;
    }

    const Scene& scene_;
    const Tree& tree_;
};

template <typename Competitor>
void locate(benchmark::State& state, bool raster) {
    const Scene& scene = Scene::ofSize(static_cast<int>(state.range(0)));
    const std::vector<Point>& queries = raster ? scene.rasterQueries : scene.randomQueries;
    Competitor competitor(scene);
    // Everybody must agree with the linear function that the values sample.
    for (std::size_t i = 0; i < queries.size(); i += 1000) {
        Answer answer;
        const Point& p = queries[i];
        if (!competitor(p, answer) || !(std::abs(answer.value.u - (2.0 * p.u - p.v)) < 1e-6)) {
            state.SkipWithError("wrong answer");
            return;
        }
    }
    std::size_t i = 0;
    Answer answer;
    for (auto _ : state) {
        benchmark::DoNotOptimize(competitor(queries[i], answer));
        benchmark::DoNotOptimize(answer);
        i = (i + 1) % Scene::kQueries;
    }
}

template <typename Competitor>
void compete(const std::string& name) {
    for (const bool raster : {false, true}) {
        const std::string test = raster ? "evaluate raster/" : "evaluate random/";
        benchmark::RegisterBenchmark((test + name).c_str(), locate<Competitor>, raster)
            ->Arg(1000)
            ->Arg(100000)
            ->Arg(1000000);
    }
}

[[maybe_unused]] const bool kRegistered = [] {
    compete<ByGeomKit>("geomKit");
    compete<ByCgal<false>>("CGAL locate");
    compete<ByCgal<true>>("CGAL locate, hint");
    compete<ByRTree>("Boost R-tree");
    return true;
}();

}  // namespace
