#include <cmath>
#include <limits>
#include <thread>

#include <gtest/gtest.h>

#include "geomKit/queries/PolylineProjector.h"
#include "geomKit/vAlgebra/vectorUtils.h"
#include "tests/golden/Digest.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
using Points = std::vector<Vector3>;

/// The documented search, plainly: runs by falling bound, of equal ones the first, none pruned.
int documentedSegment(const PolylineProjector& line, const Vector3& x) {
    const Points& p = line.points;
    const auto at = [](int i) { return static_cast<std::size_t>(i); };
    const int last = static_cast<int>(p.size()) - 1;
    double best = kInfinity;
    int segment = 0;
    const auto consider = [&](double d, int candidate) {
        if (d < best) {
            best = d;
            segment = candidate;
        }
    };
    const auto scan = [&](int i, int j) {
        for (int k = i; k < j; ++k) {
            consider(distSqToLineSegment(x, p[at(k)], p[at(k + 1)], nullptr), k);
        }
    };
    if (last + 1 < 20) {
        scan(0, last);
        return segment;
    }
    struct Run {
        int i, j;
        double bound;
    };
    const auto run = [&](int i, int j) {
        const double length = line.arcLength[at(j)] - line.arcLength[at(i)];
        const double d = std::sqrt(distSqToLineSegment(x, p[at(i)], p[at(j)], nullptr));
        const double bound = d - std::sqrt(length * length - distSq(p[at(i)], p[at(j)]));
        return Run{i, j, bound > 0.0 ? bound : 0.0};
    };
    consider(distSq(p.front(), x) + 1e-13, 0);
    consider(distSq(p.back(), x) + 1e-13, last - 1);
    std::vector<Run> waiting = {run(0, last)};
    while (!waiting.empty()) {
        std::size_t top = 0;
        for (std::size_t r = 1; r < waiting.size(); ++r) {
            const Run& a = waiting[r];
            const Run& b = waiting[top];
            if (a.bound > b.bound || (a.bound == b.bound && a.i < b.i)) top = r;
        }
        const Run taken = waiting[top];
        waiting.erase(waiting.begin() + static_cast<std::ptrdiff_t>(top));
        if (taken.j - taken.i < 10) {
            scan(taken.i, taken.j);
            continue;
        }
        const int m = (taken.i + taken.j) / 2;
        consider(distSq(p[at(m)], x) + 1e-13, m - 1);
        waiting.push_back(run(taken.i, m));
        waiting.push_back(run(m, taken.j));
    }
    return segment;
}

enum class Shape { Helix, Walk, LatticeWalk, Straight, Circle, Scattered, Repeated };

Points polyline(Shape shape, int n, InputSource& in) {
    Points points;
    Vector3 p;
    for (int i = 0; i < n; ++i) {
        switch (shape) {
            case Shape::Helix:
                p = {std::cos(0.05 * i), std::sin(0.05 * i), 0.01 * i};
                break;
            case Shape::Walk:
                p += in.vector(1.0);
                break;
            case Shape::LatticeWalk:
                p.x += in.index(3) - 1;
                p.y += in.index(3) - 1;
                break;
            case Shape::Straight:
                p = {0.1 * i, 0.3 * i, 0.7 * i};
                break;
            case Shape::Circle: {
                const double angle = 6.283185307179586 * i / (n - 1);
                p = {std::cos(angle), std::sin(angle), 0.0};
                break;
            }
            case Shape::Scattered:
                p = in.vector(1.0);
                break;
            case Shape::Repeated:
                if (i % 3 == 0) p = in.vector(1.0);
                break;
        }
        points.push_back(p);
    }
    return points;
}

Vector3 query(const Points& points, InputSource& in) {
    const Vector3& a = points[static_cast<std::size_t>(in.index(static_cast<int>(points.size())))];
    const Vector3& b = points[static_cast<std::size_t>(in.index(static_cast<int>(points.size())))];
    switch (in.index(6)) {
        case 0:
            return a;
        case 1:
            return (a + b) * 0.5;
        case 2:
            return a + in.vector(0.01);
        case 3:
            return in.vector(30.0);
        case 4:
            return in.vector(1e4);
        default:
            return {in.index(41) - 20.0, in.index(41) - 20.0, 0.0};
    }
}

