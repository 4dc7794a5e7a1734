#include <memory>
#include <tuple>

#include "tests/support.h"

using namespace geomKit;

namespace {

constexpr double kRounding = 1e-6;
/// In cells, along each axis.
constexpr double kReach = 2.0 + kRounding;

TEST(ProximityTester, NeverLosesANearQueryNorAcceptsOneBeyondTwoCells) {
    InputSource in(61);
    int accepted = 0, refused = 0;
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
            bool isNear = false, mayBeNear = false;
            for (const Vector3& p : pts) {
                const Vector3 d = q - p;
                isNear = isNear || (d * (1.0 / radius)).length() < 1.0 - kRounding;
                mayBeNear = mayBeNear || (std::abs(d.x) < kReach * tester.cellX &&
                                          std::abs(d.y) < kReach * tester.cellY &&
                                          std::abs(d.z) < kReach * tester.cellZ);
            }
            const bool answer = tester.test(q);
            EXPECT_LE(isNear, answer) << "lost, set " << set;
            EXPECT_LE(answer, mayBeNear) << "too far, set " << set;
            ++(answer ? accepted : refused);
        }
    }
    EXPECT_GT(accepted, 20000);
    EXPECT_GT(refused, 20000);
}

TEST(ProximityTester, SizesItsCellsByTheRule) {
    const auto expectGrid = [](const Vector3& size, const Vector3& cells, int nx, int ny, int nz) {
        const Vector3 corner(-3.0, 5.0, 7.0);
        const ProximityTester t({corner, corner + size}, 1.0);
        EXPECT_EQ(Vector3(t.cellX, t.cellY, t.cellZ), cells);
        EXPECT_EQ(t.origin, corner - cells);
        EXPECT_EQ(std::tie(t.nx, t.ny, t.nz), std::tie(nx, ny, nz));
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
    const Vector3 o, far(1.7e308, 0.0, 0.0);
    const auto expectAlways = [&](bool answer, const std::vector<Vector3>& pts, double radius) {
        const ProximityTester t(pts, radius);
        for (const Vector3& q : {o, Vector3(-1, 2, -3), far, -far})
            EXPECT_EQ(t.test(q), answer);
        EXPECT_FALSE(t.test({0.0, kNaN, 0.0}));
        EXPECT_FALSE(t.test({0.0, 0.0, -kInfinity}));
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
    for (const Vector3& q : {Vector3(-0.5, 0.5, 0.5), Vector3(10, 10, 10), far})
        EXPECT_FALSE(cut.test(q)) << q;
}

// Queries on the borders of cells, where the reciprocal of a size and the quotient round apart; and
// fields that a host has edited.
TEST(ProximityTester, ManyHaveTheAnswersOfOneByOne) {
    InputSource in(62);
    const double wild[] = {0.0, -1.0, 1e-310, kNaN, kInfinity, 1e305};
    std::size_t accepted = 0;
    for (int set = 0; set < 400; ++set) {
        const double size = set % 5 == 0 ? 1e-309 : 1.0;
        std::vector<Vector3> pts(static_cast<std::size_t>(in.index(30)));
        for (Vector3& p : pts)
            p = in.vector(2.0 * size);
        ProximityTester t(pts, in.uniform(0.1, 1.0) * size);
        std::int32_t* const counts[] = {&t.nx, &t.ny, &t.nz};
        double* const sizes[] = {&t.cellX, &t.cellY, &t.cellZ};
        if (set % 4 == 1) *counts[in.index(3)] = in.index(3) * 1000 - 1000;
        if (set % 4 == 2) *sizes[in.index(3)] = wild[in.index(6)];
        if (set % 8 > 4) t.occupied = std::vector<bool>(in.index(2) == 0 ? 0 : 50, true);
        std::vector<Vector3> queries(static_cast<std::size_t>(in.index(150)));
        for (Vector3& q : queries) {
            const Vector3 cell = in.whole(8) + Vector3(6, 6, 6);
            q = t.origin + Vector3(cell.x * t.cellX, cell.y * t.cellY, cell.z * t.cellZ);
            if (in.index(2) == 0) q = in.vector(2.5 * size);
            if (in.index(20) == 0) q[in.index(3)] = wild[in.index(6)];
        }
        const auto answers = std::make_unique<bool[]>(queries.size());
        const std::size_t near = t.test(queries.data(), queries.size(), answers.get());
        EXPECT_EQ(t.test(queries.data(), queries.size(), nullptr), near);
        std::size_t want = 0;
        for (std::size_t i = 0; i < queries.size(); ++i) {
            EXPECT_EQ(answers[i], t.test(queries[i])) << "set " << set << ", " << queries[i];
            want += answers[i] ? 1 : 0;
        }
        EXPECT_EQ(near, want) << "set " << set;
        accepted += want;
    }
    EXPECT_GT(accepted, 1000U);
}

}  // namespace
