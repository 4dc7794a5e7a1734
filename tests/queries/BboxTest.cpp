#include "tests/support.h"

using namespace geomKit;

namespace {

Bbox box(const Vector3& lo, const Vector3& hi) {
    Bbox b;
    b.minPt = lo;
    b.maxPt = hi;
    return b;
}

bool sameBits(const Bbox& a, const Bbox& b) {
    return sameBits(a.minPt, b.minPt) && sameBits(a.maxPt, b.maxPt);
}

TEST(Bbox, BuildsTheSameBitsAsAPassInOrder) {
    InputSource in(1);
    const double values[] = {0.0, -0.0, 1.0, -1.0, kNaN, kInfinity, -kInfinity, 5e-324};
    for (int round = 0; round < 4000; ++round) {
        const int kinds = round % 2 == 0 ? 2 : 8;
        std::vector<Vector3> pts(static_cast<std::size_t>(in.index(23)));
        for (Vector3& p : pts) {
            for (int k = 0; k < 3; ++k)
                p[k] = values[in.index(kinds)];
        }
        Bbox expected = box(Vector3(), Vector3());
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

Bbox added(Bbox a, const Bbox& b) {
    return a += b;
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
    const Bbox empty;
    const Bbox unit = box(Vector3(), {1, 1, 1});
    EXPECT_TRUE(sameBits(empty, box(Vector3(), {0, 0, -2})));
    for (const Bbox& bad : {empty, box({2, 0, 0}, {1, 1, 1}), box({kNaN, 0, 0}, {1, 1, 1})}) {
        EXPECT_TRUE(!bad.isValid() && bad.volume() == -2.0);
        EXPECT_FALSE(bad.filter(Vector3()) || bad.filter(bad.minPt) || bad.filter(bad.maxPt));
        EXPECT_TRUE(sameBits(bad + unit, empty) && sameBits(unit + bad, empty));
        EXPECT_TRUE(sameBits(added(unit, bad), empty) && sameBits(shared(unit, bad), empty));
        EXPECT_TRUE(sameBits(added(empty, bad), bad) && sameBits(added(bad, unit), unit));
        EXPECT_TRUE(sameBits(shared(bad, unit), bad)) << "an invalid box stays as it is";
        EXPECT_TRUE(sameBits(grown(bad, {3, 4, 5}), box({3, 4, 5}, {3, 4, 5})));
    }
    EXPECT_TRUE(box({0, 1e-13, 0}, Vector3()).isValid());
    EXPECT_FALSE(box({0, std::nextafter(1e-13, 1.0), 0}, Vector3()).isValid());
    EXPECT_TRUE(sameBits(shared(unit, box({2, 2, 2}, {3, 3, 3})), box({2, 2, 2}, {1, 1, 1})));
}

TEST(Bbox, SetOperationsAgreeWithMembership) {
    InputSource in(2);
    for (int i = 0; i < 3000; ++i) {
        const Bbox a({in.whole(3), in.whole(3)});
        const Bbox b({in.whole(3), in.whole(3)});
        const Vector3 p = in.whole(3);
        ASSERT_EQ(shared(a, b).filter(p), a.filter(p) && b.filter(p));
        ASSERT_TRUE(sameBits(a + b, Bbox({a.minPt, a.maxPt, b.minPt, b.maxPt})));
        ASSERT_TRUE(sameBits(grown(a, p), Bbox({a.minPt, a.maxPt, p})));
        const UVector3 dir(in.whole(5));
        Vector3 low;
        Vector3 high;
        a.boundsInDir(dir, &low, &high);
        a.boundsInDir(dir, nullptr, nullptr);
        for (int corner = 0; corner < 8; ++corner) {
            Vector3 c = a.minPt;
            for (int k = 0; k < 3; ++k)
                c[k] = (corner >> k & 1) != 0 ? a.maxPt[k] : c[k];
            ASSERT_TRUE(c * dir >= low * dir - 1e-12 && c * dir <= high * dir + 1e-12);
        }
    }
    Vector3 low;
    Vector3 high;
    box(Vector3(), Vector3(1, 1, 1)).boundsInDir(UVector3(-1, 0, 0), &low, &high);
    EXPECT_TRUE(low == Vector3(1, 1, 1) && high == Vector3()) << "ties keep the starting pair";
}

}  // namespace
