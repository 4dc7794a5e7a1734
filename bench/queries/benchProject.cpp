// Nearest point on a polyline: geomKit beside CGAL's AABB tree over segments, a Boost.Geometry
// R-tree over segments, GEOS's prepared distance, and a plain scan.
#include <benchmark/benchmark.h>

#define USE_UNSTABLE_GEOS_CPP_API
#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include <CGAL/AABB_segment_primitive.h>
#include <CGAL/AABB_traits.h>
#include <CGAL/AABB_tree.h>
#include <CGAL/Simple_cartesian.h>
#include <boost/geometry.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <geos_c.h>

#include "geomKit/queries/PolylineProjector.h"
#include "geomKit/vAlgebra/vectorUtils.h"
#include "tests/reference/InputSource.h"

using namespace geomKit;

namespace {

using Points = std::vector<Vector3>;

constexpr std::size_t kQueries = std::size_t{1} << 16;

/// A plane polyline, as all competitors can take it, and points near it or far from it.
struct Scene {
    Points line;
    Points queries;

    Scene(int vertices, bool walk, bool far) {
        InputSource in(static_cast<std::uint64_t>(vertices));
        Vector3 p;
        for (int i = 0; i < vertices; ++i) {
            if (walk) {
                p += Vector3(in.uniform(-1.0, 1.0), in.uniform(-1.0, 1.0), 0.0);
            } else {
                // A flower: smooth, with as many waves at every size.
                const double t = 6.283185307179586 * i / vertices;
                const double r = 100.0 + 30.0 * std::sin(5.0 * t);
                p = Vector3(r * std::cos(t), r * std::sin(t), 0.0);
            }
            line.push_back(p);
        }
        Vector3 low = line[0];
        Vector3 high = line[0];
        for (const Vector3& v : line) {
            low = Vector3((std::min)(low.x, v.x), (std::min)(low.y, v.y), 0.0);
            high = Vector3((std::max)(high.x, v.x), (std::max)(high.y, v.y), 0.0);
        }
        const double size = dist(low, high);
        for (std::size_t i = 0; i < kQueries; ++i) {
            const Vector3& v = line[static_cast<std::size_t>(in.index(vertices))];
            const double reach = (far ? 2.0 : 0.01) * size;
            const double u = in.uniform(-reach, reach);
            const double w = in.uniform(-reach, reach);
            queries.push_back(v + Vector3(u, w, 0.0));
        }
    }
};

class ByGeomKit {
public:
    explicit ByGeomKit(const Scene& scene) : line_(scene.line) {}
    double operator()(const Vector3& x) {
        foot_ = line_.nearest(x);
        benchmark::DoNotOptimize(foot_);
        return distSq(foot_.point, x);
    }

private:
    PolylineProjector line_;
    PolylineProjection foot_;
};

class ByScan {
public:
    explicit ByScan(const Scene& scene) : line_(scene.line) {}
    double operator()(const Vector3& x) {
        double best = std::numeric_limits<double>::infinity();
        std::size_t nearest = 0;
        for (std::size_t k = 0; k + 1 < line_.size(); ++k) {
            const double d = distSqToLineSegment(x, line_[k], line_[k + 1], nullptr);
            if (d < best) {
                best = d;
                nearest = k;
            }
        }
        benchmark::DoNotOptimize(nearest);
        return best;
    }

private:
    Points line_;
};

class ByCgal {
    using Kernel = CGAL::Simple_cartesian<double>;
    using Segments = std::vector<Kernel::Segment_3>;
    using Primitive = CGAL::AABB_segment_primitive<Kernel, Segments::const_iterator>;

public:
    explicit ByCgal(const Scene& scene) {
        for (std::size_t k = 0; k + 1 < scene.line.size(); ++k) {
            segments_.emplace_back(point(scene.line[k]), point(scene.line[k + 1]));
        }
        tree_.rebuild(segments_.begin(), segments_.end());
        tree_.accelerate_distance_queries();
    }
    double operator()(const Vector3& x) {
        const auto foot = tree_.closest_point_and_primitive(point(x));
        benchmark::DoNotOptimize(foot.second);
        return CGAL::squared_distance(foot.first, point(x));
    }

private:
    static Kernel::Point_3 point(const Vector3& v) { return {v.x, v.y, v.z}; }

