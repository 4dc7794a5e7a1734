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

/// For coordinates of a few units.
constexpr double kRounding = 1e-12;

UVector3 unscaled(double x, double y, double z) {
    UVector3 v;
    static_cast<Vector3&>(v) = Vector3(x, y, z);
    return v;
}

TEST(Intersections, TriangleStatusesAreExactForAllOrdersOfTheVertices) {
    InputSource in(1);
    int seen[5] = {};
    for (int i = 0; i < 20000; ++i) {
        const Vector3 p = in.whole(3), d = wholeDirection(in);
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
            ASSERT_LE(dist(hit.point, point), kRounding);
            ASSERT_NEAR(hit.param, t * d.length(), kRounding);
        } while (std::next_permutation(order, order + 3));
    }
    EXPECT_GT(*std::min_element(seen, seen + 5), 100);
}

// Few vertices, so that triangles are given twice and the nearest hits have the same parameter.
TEST(Intersections, ManyTrianglesHaveTheBitsOfOneByOne) {
    const int hostile[] = {-1, 7, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};
    InputSource in(4);
    int found = 0;
    for (int round = 0; round < 10000; ++round) {
        SCOPED_TRACE(round);
        const Vector3 p = in.whole(3);
        const UVector3 d = wholeDirection(in);
        const double tol = round % 3 == 0 ? 0.0 : kSlack;
        const double least = round % 7 == 0 ? kNaN : in.index(3) - 1.0;
        std::array<Vector3, 7> vertices;
        for (Vector3& v : vertices)
            v = in.index(40) == 0 ? Vector3(kNaN, 1.0, 1.0) : in.whole(2);
        const auto count = static_cast<std::size_t>(in.index(14));
        std::vector<int> facets;
        std::vector<Vector3> corners;
        Digest want;
        std::size_t hits = 0;
        LineTriangleHit nearest;
        for (std::size_t i = 0; i < count; ++i) {
            int facet[] = {in.index(7), in.index(7), in.index(7)};
            for (const int v : facet)
                corners.push_back(vertices[static_cast<std::size_t>(v)]);
            const bool isWhole = round % 2 == 0 || in.index(4) != 0;
            if (!isWhole) facet[in.index(3)] = hostile[in.index(4)];
            facets.insert(facets.end(), facet, facet + 3);
            if (!isWhole) {
                want.add(int{LineTriangleInt::kDegenerate}, 0.0, Vector3());
                continue;
            }
            const Vector3* c = &corners[3 * i];
            const LineTriangleInt one(p, d, c[0], c[1], c[2], tol);
            want.add(one.status, one.param, one.point);
            if (one.status != LineTriangleInt::kHit) continue;
            ++hits;
            if (one.param >= least && (!nearest || one.param < nearest.param)) {
                nearest = {static_cast<std::ptrdiff_t>(i), one.param, one.point};
            }
        }
        found += nearest ? 1 : 0;

        const auto expect = [&](const auto&... triangles) {
            const auto hit = LineTriangleInt::nearest(p, d, tol, least, triangles..., count);
            EXPECT_EQ(hit.triangle, nearest.triangle);
            EXPECT_EQ(hit.param, nearest.param);
            EXPECT_EQ(hit.point, nearest.point);
            const auto run = [&](std::int32_t* statuses, double* params, Vector3* points) {
                EXPECT_EQ(LineTriangleInt::intersect(p, d, tol, triangles..., count, statuses,
                                                     params, points),
                          hits);
            };
            std::vector<std::int32_t> statuses(count);
            std::vector<double> params(count);
            std::vector<Vector3> points(count);
            run(nullptr, nullptr, nullptr);
            run(statuses.data(), params.data(), points.data());
            Digest got;
            for (std::size_t i = 0; i < count; ++i)
                got.add(statuses[i], params[i], points[i]);
            EXPECT_TRUE(got == want) << testing::PrintToString(statuses);
        };
        expect(vertices.data(), vertices.size(), facets.data());
        if (round % 2 == 0) expect(corners.data());
    }
    EXPECT_GT(found, 500);
}

TEST(Intersections, LinePlaneAndSphereStatusesAreExact) {
    InputSource in(2);
    for (int i = 0; i < 20000; ++i) {
        const Vector3 p = in.whole(2), q = in.whole(2), d = wholeDirection(in);
        const Vector3 e = wholeDirection(in), n = d % e;
        const LineLineInt lines(p, d, q, e, kSlack);
        const bool apart = !((q - p) % d).isNull();
        ASSERT_EQ(lines.status, n.isNull() ? (apart ? 1 : 2) : (q - p) * n == 0.0 ? 0 : 3);
        const Vector3 gap = (q + e * lines.param2) - (p + d * lines.param1);
        ASSERT_NEAR(gap * e, 0.0, kRounding);
        if (!n.isNull()) {
            ASSERT_NEAR(gap * d, 0.0, kRounding);
        }

        const LinePlaneInt cut(p, d, q, e, kSlack);
        ASSERT_EQ(cut.status, d * e != 0.0 ? 0 : (p - q) * e != 0.0 ? 1 : 2);
        ASSERT_NEAR(cut.status == 0 ? (cut.point - q) * e : 0.0, 0.0, kRounding);
        ASSERT_LE(dist(p + d.normalize() * cut.param, cut.point), kRounding);

        const PlanePlaneInt edge(p, d, q, e, kSlack);
        ASSERT_EQ(edge.status, !n.isNull() ? 0 : (p - q) * d != 0.0 ? 1 : 2);
        ASSERT_NEAR(edge.status == 0 ? (edge.point - p) * d : 0.0, 0.0, kRounding);
        ASSERT_NEAR(edge.status == 0 ? (edge.point - q) * e : 0.0, 0.0, kRounding);

        const double radius = 1 + in.index(3);
        const LineSphereInt sphere(p, d, q, radius, kSlack);
        const double excess = ((q - p) % d).lengthSq() - radius * radius * d.lengthSq();
        ASSERT_EQ(sphere.numHits, excess > 0.0 ? 0 : excess == 0.0 ? 1 : 2);
        ASSERT_LE(sphere.param1, sphere.param2);
        for (const Vector3& hit : {sphere.point1, sphere.point2})
            ASSERT_NEAR(sphere.numHits == 0 ? radius : dist(hit, q), radius, 1e-7);
    }
}

