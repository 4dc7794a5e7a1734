#include "tests/support.h"

using namespace geomKit;

namespace {

TEST(ProximityTester, NeverLosesANearQueryNorAcceptsOneBeyondTwoCells) {
    InputSource in(61);
    int accepted = 0;
    int refused = 0;
    for (int set = 0; set < 600; ++set) {
        // Cubes, flat and collinear sets and single points, of any size, far from the origin.
        const double size = std::pow(10.0, in.uniform(-150.0, 150.0));
        const double radius = size * std::pow(10.0, in.uniform(-4.0, 1.0));
        const Vector3 place = in.vector(size * 100.0);
        std::vector<Vector3> pts;
        for (int n = 1 + in.index(50); n > 0; --n) {
            const Vector3 v = in.vector(size);
            pts.push_back(place + Vector3(set % 4 < 3 ? v.x : 0.0, set % 4 < 2 ? v.y : 0.0,
                                          set % 2 == 0 ? v.z : 0.0));
        }
        const ProximityTester tester(pts, radius);
        ASSERT_LT(tester.occupied.size(), std::size_t{1} << 24);
        for (int i = 0; i < 200; ++i) {
            const Vector3 from = i % 2 == 0 ? pts[static_cast<std::size_t>(i) % pts.size()] : place;
            const Vector3 q = from + in.vector(i % 2 == 0 ? 2.0 * radius : size);
            bool isNear = false;
            bool mayBeNear = false;
            for (const Vector3& p : pts) {
                const Vector3 d = q - p;
                isNear = isNear || (d * (1.0 / radius)).length() < 1.0 - 1e-9;
                mayBeNear = mayBeNear || (std::abs(d.x) < 2.000001 * tester.cellX &&
                                          std::abs(d.y) < 2.000001 * tester.cellY &&
                                          std::abs(d.z) < 2.000001 * tester.cellZ);
            }
            const bool answer = tester.test(q);
            EXPECT_TRUE(answer ? mayBeNear : !isNear) << set;
            ++(answer ? accepted : refused);
        }
    }
    EXPECT_TRUE(accepted > 20000 && refused > 20000);
}

TEST(ProximityTester, SizesItsCellsByTheRule) {
    const auto expectGrid = [](const Vector3& extent, const Vector3& cells, int nx, int ny,
                               int nz) {
        const Vector3 corner(-3.0, 5.0, 7.0);
        const ProximityTester t({corner, corner + extent}, 1.0);
        EXPECT_EQ(Vector3(t.cellX, t.cellY, t.cellZ), cells);
        EXPECT_EQ(t.origin, corner - cells);
        EXPECT_TRUE(t.nx == nx && t.ny == ny && t.nz == nz);
        EXPECT_EQ(t.occupied.size(), static_cast<std::size_t>(nx * ny * nz));
    };
    expectGrid({0, 0, 0}, {1, 1, 1}, 2, 2, 2);
    expectGrid({100, 100, 100}, {4, 4, 8}, 27, 27, 15);
    expectGrid({100, 99, 1}, {1, 1, 1}, 102, 101, 3);
    expectGrid({100, 100, 1}, {1, 2, 2}, 102, 52, 3);
    expectGrid({2000, 2000, 0}, {1, 1, 1}, 2002, 2002, 2);
    expectGrid({3000, 3000, 0}, {1, 2, 2}, 3002, 1502, 2);
    EXPECT_LT(ProximityTester({Vector3(), {1e300, 0, 0}}, 1e-300).occupied.size(), 1u << 24);
}

TEST(ProximityTester, DefinesWhatCannotBeGridded) {
    const Vector3 o;
    const Vector3 far(1.7e308, 0.0, 0.0);
    const auto expectAlways = [&](bool answer, const std::vector<Vector3>& pts, double radius) {
        const ProximityTester t(pts, radius);
        for (const Vector3& q : {o, Vector3(-1, 2, -3), far, -far})
            EXPECT_EQ(t.test(q), answer);
        EXPECT_FALSE(t.test({0.0, kNaN, 0.0}) || t.test({0.0, 0.0, -kInfinity}));
    };
    expectAlways(false, {}, 1.0);
    for (const double radius : {0.0, -1.0, kNaN})
        expectAlways(false, {o, {1, 2, 3}}, radius);
    expectAlways(true, {o, {1, 2, 3}}, kInfinity);
    expectAlways(true, {{kNaN, 0, 0}, o}, 1.0);
    expectAlways(true, {o, {0, kInfinity, 0}}, 1.0);
    expectAlways(true, {far, -far}, 1.0);
    expectAlways(true, {far, o}, 1.7e308);
    expectAlways(true, {o}, 1.5e308);

    // The marking ends at a bad point, and the cells before it have no neighbours.
    const ProximityTester cut({o, {kNaN, 0, 0}, {10, 10, 10}}, 1.0);
    EXPECT_TRUE(cut.test({0.5, 0.5, 0.5}));
    EXPECT_FALSE(cut.test({-0.5, 0.5, 0.5}) || cut.test({10, 10, 10}) || cut.test(far));
}

}  // namespace
