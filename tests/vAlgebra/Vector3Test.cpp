#include <numeric>

#include "geomKit/vAlgebra/centroid.h"
#include "tests/vAlgebra/distance.h"
#include "tests/valueTypes.h"

using namespace geomKit;

namespace {

// The zero test is strict and per component: one component at the tolerance makes a direction.
TEST(Vector3, NullComponentsAtTheTolerance) {
    const double below = std::nextafter(kNullComponentTol, 0.0);
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE(i);
        Vector3 v(below, -below, below);
        EXPECT_LE(distance(UVector3(v), Vector3(below, -below, 1.0)), 0.0);
        EXPECT_FALSE(v.isParallel(v, -1.0));
        EXPECT_FALSE(v.isNormal(v, 2.0));
        v[i] = -kNullComponentTol;
        EXPECT_NEAR(UVector3(v).length(), 1.0, 1e-15);
        EXPECT_TRUE(v.isParallel(v, -1.0));
        EXPECT_TRUE(v.isNormal(v, 2.0));
        v[i] = kNaN;
        EXPECT_FALSE(v.isNull());
        EXPECT_FALSE(v == v);
        EXPECT_FALSE(v.isParallel(v, -1.0));
        EXPECT_FALSE(v.isNormal(v, -1.0));
        EXPECT_TRUE(Vector3() == Matrix3().column(i) * std::nextafter(1e-8, 0.0));
        EXPECT_TRUE(Vector3() != Matrix3().column(i) * 1e-8);
    }
}

TEST(Vector3, IsThreeNumbers) {
    InputSource in(101);
    const auto byReciprocal = [](double x, double s) { return x * (1.0 / s); };
    for (int i = 0; i < 50; ++i) {
        const auto [a, b] = in.vectors<2>(5.0);
        const double t = in.uniform(-3.0, 3.0);
        expectArithmetic(a, b, t, +byReciprocal);
        EXPECT_TRUE(lerp(a, b, t).equalsExactly(a * (1.0 - t) + b * t)) << t;
        EXPECT_TRUE(lerp(a, b, 1.0).equalsExactly(b));
    }
    expectExactEquality<Vector3, ExactHash, ExactEqual>({1.0, 2.0, 3.0});
    Vector3 v;
    std::iota(v.begin(), v.end(), 1.0);
    v.data()[1] += 10.0;
    EXPECT_TRUE(v.equalsExactly({1.0, 12.0, 3.0})) << v;
    // By the reciprocal of the number, which is not the quotient: 5 / 3 ends on another bit.
    const double third = 1.0 / 3.0;
    const Vector3 mean = centroid({{1, 0, 3}, {4, 0, 0}, {0, 7, 0}});
    EXPECT_TRUE(mean.equalsExactly({5 * third, 7 * third, 3 * third})) << mean;
    EXPECT_TRUE(std::isnan(centroid({}).x)) << "no points have no mean";
}

TEST(Vector3, AngleTestsBelowAndAboveTheirBounds) {
    const double degree = std::atan(1.0) / 45.0;
    const auto at = [](double a) { return Vector3(-std::cos(a), std::sin(a), 0) * 3.0; };
    const Vector3 x(2.0, 0.0, 0.0);
    for (const double e : {-1e-7, 1e-7}) {
        SCOPED_TRACE(e);
        EXPECT_EQ(x.isParallel(at(std::acos(std::sqrt(kParallelCosSqDefault)) + e), -1.0), e < 0.0);
        EXPECT_EQ(x.isParallel(at(60.0 * degree + e), 0.5), e < 0.0);
        EXPECT_EQ(x.isAlmostParallel(at(5.0 * degree + e)), e < 0.0);
        EXPECT_EQ(x.isNormal(at(std::acos(kNormalCosDefault) - e), -1.0), e < 0.0);
        EXPECT_EQ(x.isAlmostNormal(at(85.0 * degree - e)), e < 0.0);
    }
    EXPECT_NEAR(std::acos(std::sqrt(kParallelCosSqDefault)), 0.03 * degree, 1e-7);
    EXPECT_NEAR(kNormalCosDefault, 0.03 * degree, 1e-7);
    EXPECT_FALSE(x.isParallel(x, 1.0)) << "strict";
    EXPECT_FALSE(x.isNormal(Vector3(0, 1, 0), 0.0)) << "strict";
}

TEST(Vector3, PullBackOntoDependentVectors) {
    const Vector3 x(1.0, 0.0, 0.0), unwritten(7.0, 7.0, 7.0);
    const auto expect = [&](const char* name, Vector3 e0, Vector3 e1, Vector3 want) {
        Vector3 coords = unwritten;
        const Vector3 basis[] = {e0, e1};
        EXPECT_EQ(Vector3(6.0, 4.0, 5.0).pullBack(basis, &coords), want != unwritten) << name;
        EXPECT_LE(distance(coords, want), 1e-15 * want.length()) << name;
    };
    expect("equal: the first", x, x, {6.0, 0.0, 0.0});
    expect("parallel: the longer", x, x * 2.0, {0.0, 3.0, 0.0});
    expect("determinant below 1e-8", x, {0.0, 9.9e-5, 0.0}, {6.0, 0.0, 0.0});
    expect("above", x, {0.0, 1.01e-4, 0.0}, {6.0, 4.0 / 1.01e-4, 0.0});
    expect("longer than 1e-8", {}, x * 1.01e-8, {0.0, 6.0 / 1.01e-8, 0.0});
    expect("shorter", {}, x * 0.99e-8, unwritten);
}

// Weights near the border, for every order of the corners and off the plane.
TEST(Vector3, TrianglesExcludeTheirBorder) {
    const Vector3 corners[] = {{1.0, 0.0, 2.0}, {3.0, 1.0, 2.5}, {0.0, 4.0, 1.0}};
    const Vector3 inside[] = {{0.3, 0.3, 1.0}, {1e-12, 0.5, 1.0}, {0.5, 0.5 - 1e-12, 1.0}};
    const Vector3 outside[] = {{0.5, -1e-12, 1.0}, {0.0, 0.0, 1.0}, {0.5, 0.5, 1.0},
                               {1e-14, 0.5, 1.0},  {0.9, 0.3, 1.0}, {kNaN, 0.3, 1.0}};
    for (int order = 0; order < 6; ++order) {
        const Vector3& a = corners[order % 3];
        const Vector3& b = corners[(order + 1 + order / 3) % 3];
        const Vector3& c = corners[(order + 2 - order / 3) % 3];
        const Matrix3 frame(b - a, c - a, (b - a) % (c - a));
        for (const Vector3& w : inside)
            EXPECT_TRUE((a + frame * w).isInTriangle(a, b, c)) << w;
        for (const Vector3& w : outside)
            EXPECT_FALSE((a + frame * w).isInTriangle(a, b, c)) << w;
    }
}

}  // namespace