    Segments segments_;
    CGAL::AABB_tree<CGAL::AABB_traits<Kernel, Primitive>> tree_;
};

class ByRTree {
    using BoostPoint = boost::geometry::model::point<double, 2, boost::geometry::cs::cartesian>;
    using Segment = boost::geometry::model::segment<BoostPoint>;
    using Tree = boost::geometry::index::rtree<Segment, boost::geometry::index::rstar<16>>;

public:
    explicit ByRTree(const Scene& scene) {
        std::vector<Segment> segments;
        for (std::size_t k = 0; k + 1 < scene.line.size(); ++k) {
            segments.emplace_back(point(scene.line[k]), point(scene.line[k + 1]));
        }
        tree_ = Tree(segments);
    }
    double operator()(const Vector3& x) {
        const auto nearest = tree_.qbegin(boost::geometry::index::nearest(point(x), 1));
        return boost::geometry::comparable_distance(point(x), *nearest);
    }

private:
    static BoostPoint point(const Vector3& v) { return {v.x, v.y}; }

    Tree tree_;
};

class ByGeos {
public:
    explicit ByGeos(const Scene& scene) : geos_(GEOS_init_r()) {
        GEOSCoordSequence* points =
            GEOSCoordSeq_create_r(geos_, static_cast<unsigned>(scene.line.size()), 2);
        for (unsigned i = 0; i < scene.line.size(); ++i) {
            GEOSCoordSeq_setXY_r(geos_, points, i, scene.line[i].x, scene.line[i].y);
        }
        line_ = GEOSGeom_createLineString_r(geos_, points);
        prepared_ = GEOSPrepare_r(geos_, line_);
    }
    ~ByGeos() {
        GEOSPreparedGeom_destroy_r(geos_, prepared_);
        GEOSGeom_destroy_r(geos_, line_);
        GEOS_finish_r(geos_);
    }
    ByGeos(const ByGeos&) = delete;
    ByGeos& operator=(const ByGeos&) = delete;

    double operator()(const Vector3& x) {
        GEOSGeometry* point = GEOSGeom_createPointFromXY_r(geos_, x.x, x.y);
        GEOSCoordSequence* foot = GEOSPreparedNearestPoints_r(geos_, prepared_, point);
        Vector3 nearest;
        GEOSCoordSeq_getXY_r(geos_, foot, 0, &nearest.x, &nearest.y);
        GEOSCoordSeq_destroy_r(geos_, foot);
        GEOSGeom_destroy_r(geos_, point);
        return distSq(nearest, x);
    }

private:
    GEOSContextHandle_t geos_;
    GEOSGeometry* line_;
    const GEOSPreparedGeometry* prepared_;
};

const Scene& sceneOf(int vertices, bool walk, bool far) {
    static std::vector<std::unique_ptr<Scene>> scenes;
    static std::vector<std::string> names;
    const std::string name = std::to_string(vertices) + (walk ? "w" : "s") + (far ? "f" : "n");
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (names[i] == name) return *scenes[i];
    }
    names.push_back(name);
    scenes.push_back(std::make_unique<Scene>(vertices, walk, far));
    return *scenes.back();
}

template <typename Competitor>
void project(benchmark::State& state, bool walk, bool far) {
    const Scene& scene = sceneOf(static_cast<int>(state.range(0)), walk, far);
    Competitor competitor(scene);
    ByScan scan(scene);
    for (std::size_t i = 0; i < kQueries; i += kQueries / 16) {
        const double right = scan(scene.queries[i]);
        if (!(std::abs(competitor(scene.queries[i]) - right) <= 1e-9 * (1.0 + right))) {
            state.SkipWithError("wrong answer");
            return;
        }
    }
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(competitor(scene.queries[i]));
        i = (i + 1) % kQueries;
    }
}

template <typename Competitor>
void compete(const std::string& name, int largest) {
    for (const bool walk : {false, true}) {
        for (const bool far : {false, true}) {
            const std::string test = std::string("project ") + (walk ? "walk" : "smooth") +
                                     (far ? " far/" : " near/") + name;
            for (int n = 100; n <= largest; n *= n == 100 ? 10 : 100) {
                benchmark::RegisterBenchmark(test.c_str(), project<Competitor>, walk, far)->Arg(n);
            }
        }
    }
}

[[maybe_unused]] const bool kRegistered = [] {
    compete<ByGeomKit>("geomKit", 100000);
    compete<ByScan>("scan", 100);
    compete<ByCgal>("CGAL AABB tree", 100000);
    compete<ByRTree>("Boost R-tree", 100000);
    compete<ByGeos>("GEOS", 100000);
    return true;
}();

}  // namespace
