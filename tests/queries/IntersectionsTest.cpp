#include <functional>

#include "tests/support.h"

using namespace geomKit;

namespace {

// Every dot, cross and triple product of such small whole numbers is exact, so that the sign of one
// classifies without rounding. What is not zero is far above kSlack after normalisation.
constexpr double kSlack = 1e-9;

Vector3 wholeDirection(InputSource& in) {
    const Vector3 v = in.whole(2);
    return v.isNull() ? wholeDirection(in) : v;
}

bool near(const Vector3& a, const Vector3& b) {
    return dist(a, b) <= 1e-12;
}

UVector3 unscaled(double x, double y, double z) {
    UVector3 v;
    static_cast<Vector3&>(v) = Vector3(x, y, z);
    return v;
}

TEST(Intersections, TriangleStatusesAreExactForAllOrdersOfTheVertices) {
    InputSource in(1);
    int seen[5] = {};
    for (int i = 0; i < 20000; ++i) {
        const Vector3 p = in.whole(3);
        const Vector3 d = wholeDirection(in);
        const Vector3 v[3] = {in.whole(2), in.whole(2), in.whole(2)};
        const Vector3 n = (v[1] - v[0]) % (v[2] - v[0]);
        const double det = d * n;
        // Three times the offsets from the centroid are whole.
        const Vector3 sum = v[0] + v[1] + v[2];
        double radiusSq = 0.0;
        bool outside = false;
        for (int k = 0; k < 3; ++k) {
            radiusSq = std::max(radiusSq, (sum - v[k] * 3.0).lengthSq());
            const double weight = ((v[(k + 1) % 3] - p) % (v[(k + 2) % 3] - p)) * d;
            outside = outside || weight * det < 0.0;
        }
        int expected = outside ? 1 : 0;
        if (det == 0.0) expected = n.isNull() ? 4 : (p - v[0]) * n == 0.0 ? 2 : 3;
        const bool passes = ((p * 3.0 - sum) % d).lengthSq() > radiusSq * d.lengthSq();
        if (passes) expected = 1;
        ++seen[expected];
        const double t = passes || det == 0.0 ? 0.0 : ((v[0] - p) * n) / det;
        const Vector3 point = passes || det == 0.0 ? Vector3() : p + d * t;
        int order[3] = {0, 1, 2};
        do {
            const LineTriangleInt hit(p, d, v[order[0]], v[order[1]], v[order[2]], kSlack);
            ASSERT_EQ(hit.status, expected) << p << d << v[0] << v[1] << v[2];
            ASSERT_LE(dist(hit.point, point), 1e-12);
            ASSERT_LE(std::abs(hit.param - t * d.length()), 1e-12);
        } while (std::next_permutation(order, order + 3));
    }
    EXPECT_GT(*std::min_element(seen, seen + 5), 100);
}

TEST(Intersections, LinePlaneAndSphereStatusesAreExact) {
    InputSource in(2);
    for (int i = 0; i < 20000; ++i) {
        const Vector3 p = in.whole(2);
        const Vector3 q = in.whole(2);
        const Vector3 d = wholeDirection(in);
        const Vector3 e = wholeDirection(in);
        const Vector3 n = d % e;
        const LineLineInt lines(p, d, q, e, kSlack);
        const bool apart = !((q - p) % d).isNull();
        ASSERT_EQ(lines.status, n.isNull() ? (apart ? 1 : 2) : (q - p) * n == 0.0 ? 0 : 3);
        const Vector3 gap = (q + e * lines.param2) - (p + d * lines.param1);
        ASSERT_LE(std::abs(gap * e) + (n.isNull() ? 0.0 : std::abs(gap * d)), 1e-12);
        const LineLineInt unit(p, d.normalize(), q, e.normalize(), kSlack);
        ASSERT_TRUE(n.isNull() || (unit.status == lines.status && near(unit.point, lines.point)));

        const LinePlaneInt cut(p, d, q, e, kSlack);
        ASSERT_EQ(cut.status, d * e != 0.0 ? 0 : (p - q) * e != 0.0 ? 1 : 2);
        ASSERT_TRUE(cut.status != 0 || std::abs((cut.point - q) * e) <= 1e-12);
        ASSERT_TRUE(near(p + d.normalize() * cut.param, cut.point));

        const PlanePlaneInt edge(p, d, q, e, kSlack);
        ASSERT_EQ(edge.status, !n.isNull() ? 0 : (p - q) * d != 0.0 ? 1 : 2);
        const double off = std::abs((edge.point - p) * d) + std::abs((edge.point - q) * e);
        ASSERT_TRUE(edge.status != 0 || off <= 1e-12);

        const double radius = 1 + in.index(3);
        const LineSphereInt sphere(p, d, q, radius, kSlack);
        const double excess = ((q - p) % d).lengthSq() - radius * radius * d.lengthSq();
        ASSERT_EQ(sphere.numHits, excess > 0.0 ? 0 : excess == 0.0 ? 1 : 2);
        ASSERT_LE(sphere.param1, sphere.param2);
        for (const Vector3& hit : {sphere.point1, sphere.point2})
            ASSERT_TRUE(sphere.numHits == 0 || std::abs(dist(hit, q) - radius) <= 1e-7);
    }
}

// Expected are the answers just below a value, at it and just above it, as three digits.
TEST(Intersections, TolerancesHaveTheirUnitsAndStrictness) {
    const Vector3 o;
    const UVector3 x(1, 0, 0);
    const UVector3 y(0, 1, 0);
    const UVector3 z(0, 0, 1);
    const Vector3 up(0, 0, 0.25);
    const auto triangle = [](const Vector3& p, const UVector3& d, double t) {
        return LineTriangleInt(p, d, {2, 0, 0}, {-1, 1, 0}, {-1, -1, 0}, t).status;
    };
    const auto secondWeight = [&](const Vector3& c) {
        return static_cast<int>(10 * TriangleWeightsFinder(o + x, o, x * 10, c).weights.y);
    };
    const struct {
        double value;
        int expected;
        std::function<int(double)> query;
    } cases[] = {
        {0.25, 330, [&](double t) { return LineLineInt(o, x, up, y, t).status; }},
        {0.25, 330, [&](double t) { return LineLineInt(o, o + x, up, o + y, t).status; }},
        {0.25, 112, [&](double t) { return LineLineInt(o, x, up, x, t).status; }},
        {0.25, 112, [&](double t) { return LineLineInt(o, o + x, up, o + x, t).status; }},
        {0.25, 112, [&](double t) { return LinePlaneInt(o, x, up, z, t).status; }},
        {0.25, 112, [&](double t) { return PlanePlaneInt(o, z, up, z, t).status; }},
        // A sine, and 1e-8 itself is not parallel.
        {1e-8, 200, [&](double s) { return LinePlaneInt(o, unscaled(1, 0, s), up, z, 1).status; }},
        // Squared distance 9, squared radius 4.
        {5.0, 100, [&](double t) { return triangle(Vector3(3, 0, 1), z, t); }},
        // 0.125 beside an edge of length 2: an area.
        {0.25, 100, [&](double t) { return triangle(Vector3(-1.125, 0, 1), z, t); }},
        {0.25, 332, [&](double t) { return triangle(up, x, t); }},
        // Squared distance 1, squared radius 0.25, then 2.25.
        {0.75, 11, [&](double t) { return LineSphereInt(o + x, y, o, 0.5, t).numHits; }},
        {1.25, 221, [&](double t) { return LineSphereInt(o + x, y, o, 1.5, t).numHits; }},
        // The determinant is ten times the value: 1e-8.
        {1e-9, 11, [&](double s) { return secondWeight(y * s); }},
    };
    for (const auto& c : cases) {
        const int below = c.query(c.value * (1.0 - 0x1p-50));
        const int above = c.query(c.value * (1.0 + 0x1p-50));
        EXPECT_EQ(100 * below + 10 * c.query(c.value) + above, c.expected) << &c - cases;
    }
    EXPECT_EQ(LineLineInt(o, x, o, x, 0).status, 1) << "without tolerance nothing coincides";
    EXPECT_EQ(LinePlaneInt(o, x, o, z, 0).status + PlanePlaneInt(o, z, o, z, 0).status, 2);
    EXPECT_EQ(LineLineInt(o, o, up, o + y, 1).status, 3) << "a zero direction is not caught";
    EXPECT_EQ(PlanePlaneInt(o, z, o, unscaled(0, 0.99e-8, 1), 1).status, 2);
    EXPECT_EQ(PlanePlaneInt(o, z, o, unscaled(0, 1.01e-8, 1), 1).status, 0);
    EXPECT_EQ(LineLineInt(o, x, up, UVector3(1, 1e-9, 0), 0.1).status, 1);
    EXPECT_EQ(LineLineInt(o, x, up, UVector3(1, 1e-7, 0), 0.1).status, 3);
}

TEST(Intersections, WeightsBlendToThePointWhicheverAxisIsDropped) {
    InputSource in(3);
    for (int i = 0; i < 3000; ++i) {
        const Matrix3 corners = in.matrix(2.0);
        const Vector3 a = corners.column(0);
        const Vector3 b = corners.column(1);
        const Vector3 c = corners.column(2);
        const Vector3 n = (b - a) % (c - a);
        if (n.length() < 0.1) continue;
        Vector3 wanted = in.vector(3.0);
        wanted.z = 1.0 - wanted.x - wanted.y;
        Vector3 p = corners * wanted;
        int axis = 0;
        for (int k = 1; k < 3; ++k)
            axis = std::abs(n[k]) > std::abs(n[axis]) ? k : axis;
        p[axis] += 5.0;
        ASSERT_LE(dist(TriangleWeightsFinder(p, a, b, c).weights, wanted), 1e-11);
    }
    const TriangleWeightsFinder tie({9, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1});
    EXPECT_EQ(tie.weights, Vector3(1, 0, 0)) << "of equal components x is dropped";
}

TEST(Intersections, NonFiniteInputHasADocumentedStatus) {
    const Vector3 o;
    const UVector3 z(0, 0, 1);
    const Vector3 a(1, 0, 0);
    const Vector3 b(-1, 1, 0);
    for (const double bad : {kNaN, kInfinity, -kInfinity}) {
        for (int k = 0; k < 3; ++k) {
            Vector3 v(0.1, 0.2, 0.3);
            v[k] = bad;
            const UVector3 u(v);
            EXPECT_EQ(LineLineInt(v, z, o, UVector3(a), 1.0).status, LineLineInt::kSkew);
            EXPECT_EQ(LineLineInt(v, z, o, z, 1.0).status, LineLineInt::kParallel);
            EXPECT_EQ(LineLineInt(o, v, o, b, 1.0).status, LineLineInt::kSkew);
            EXPECT_NE(LineLineInt(o, b, v, b, 1.0).status, LineLineInt::kMeet);
            EXPECT_EQ(LinePlaneInt(o, u, o, z, 1.0).status, LinePlaneInt::kInPlane);
            EXPECT_EQ(LinePlaneInt(z, u, o, z, 1.0).status, LinePlaneInt::kParallel);
            EXPECT_EQ(LinePlaneInt(z, b, o, u, 1.0).status, LinePlaneInt::kInPlane);
            EXPECT_EQ(LinePlaneInt(v, z, o, z, 1.0).status, LinePlaneInt::kHit);
            EXPECT_EQ(PlanePlaneInt(o, u, v, z, 1.0).status, PlanePlaneInt::kMeet);
            EXPECT_EQ(LineTriangleInt(o, u, a, b, -a, 1.0).status, LineTriangleInt::kInPlane);
            EXPECT_EQ(LineTriangleInt(z, u, a, b, -a, 1.0).status, LineTriangleInt::kParallel);
            EXPECT_EQ(LineTriangleInt(o, z, a, v, -a, 1.0).status, LineTriangleInt::kInPlane);
            EXPECT_EQ(LineTriangleInt(v, z, a, b, -a, 1.0).status, LineTriangleInt::kMiss);
            EXPECT_EQ(LineSphereInt(v, z, o, 1.0, 0.0).numHits, 1);
            const bool isRead = k < 2;  // z is the axis that is dropped
            EXPECT_NE(std::isfinite(TriangleWeightsFinder(v, a, b, -a).weights.x), isRead);
            const Vector3 ofBadVertex = TriangleWeightsFinder(o, a, v, -a).weights;
            EXPECT_TRUE((ofBadVertex == Vector3()) == isRead || std::isinf(bad)) << ofBadVertex;
        }
    }
}

}  // namespace
