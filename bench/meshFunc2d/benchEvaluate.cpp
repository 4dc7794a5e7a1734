// The time to locate a point and to interpolate there: geomKit beside CGAL's Delaunay
// triangulation, with and without a hint, and a Boost.Geometry R-tree over the triangles' boxes.
#include <benchmark/benchmark.h>

#include "bench/meshFunc2d/TriangulationScene.h"
#include "bench/meshFunc2d/facetTree.h"

using namespace geomKit;

namespace {

using Scene = TriangulationScene;
using Point = Scene::Point;
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
        if constexpr (WithHint) last_ = face;
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
        for (auto it = tree_.qbegin(boost::geometry::index::intersects(q)); it != tree_.qend();
             ++it) {
            const std::size_t first = 3 * static_cast<std::size_t>(it->second);
            if (interpolate(scene_, &scene_.facets[first], p, answer)) return true;
        }
        return false;
    }

private:
    static const FacetTree& treeOf(const Scene& scene) {
        static std::vector<std::pair<const Scene*, std::unique_ptr<FacetTree>>> made;
        for (const auto& [owner, tree] : made) {
            if (owner == &scene) return *tree;
        }
        made.emplace_back(&scene, facetTree(scene));
        return *made.back().second;
    }

    const Scene& scene_;
    const FacetTree& tree_;
};

bool isRight(const Point& p, const Point& value) {
    return std::abs(value.u - (2.0 * p.u - p.v)) < 1e-6;
}

template <typename Competitor>
void locate(benchmark::State& state, bool raster) {
    const Scene& scene = Scene::ofSize(static_cast<int>(state.range(0)));
    const std::vector<Point>& queries = raster ? scene.rasterQueries : scene.randomQueries;
    Competitor competitor(scene);
    // The values sample a linear function, which each competitor must reproduce.
    for (std::size_t i = 0; i < queries.size(); i += 1000) {
        Answer answer;
        const Point& p = queries[i];
        if (!competitor(p, answer) || !isRight(p, answer.value)) {
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

/// The array form, a row of a picture at a time; time for each point.
void locateArrays(benchmark::State& state, bool raster) {
    const Scene& scene = Scene::ofSize(static_cast<int>(state.range(0)));
    const std::vector<Point>& queries = raster ? scene.rasterQueries : scene.randomQueries;
    std::vector<Point> values(Scene::kRow);
    std::vector<float> cosines(Scene::kRow);
    scene.function->evaluate(queries.data(), Scene::kRow, values.data(), cosines.data(), nullptr);
    for (std::size_t k = 0; k < Scene::kRow; ++k) {
        if (!isRight(queries[k], values[k])) state.SkipWithError("wrong answer");
    }
    std::size_t i = 0;
    while (state.KeepRunningBatch(Scene::kRow)) {
        benchmark::DoNotOptimize(scene.function->evaluate(&queries[i], Scene::kRow, values.data(),
                                                          cosines.data(), nullptr));
        i = (i + Scene::kRow) % Scene::kQueries;
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

void competeByArrays() {
    for (const bool raster : {false, true}) {
        const std::string test = raster ? "evaluate raster/" : "evaluate random/";
        benchmark::RegisterBenchmark((test + "geomKit arrays").c_str(), locateArrays, raster)
            ->Arg(1000)
            ->Arg(100000)
            ->Arg(1000000);
    }
}

[[maybe_unused]] const bool kRegistered = [] {
    compete<ByGeomKit>("geomKit");
    competeByArrays();
    compete<ByCgal<false>>("CGAL locate");
    compete<ByCgal<true>>("CGAL locate, hint");
    compete<ByRTree>("Boost R-tree");
    return true;
}();

}  // namespace
