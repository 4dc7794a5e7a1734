#include <memory>

#include "tests/meshFunc2d/TestMeshes.h"
#include "tests/reference/nearestChain.h"

using namespace geomKit;

namespace {

/// Points where location goes wrong first: vertices, edges, cell borders, the rim, not finite.
std::vector<Point> probes(const TestMesh& mesh, const MeshFunction2D& f, int count) {
    InputSource in(99);
    std::vector<Point> points;
    const auto vertex = [&](int corner) {
        const int i = 3 * in.index(static_cast<int>(mesh.facets.size() / 3)) + corner;
        return mesh.params[static_cast<std::size_t>(mesh.facets[static_cast<std::size_t>(i)])];
    };
    const Point d = f.boxMax - f.boxMin;
    for (int i = 0; i < count; ++i) {
        const double s = in.uniform(-0.1, 1.1), t = in.uniform(-0.1, 1.1);
        const Point a = vertex(0), b = vertex(1);
        const Point within(f.boxMin.u + s * d.u, f.boxMin.v + t * d.v);
        const Point border(f.boxMin.u + in.index(21) / f.cellScale.u, within.v);
        const Point crossing(border.u, f.boxMin.v + in.index(21) / f.cellScale.v);
        const Point wild(i % 12 < 6 ? kNaN : kInfinity, within.v);
        const Point kinds[] = {
            a,      (a + b) * 0.5, a + (b - a) * (s * 1e-7), i % 12 < 6 ? border : crossing,
            within, wild};
        points.push_back(kinds[i % 6]);
    }
    return points;
}

TEST(MeshFunction2D, FindsTheFirstAcceptingFacetOfTheCell) {
    std::vector<TestMesh> meshes;
    for (const int n : {3, 12, 60, 200})
        meshes.push_back(gridMesh("grid " + std::to_string(n), n, 10.0, 0.4));
    meshes.push_back(gridMesh("offset grid", 100, 1e-1, 0.2));
    for (Point& p : meshes.back().params)
        p = p + Point(1e3, -1e3);
    for (const int n : {300, 20000}) {
        for (const double thickness : {1.0, 1e-3, 1e-7}) {
            const std::string name = "soup " + std::to_string(n) + " thick ";
            meshes.push_back(soup(name + std::to_string(thickness), n, 5.0, thickness));
        }
    }
    for (const TestMesh& mesh : meshes) {
        SCOPED_TRACE(mesh.name);
        const MeshFunction2D f = mesh.function();
        EXPECT_EQ(f.cells, mesh.literal().cells);
        const std::vector<Point> points = probes(mesh, f, 6000);
        EXPECT_GT(expectPlainAnswers(mesh, f, points), points.size() / 100);
    }
}

TEST(MeshFunction2D, ExtrapolatesFromTheNearestChainOrTheFirstOfThem) {
    // Many chains: holes in every other cell, or islands that are equally far from midway.
    for (const bool islands : {false, true}) {
        SCOPED_TRACE(islands ? "islands" : "holes");
        TestMesh mesh = gridMesh("chains", 40, 39.0, islands ? 0.0 : 0.3, [=](int i, int j) {
            return islands ? i % 2 == 0 && j % 2 == 0 : i % 2 == 0 || j % 2 == 0;
        });
        for (std::size_t i = 0; i < mesh.values.size(); ++i)
            mesh.values[i].u = std::sin(7.0 * double(i));
        const MeshFunction2D f = mesh.function();
        ASSERT_GT(f.boundaries.size(), 300u);
        InputSource in(6);
        for (int i = 0; i < 1000; ++i) {
            const Vector3 at = in.vector(i % 2 == 0 ? 39.0 : 400.0);
            const Point p =
                islands ? Point(0.5 * in.index(100), 0.5 * in.index(100)) : Point(at.x, at.y);
            if (f.evaluate(p, nullptr, nullptr)) continue;
            ASSERT_EQ(extrapolated(f, p), inFacet(f, facetOfNearestChain(f, p), p, false)) << p;
        }
    }
}

TEST(MeshFunction2D, TheOldMethodExtendsTheFacetOfTheNearestEdge) {
    // One facet in a corner of the grid's domain; another far off keeps the middle empty.
    TestMesh mesh;
    mesh.addTriangle({0.0, 0.0}, {1.0, 0.0}, {0.0, 1.0});
    mesh.addTriangle({19.0, 20.0}, {20.0, 19.0}, {20.0, 20.0});
    for (std::size_t i = 3; i < 6; ++i)
        mesh.values[i] = {-5.0, -5.0};
    MeshFunction2D f = mesh.function();
    f.extrapolateFlag = false;
    f.initEvaluatorHelper();
    EXPECT_EQ(f.boundaries.size(), 2u) << "left as they were";

    const auto expect = [&f](const char* where, const Point& p, const Point& want) {
        Point value(7.0, 7.0);
        EXPECT_EQ(f.extrapolate(p, &value, nullptr), want.u != 7.0) << where;
        EXPECT_NEAR(value.u, want.u, 1e-12) << where;
        EXPECT_NEAR(value.v, want.v, 1e-12) << where;
        EXPECT_EQ(f.extrapolateOld(p, nullptr, nullptr), want.u != 7.0) << where;
    };
    expect("in the facet", {0.2, 0.2}, TestMesh::linear({0.2, 0.2}));
    expect("beside it", {-3.0, 0.5}, TestMesh::linear({-3.0, 0.5}));
    expect("beyond the other one", {25.0, 25.0}, {-5.0, -5.0});
    expect("an empty cell, from which the walk meets the other one", {3.0, 3.0}, {-5.0, -5.0});
    expect("the empty cell in the middle", {10.0, 10.0}, {7.0, 7.0});
    expect("NaN", {kNaN, 1.0}, {7.0, 7.0});
    expect("infinity", {1.0, kInfinity}, {7.0, 7.0});
}

TEST(MeshFunction2D, DistanceToAnEdge) {
    TestMesh mesh;
    mesh.addTriangle({0.0, 0.0}, {2.0, 0.0}, {0.0, 5.0});
    const MeshFunction2D f = mesh.function();
    const auto expect = [&f](const char* name, int b, const Point& p, double distSq, bool within) {
        bool isInterior = !within;
        EXPECT_DOUBLE_EQ(f.iDistToEdge(0, b, p, &isInterior, false), distSq) << name;
        EXPECT_EQ(isInterior, within) << name;
    };
    expect("beside the edge", 1, {1.0, 3.0}, 9.0, true);
    expect("beyond its end", 1, {3.0, 1.0}, 2.0, false);
    expect("before its start", 1, {-1.0, 1.0}, 2.0, false);
    expect("no length", 0, {1.0, 1.0}, 2.0, false);
    expect("within 1e-8 of the length", 1, {-1e-8, 1.0}, 1.0, true);
    expect("outside of it", 1, {-3e-8, 1.0}, 1.0 + 9e-16, false);
    expect("no such vertex", 9, {1.0, 1.0}, kInfinity, false);
}

TEST(MeshFunction2D, DegenerateDataAnswersFalse) {
    const std::vector<Point> good = {{0.0, 0.0}, {1.0, 0.0}, {1.0, 1.0}, {0.0, 1.0}};
    const auto with = [&good](std::size_t i, const Point& p) {
        std::vector<Point> points = good;
        points[i] = p;
        return points;
    };
    const auto expect = [&good](const char* name, const std::vector<Point>& params,
                                const std::vector<int>& facets, int cells) {
        SCOPED_TRACE(name);
        const MeshFunction2D f(params, good, facets, {});
        EXPECT_EQ(f.cellCounts.u, cells);
        EXPECT_EQ(f.cellScale.u == -1.0, cells == 0);
        Point value(7.0, 7.0);
        for (const Point& p : {Point(0.5, 0.25), Point(1.0, 0.0), Point(kNaN, 0.0),
                               Point(-kInfinity, 0.0), Point(1e300, -1e300)}) {
            EXPECT_FALSE(f.evaluate(p, &value, nullptr)) << p;
            f.extrapolateOld(p, nullptr, nullptr);
            f.extrapolate(p, nullptr, nullptr);
        }
        EXPECT_EQ(value, Point(7.0, 7.0));
    };
    expect("no points", {}, {}, 0);
    expect("one point four times", std::vector<Point>(4, Point(3.0, 3.0)), {0, 1, 2}, 0);
    expect("no extent along v", {{0.0, 1.0}, {1.0, 1.0}, {2.0, 1.0}}, {0, 1, 2}, 20);
    expect("first point NaN", with(0, {kNaN, 0.0}), {1, 2, 3}, 20);
    expect("infinite point", with(3, {0.0, kInfinity}), {0, 1, 2}, 20);
    expect("extent overflows", {{-1e308, 0.0}, {1e308, 0.0}, {1.0, 1.0}}, {0, 1, 2}, 20);
    expect("NaN corner", with(2, {1.0, kNaN}), {0, 1, 2}, 20);
    expect("index too large", good, {0, 1, 4}, 20);
    expect("negative index", good, {0, -1, 2}, 20);
    expect("partial triple", good, {0, 1}, 20);
    expect("determinant below 1e-8", with(2, {1.0, 0.9e-8}), {0, 1, 2}, 20);
    // What is whole keeps working beside what is not.
    const MeshFunction2D mixed(good, good, {0, 1, 9, 0, 1, 2, 2, 3}, {1.0f, 1.0f, 1.0f});
    EXPECT_EQ(evaluated(mixed, {0.5, 0.25}), (Answer{true, {0.5, 0.25}, -1.0f}));
    EXPECT_TRUE(mixed.boundaries.empty());
    EXPECT_FALSE(mixed.iEvalInFacet(0, 1, 9, {0.5, 0.25}, nullptr, nullptr, false));
    const MeshFunction2D one(good, good, {0, 1, 2}, {});
    EXPECT_TRUE(one.extrapolate({3e6, 0.0}, nullptr, nullptr));
    EXPECT_FALSE(one.extrapolate({3.2e6, 0.0}, nullptr, nullptr)) << "beyond sqrt(1e13)";
}

TEST(MeshFunction2D, ThreadsShareOneFunction) {
    const TestMesh mesh = gridMesh("grid", 40, 1.0, 0.3);
    const MeshFunction2D f = mesh.function();
    const std::vector<Point> points = probes(mesh, f, 800);
    std::vector<Point> values(points.size());
    inThreads(4, [&](int t) {
        const std::size_t first = 200 * static_cast<std::size_t>(t);
        f.extrapolate(&points[first], 200, &values[first], nullptr, nullptr);
    });
    for (std::size_t i = 0; i < points.size(); ++i)
        EXPECT_EQ(values[i], extrapolated(f, points[i]).value);
}

}  // namespace
