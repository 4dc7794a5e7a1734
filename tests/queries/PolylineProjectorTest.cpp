#include <set>

#include "tests/support.h"

using namespace geomKit;

namespace {

using Points = std::vector<Vector3>;

/// The documented search, plainly: no run is pruned.
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
    // The negated bound comes first: runs by falling bound, of equal ones the first.
    std::set<std::tuple<double, int, int>> waiting;
    const auto add = [&](int i, int j) {
        const double length = line.arcLength[at(j)] - line.arcLength[at(i)];
        const double d = std::sqrt(distSqToLineSegment(x, p[at(i)], p[at(j)], nullptr));
        const double bound = d - std::sqrt(length * length - distSq(p[at(i)], p[at(j)]));
        waiting.insert({bound > 0.0 ? -bound : 0.0, i, j});
    };
    consider(distSq(p.front(), x) + 1e-13, 0);
    consider(distSq(p.back(), x) + 1e-13, last - 1);
    add(0, last);
    while (!waiting.empty()) {
        const auto [bound, i, j] = *waiting.begin();
        waiting.erase(waiting.begin());
        if (j - i < 10) {
            scan(i, j);
            continue;
        }
        const int m = (i + j) / 2;
        consider(distSq(p[at(m)], x) + 1e-13, m - 1);
        add(i, m);
        add(m, j);
    }
    return segment;
}

/// The vertex i of n that follows p.
using Step = Vector3 (*)(InputSource& in, const Vector3& p, int i, int n);
const Step kWalk = [](InputSource& in, const Vector3& p, int, int) { return p + in.vector(1.0); };
const struct {
    const char* name;
    Step step;
} kLines[] = {
    {"walk", kWalk},
    {"walk over whole numbers",
     [](InputSource& in, const Vector3& p, int, int) {
         const Vector3 step = in.whole(1);
         return p + Vector3(step.x, step.y, 0.0);
     }},
    {"closed circle",
     [](InputSource&, const Vector3&, int i, int n) {
         const double angle = 6.283185307179586 * i / (n - 1);
         return Vector3(std::cos(angle), std::sin(angle), 0.0);
     }},
    {"straight",
     [](InputSource&, const Vector3&, int i, int) { return Vector3(0.1 * i, 0.3 * i, 0.7 * i); }},
    {"tangle", [](InputSource& in, const Vector3&, int, int) { return in.vector(1.0); }},
    {"repeated vertices",
     [](InputSource& in, const Vector3& p, int i, int) { return i % 3 == 0 ? in.vector(1.0) : p; }},
};

Points polyline(Step step, int n, InputSource& in) {
    Points points(static_cast<std::size_t>(n));
    Vector3 p;
    for (int i = 0; i < n; ++i)
        points[static_cast<std::size_t>(i)] = p = step(in, p, i, n);
    return points;
}

Vector3 query(const Points& points, InputSource& in) {
    const Vector3& a = points[static_cast<std::size_t>(in.index(static_cast<int>(points.size())))];
    const Vector3& b = points[static_cast<std::size_t>(in.index(static_cast<int>(points.size())))];
    const Vector3 whole = in.whole(20);
    const Vector3 kinds[] = {a,
                             (a + b) * 0.5,
                             a + in.vector(0.01),
                             in.vector(30.0),
                             in.vector(1e4),
                             {whole.x, whole.y, 0.0}};
    return kinds[in.index(6)];
}

TEST(PolylineProjector, AnswersLikeTheDocumentedSearch) {
    InputSource in(1);
    for (const auto& [name, step] : kLines) {
        SCOPED_TRACE(name);
        for (int round = 0; round < 60; ++round) {
            // From 2 to 5,000 vertices, most of them around the change of method at 20.
            const double size = std::exp(in.uniform(std::log(2.0), std::log(5000.0)));
            const int n = round % 3 == 0 ? 18 + in.index(4) : static_cast<int>(size);
            const Points points = polyline(step, n, in);
            PolylineProjector line(points);
            for (int q = 0; q < (n > 500 ? 4 : 40); ++q) {
                const Vector3 x = query(points, in);
                line.project(x);
                ASSERT_EQ(line.segment, documentedSegment(line, x)) << n << " vertices, " << x;
            }
        }
    }
}

TEST(PolylineProjector, EndsAndWhereRoundingMisleadsTheBounds) {
    Points straight;
    for (int i = 0; i <= 20; ++i)
        straight.emplace_back(i, 0.0, 0.0);
    const auto expect = [](const char* name, const Points& points, const Vector3& x, int segment,
                           double param) {
        const PolylineProjection at = PolylineProjector(points).nearest(x);
        EXPECT_EQ(at.segment, segment) << name;
        EXPECT_NEAR(at.param, param, 1e-14) << name;
    };
    expect("far beside a vertex", straight, {9.0, 1e5, 0.0}, 8, 1.0);
    expect("within a bound's rounding", straight, {19.99999981, 1.7e-7, 0.0}, 19, 0.99999981);
    const Points pair = {straight[0], straight[2]};
    expect("1e-13 includes", pair, {0.4e-13, 1.0, 0.0}, 0, 0.0);
    expect("above 1e-13", pair, {0.6e-13, 1.0, 0.0}, 0, 0.3e-13);
}

TEST(PolylineProjector, WithoutSegmentsNothingIsStored) {
    PolylineProjector single({{1.0, 2.0, 3.0}});
    single.segment = 7;
    single.project({0.0, 0.0, 0.0});
    EXPECT_EQ(single.segment, 7);
    EXPECT_EQ(dist(single.point, Vector3()), 0.0);
    EXPECT_EQ(single.nearest(Vector3()).segment, -1);
    EXPECT_EQ(PolylineProjector(Points()).nearest(Vector3()).segment, -1);
}

TEST(PolylineProjector, SurvivesWhatIsNotFinite) {
    InputSource in(3);
    for (const int n : {2, 19, 20, 300}) {
        for (const double bad : {kNaN, kInfinity, -kInfinity, 1e200, 1e-200}) {
            SCOPED_TRACE(std::to_string(n) + " vertices, " + std::to_string(bad));
            Points points = polyline(kWalk, n, in);
            const PolylineProjector good(points);
            const PolylineProjection fromBad = good.nearest({bad, 0.0, 1.0});
            points[static_cast<std::size_t>(n / 2)].y = bad;
            const PolylineProjection toBad = PolylineProjector(points).nearest({0.0, 0.5, 1.0});
            for (const PolylineProjection& p : {fromBad, toBad}) {
                EXPECT_GE(p.segment, 0);
                EXPECT_LE(p.segment, n - 2);
            }
        }
    }
}

TEST(PolylineProjector, AfterAnEditAnswersFromWhatIsLeft) {
    InputSource in(5);
    const Points walk = polyline(kWalk, 300, in);
    for (const int vertices : {0, 1, 100, 300, 400}) {
        SCOPED_TRACE(std::to_string(vertices) + " vertices");
        PolylineProjector line(walk);
        line.points.resize(static_cast<std::size_t>(vertices));
        if (vertices == 300) line.arcLength.clear();
        for (int q = 0; q < 100; ++q) {
            // Whole numbers, for ties.
            EXPECT_LT(line.nearest(in.whole(20)).segment, (std::max)(0, vertices - 1));
        }
    }
    PolylineProjector moved(walk);
    const PolylineProjector taken(std::move(moved));
    moved.points = walk;
    EXPECT_EQ(moved.nearest(walk[7]).segment, taken.nearest(walk[7]).segment);
}

}  // namespace
