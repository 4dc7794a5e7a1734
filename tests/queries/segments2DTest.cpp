#include "tests/support.h"

using namespace geomKit;

namespace {

Vector3 wholePoint(InputSource& in, int size) {
    const Vector3 v = in.whole(size);
    return {v.x, v.y, 0.0};
}

// Exact for small whole numbers.
double side(const Vector3& a, const Vector3& b, const Vector3& p) {
    return ((b - a) % (p - a)).z;
}

TEST(Segments2D, CrossingsAreExactInEveryOrder) {
    InputSource in(1);
    int touching = 0;
    for (int i = 0; i < 30000; ++i) {
        const Vector3 a[] = {wholePoint(in, 3), wholePoint(in, 3)};
        const Vector3 b[] = {wholePoint(in, 3), wholePoint(in, 3)};
        if (distSq(a[0], a[1]) == 0.0) continue;
        const auto sides = [](const Vector3* s, const Vector3* ends) {
            return side(s[0], s[1], ends[0]) * side(s[0], s[1], ends[1]);
        };
        const auto holds = [](const Vector3* s, const Vector3& p) {
            return side(s[0], s[1], p) == 0.0 && (s[0] - p) * (s[1] - p) <= 0.0;
        };
        const bool isCrossing = sides(a, b) < 0.0 && sides(b, a) < 0.0;
        const bool isTouching =
            holds(a, b[0]) || holds(a, b[1]) || holds(b, a[0]) || holds(b, a[1]);
        touching += isTouching ? 1 : 0;
        for (int order = 0; order < 4; ++order) {
            SCOPED_TRACE(i);
            const Vector3 &p = a[order % 2], &q = a[1 - order % 2];
            const Vector3 &r = b[order / 2], &s = b[1 - order / 2];
            ASSERT_EQ(segsIntersect(p, q, r, s, 1e-9, true), isCrossing || isTouching);
            ASSERT_EQ(segsIntersect(p, q, r, s, 1e-9, false), isCrossing);
        }
    }
    EXPECT_GT(touching, 1000);
}

TEST(Segments2D, ToleranceIsADistanceAndEndsAreStrict) {
    const Vector3 o, e(4, 0, 0);
    const double more = std::nextafter(0.25, 1.0);
    // An upright segment from (x, y) against the one from o to e.
    const auto crosses = [&](double x, double y, double tol, bool inclusive) {
        return segsIntersect(o, e, {x, y, 0}, {x, 3, 0}, tol, inclusive);
    };
    EXPECT_TRUE(crosses(4.25, -1, 0.25, true)) << "along the line, at the tolerance";
    EXPECT_FALSE(crosses(std::nextafter(4.25, 5.0), -1, 0.25, true));
    EXPECT_TRUE(crosses(3.75, -1, 0.25, false));
    EXPECT_FALSE(crosses(std::nextafter(3.75, 4.0), -1, 0.25, false));
    EXPECT_FALSE(crosses(1, 0.25, 0.25, true)) << "from the line, at the tolerance";
    EXPECT_TRUE(crosses(1, 0.25, more, true));
    EXPECT_FALSE(crosses(1, -0.25, 0.25, false));
    EXPECT_TRUE(crosses(1, -more, 0.25, false));
    EXPECT_FALSE(segsIntersect(e, o, {1, 0.25, 0}, {1, 3, 0}, 0.25, true)) << "nor behind it";
    EXPECT_FALSE(segsIntersect(o, e, o, e, 0.0, true)) << "overlaps need a tolerance";
    EXPECT_FALSE(segsIntersect(o, e, o, e, 0.1, false));
    EXPECT_TRUE(segsIntersect(o, o, Vector3(7, 7, 0), Vector3(8, 9, 0), 0.1, true))
        << "an A of no length has no side in the plane";
}

TEST(Segments2D, RectanglesAgreeWithAParametricClip) {
    InputSource in(2);
    const Vector3 rmin(-2, -1, 0), rmax(2, 1, 0);
    int counts[3] = {0, 0, 0};
    for (int i = 0; i < 30000; ++i) {
        Vector3 a = wholePoint(in, 4), b = wholePoint(in, 4);
        const Vector3 d = b - a;
        double from = 0.0, to = 1.0;
        bool onEdge = false;
        for (int k = 0; k < 2; ++k) {
            if (d[k] == 0.0) {
                if (a[k] < rmin[k] || a[k] > rmax[k]) to = -1.0;
                onEdge = onEdge || a[k] == rmin[k] || a[k] == rmax[k];
            } else {
                const double s = (rmin[k] - a[k]) / d[k];
                const double t = (rmax[k] - a[k]) / d[k];
                from = std::max(from, std::min(s, t));
                to = std::min(to, std::max(s, t));
            }
        }
        SCOPED_TRACE(testing::Message() << a << b);
        const bool meets = segIntersectRect2D(a, b, rmin, rmax);
        const Vector3 start = a;
        const bool remains = segClipRect2D(a, b, rmin, rmax, b, a);
        if (onEdge && to >= from - 1e-9) {
            ASSERT_FALSE(remains);
            ASSERT_TRUE(!meets || d.isNull());
            ++counts[2];
        } else if (std::abs(to - from) > 1e-9) {
            ASSERT_EQ(meets, to > from);
            ASSERT_EQ(remains, to > from);
            ++counts[remains ? 1 : 0];
            if (!remains) continue;
            ASSERT_LE(dist(b, start + d * from), 1e-12) << "b was passed for the first end";
            ASSERT_LE(dist(a, start + d * to), 1e-12);
        }
    }
    EXPECT_GT(*std::min_element(counts, counts + 3), 200);
}

TEST(Segments2D, NonFiniteCoordinatesReturn) {
    const Vector3 o, e(1, 1, 0);
    for (const double bad : {kNaN, kInfinity, -kInfinity}) {
        const Vector3 v(bad, 0.5, 0.0);
        Vector3 a = e, b = v;
        EXPECT_TRUE(segClipHalfPlane2D(a, b, o, UVector3(1, 0, 0)));
        EXPECT_TRUE(segsIntersect(o, v, o, e, 0.1, true));
        EXPECT_FALSE(segIntersectRect2D(v, v, o, e));
        segClipRect2D(o, v, o, e, a, b);
        segClipRect2D(v, e, o, v, a, b);
    }
}

}  // namespace