TEST(PolylineProjector, AnswersLikeTheDocumentedSearchAndIsNearest) {
    InputSource in(1);
    for (const Shape shape : {Shape::Helix, Shape::Walk, Shape::LatticeWalk, Shape::Straight,
                              Shape::Circle, Shape::Scattered, Shape::Repeated}) {
        for (int round = 0; round < 60; ++round) {
            // From 2 to 5,000 vertices, most of them around the change of method at 20.
            const double size = std::exp(in.uniform(std::log(2.0), std::log(5000.0)));
            const int n = round % 3 == 0 ? 18 + in.index(4) : static_cast<int>(size);
            const Points points = polyline(shape, n, in);
            PolylineProjector line(points);
            for (int q = 0; q < (n > 500 ? 4 : 40); ++q) {
                const Vector3 x = query(points, in);
                line.project(x);
                ASSERT_EQ(line.segment, documentedSegment(line, x)) << n << " vertices, " << x;
                const auto k = static_cast<std::size_t>(line.segment);
                double least = kInfinity;
                for (std::size_t s = 0; s + 1 < points.size(); ++s) {
                    least = (std::min)(least,
                                       distSqToLineSegment(x, points[s], points[s + 1], nullptr));
                }
                // Cancellation in a squared distance is relative to the longest difference in it.
                const double scale = 1.0 + x.lengthSq() + points[k].lengthSq();
                ASSERT_LE(distSq(line.point, x), least + 1e-13 * scale);
                ASSERT_LE(dist(points[k] + (points[k + 1] - points[k]) * line.param, line.point),
                          1e-12 * std::sqrt(scale));
            }
        }
    }
}

TEST(PolylineProjector, FindsTheNearestWhereRoundingMisleadsTheBounds) {
    Points straight;
    for (int i = 0; i <= 20; ++i)
        straight.emplace_back(i, 0.0, 0.0);
    const Points shorter(straight.begin(), straight.end() - 1);
    const struct {
        Points points;
        Vector3 x;
        int segment;
        Vector3 point;
    } cases[] = {
        {shorter, {51.0, 0.0, 0.0}, 18, {19.0, 0.0, 0.0}},
        {shorter, {-51.0, 0.0, 0.0}, 0, {0.0, 0.0, 0.0}},
        {shorter, {9.0, 1e5, 0.0}, 8, {9.0, 0.0, 0.0}},
        {straight, {19.99999981, 1.7e-7, 0.0}, 19, {19.99999981, 0.0, 0.0}},
    };
    for (const auto& c : cases) {
        PolylineProjector line(c.points);
        line.project(c.x);
        EXPECT_EQ(line.segment, c.segment) << c.x;
        EXPECT_LT(dist(line.point, c.point), 1e-12) << c.x;
    }
}

TEST(PolylineProjector, EndsAndDegeneratePolylines) {
    PolylineProjector pair({{0.0, 0.0, 0.0}, {2.0, 0.0, 0.0}});
    pair.project({3.0, 1.0, 0.0});
    EXPECT_EQ(pair.segment, 0);
    EXPECT_EQ(pair.param, 1.0);
    EXPECT_EQ(dist(pair.point, {2.0, 0.0, 0.0}), 0.0);

    PolylineProjector single({{1.0, 2.0, 3.0}});
    single.segment = 7;
    single.project({0.0, 0.0, 0.0});
    EXPECT_EQ(single.segment, 7);
    EXPECT_EQ(dist(single.point, Vector3()), 0.0);
    EXPECT_EQ(single.nearest(Vector3()).segment, -1);
    EXPECT_EQ(PolylineProjector(Points()).nearest(Vector3()).segment, -1);

    // A vertex inside a run: the earlier of its segments, at its end.
    InputSource in(2);
    const PolylineProjector walk(polyline(Shape::Walk, 100, in));
    for (std::size_t i = 1; i < 99; ++i) {
        const PolylineProjection at = walk.nearest(walk.points[i]);
        EXPECT_EQ(at.segment, static_cast<int>(i) - 1);
        EXPECT_EQ(at.param, 1.0);
    }
}

TEST(PolylineProjector, SurvivesWhatIsNotFinite) {
    const double nan = std::nan("");
    InputSource in(3);
    for (const int n : {2, 19, 20, 300}) {
        for (const double bad : {nan, kInfinity, -kInfinity, 1e200, 1e-200}) {
            Points points = polyline(Shape::Walk, n, in);
            const PolylineProjector good(points);
            const PolylineProjection fromBad = good.nearest({bad, 0.0, 1.0});
            points[static_cast<std::size_t>(n / 2)].y = bad;
            const PolylineProjection toBad = PolylineProjector(points).nearest({0.0, 0.5, 1.0});
            for (const PolylineProjection& p : {fromBad, toBad}) {
                EXPECT_TRUE(p.segment >= 0 && p.segment <= n - 2) << n << " vertices, " << bad;
            }
        }
    }
}

TEST(PolylineProjector, ThreadsShareOneObject) {
    InputSource in(4);
    const PolylineProjector line(polyline(Shape::Walk, 1000, in));
    Points queries;
    for (int i = 0; i < 400; ++i)
        queries.push_back(query(line.points, in));
    std::vector<PolylineProjection> results(queries.size());
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < 4; ++t) {
        threads.emplace_back([&, t] { line.nearest(&queries[100 * t], 100, &results[100 * t]); });
    }
    for (std::thread& thread : threads)
        thread.join();
    for (std::size_t i = 0; i < queries.size(); ++i) {
        const PolylineProjection alone = line.nearest(queries[i]);
        EXPECT_EQ(results[i].segment, alone.segment);
        EXPECT_EQ(results[i].param, alone.param);
    }
}

}  // namespace