TEST(Intersections, TolerancesHaveTheirUnitsAndStrictness) {
    const Vector3 o;
    const UVector3 x(1, 0, 0), y(0, 1, 0), z(0, 0, 1);
    const Vector3 up(0, 0, 0.25);
    const auto triangle = [](const Vector3& p, const UVector3& d, double t) {
        return LineTriangleInt(p, d, {2, 0, 0}, {-1, 1, 0}, {-1, -1, 0}, t).status;
    };
    // The answers just below a value, at it and just above it.
    using Answers = std::array<int, 3>;
    const auto expect = [](const char* name, double value, const Answers& want, const auto& query) {
        const double below = value * (1.0 - 0x1p-50);
        const double above = value * (1.0 + 0x1p-50);
        EXPECT_EQ(Answers({query(below), query(value), query(above)}), want) << name;
    };
    const auto ofLines = [&](const auto& d, const auto& e) {
        return [=](double t) { return LineLineInt(o, d, up, e, t).status; };
    };
    expect("skew unit lines", 0.25, {3, 3, 0}, ofLines(x, y));
    expect("skew lines", 0.25, {3, 3, 0}, ofLines(o + x, o + y));
    expect("parallel unit lines", 0.25, {1, 1, 2}, ofLines(x, x));
    expect("parallel lines", 0.25, {1, 1, 2}, ofLines(o + x, o + x));
    expect("a line beside a plane", 0.25, {1, 1, 2},
           [&](double t) { return LinePlaneInt(o, x, up, z, t).status; });
    expect("parallel planes", 0.25, {1, 1, 2},
           [&](double t) { return PlanePlaneInt(o, z, up, z, t).status; });
    expect("the sine of a line and a plane", 1e-8, {2, 0, 0},
           [&](double s) { return LinePlaneInt(o, unscaled(1, 0, s), up, z, 1).status; });
    expect("squared distance 9, squared radius 4", 5.0, {1, 0, 0},
           [&](double t) { return triangle(Vector3(3, 0, 1), z, t); });
    expect("0.125 beside an edge of length 2: an area", 0.25, {1, 0, 0},
           [&](double t) { return triangle(Vector3(-1.125, 0, 1), z, t); });
    expect("a line beside its plane", 0.25, {3, 3, 2},
           [&](double t) { return triangle(up, x, t); });
    expect("squared distance 1, squared radius 0.25", 0.75, {0, 1, 1},
           [&](double t) { return LineSphereInt(o + x, y, o, 0.5, t).numHits; });
    expect("squared distance 1, squared radius 2.25", 1.25, {2, 2, 1},
           [&](double t) { return LineSphereInt(o + x, y, o, 1.5, t).numHits; });
    expect("ten times the determinant, 1e-8", 1e-9, {0, 1, 1}, [&](double s) {
        return TriangleWeightsFinder(o + x, o, x * 10, y * s).weights.y > 0.0 ? 1 : 0;
    });
    const TriangleWeightsFinder tie({9, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1});
    EXPECT_EQ(tie.weights, Vector3(1, 0, 0)) << "of equal components x is dropped";
    EXPECT_EQ(LineLineInt(o, x, o, x, 0).status, 1) << "without tolerance nothing coincides";
    EXPECT_EQ(LinePlaneInt(o, x, o, z, 0).status, 1);
    EXPECT_EQ(PlanePlaneInt(o, z, o, z, 0).status, 1);
    EXPECT_EQ(LineLineInt(o, o, up, o + y, 1).status, 3) << "a zero direction is not caught";
    EXPECT_EQ(PlanePlaneInt(o, z, o, unscaled(0, 0.99e-8, 1), 1).status, 2);
    EXPECT_EQ(PlanePlaneInt(o, z, o, unscaled(0, 1.01e-8, 1), 1).status, 0);
    EXPECT_EQ(LineLineInt(o, x, up, UVector3(1, 1e-9, 0), 0.1).status, 1);
    EXPECT_EQ(LineLineInt(o, x, up, UVector3(1, 1e-7, 0), 0.1).status, 3);
}

TEST(Intersections, NonFiniteInputHasADocumentedStatus) {
    const Vector3 o;
    const UVector3 z(0, 0, 1);
    const Vector3 a(1, 0, 0), b(-1, 1, 0);
    for (const double bad : {kNaN, kInfinity, -kInfinity}) {
        for (int k = 0; k < 3; ++k) {
            Vector3 v(0.1, 0.2, 0.3);
            v[k] = bad;
            SCOPED_TRACE(v);
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
        }
    }
    EXPECT_EQ(TriangleWeightsFinder(o, a, {0.1, kNaN, 0.3}, -a).weights, Vector3());
    EXPECT_NE(TriangleWeightsFinder(o, a, {0.1, 0.2, kNaN}, -a).weights, Vector3());
}

}  // namespace
