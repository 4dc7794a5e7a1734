#include "tests/valueTypes.h"

using namespace geomKit;

namespace {

bool sameBits(const Bbox& a, const Bbox& b) {
    return sameBits(a.minPt, b.minPt) && sameBits(a.maxPt, b.maxPt);
}

TEST(Bbox, IsItsTwoCorners) {
    constexpr Bbox box({1, 2, 3}, {5, 4, 4});
    static_assert(box.filter(box.center()), "boxes are asked at compile time");
    EXPECT_EQ(box.center(), Vector3(3, 3, 3.5));
    EXPECT_EQ(box.size(), Vector3(4, 2, 1));
    EXPECT_EQ(box.volume(), 8.0);
    EXPECT_EQ(Bbox({box.maxPt, box.minPt}), box) << "points in any order";
    EXPECT_FALSE(Bbox(box.maxPt, box.minPt).isValid()) << "corners as they are";
    EXPECT_EQ(Bbox(nullptr, 0), Bbox(Vector3(), Vector3()));
    EXPECT_EQ(testing::PrintToString(box), "(1, 2, 3) to (5, 4, 4)");
    EXPECT_EQ(testing::PrintToString(Bbox()), "empty");
    expectExactEquality(box);
}

TEST(Bbox, BuildsTheSameBitsAsAPassInOrder) {
    InputSource in(1);
    const double values[] = {0.0, -0.0, 1.0, -1.0, kNaN, kInfinity, -kInfinity, 5e-324};
    for (int round = 0; round < 4000; ++round) {
        const int kinds = round % 2 == 0 ? 2 : 8;
        std::vector<Vector3> pts(static_cast<std::size_t>(in.index(23)));
        for (Vector3& p : pts)
            p = Vector3{values[in.index(kinds)], values[in.index(kinds)], values[in.index(kinds)]};
        Bbox expected = Bbox(Vector3(), Vector3());
        if (!pts.empty()) expected.init(pts[0]);
        for (const Vector3& p : pts) {
            for (int k = 0; k < 3; ++k) {
                if (p[k] < expected.minPt[k]) expected.minPt[k] = p[k];
                if (p[k] > expected.maxPt[k]) expected.maxPt[k] = p[k];
            }
        }
        ASSERT_TRUE(sameBits(Bbox(pts), expected)) << "round " << round;
    }
}

Bbox shared(Bbox a, const Bbox& b) {
    a.isec(b);
    return a;
}

Bbox grown(Bbox a, const Vector3& p) {
    a.update(p);
    return a;
}

TEST(Bbox, InvalidBoxesFollowTheirOwnRules) {
    const Bbox empty, unit(Vector3(), {1, 1, 1});
    EXPECT_EQ(empty, Bbox(Vector3(), {0, 0, -2}));
    for (const Bbox& bad : {empty, Bbox({2, 0, 0}, {1, 1, 1}), Bbox({kNaN, 0, 0}, {1, 1, 1})}) {
        SCOPED_TRACE(bad.minPt);
        EXPECT_FALSE(bad.isValid());
        EXPECT_EQ(bad.volume(), -2.0);
        for (const Vector3& p : {Vector3(), bad.minPt, bad.maxPt})
            EXPECT_FALSE(bad.filter(p)) << p;
        EXPECT_EQ(bad + unit, empty);
        EXPECT_EQ(unit + bad, empty);
        EXPECT_EQ(Bbox(unit) += bad, empty);
        EXPECT_TRUE(sameBits(Bbox() += bad, bad));
        EXPECT_EQ(Bbox(bad) += unit, unit);
        EXPECT_EQ(shared(unit, bad), empty);
        EXPECT_TRUE(sameBits(shared(bad, unit), bad)) << "an invalid box stays as it is";
        EXPECT_EQ(grown(bad, {3, 4, 5}), Bbox({{3, 4, 5}}));
    }
    EXPECT_TRUE(Bbox({0, kNullComponentTol, 0}, Vector3()).isValid());
    EXPECT_FALSE(Bbox({0, std::nextafter(kNullComponentTol, 1.0), 0}, Vector3()).isValid());
    EXPECT_EQ(shared(unit, Bbox({2, 2, 2}, {3, 3, 3})), Bbox({2, 2, 2}, {1, 1, 1}));
}

TEST(Bbox, SetOperationsAgreeWithMembership) {
    InputSource in(2);
    Vector3 low, high;
    for (int i = 0; i < 3000; ++i) {
        const Bbox a({in.whole(3), in.whole(3)}), b({in.whole(3), in.whole(3)});
        const Vector3 p = in.whole(3);
        ASSERT_EQ(shared(a, b).filter(p), a.filter(p) && b.filter(p));
        ASSERT_EQ(a + b, Bbox({a.minPt, a.maxPt, b.minPt, b.maxPt}));
        ASSERT_EQ(grown(a, p), Bbox({a.minPt, a.maxPt, p}));
        const UVector3 dir(in.whole(5));
        a.boundsInDir(dir, &low, &high);
        a.boundsInDir(dir, nullptr, nullptr);
        for (int corner = 0; corner < 8; ++corner) {
            Vector3 c = a.minPt;
            for (int k = 0; k < 3; ++k)
                c[k] = (corner >> k & 1) != 0 ? a.maxPt[k] : c[k];
            ASSERT_GE(c * dir, low * dir - 1e-12);
            ASSERT_LE(c * dir, high * dir + 1e-12);
        }
    }
    Bbox(Vector3(), {1, 1, 1}).boundsInDir(UVector3(-1, 0, 0), &low, &high);
    EXPECT_EQ(low, Vector3(1, 1, 1)) << "ties keep the starting pair";
    EXPECT_EQ(high, Vector3());
}

}  // namespace
