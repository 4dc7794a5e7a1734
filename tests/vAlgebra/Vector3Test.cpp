#include "tests/vAlgebra/ExpectNear.h"

using namespace geomKit;

namespace {

// The zero test is strict and per component: one component at the tolerance makes a direction.
TEST(Vector3, NullComponentsAtTheTolerance) {
    const double below = std::nextafter(kNullComponentTol, 0.0);
    for (int i = 0; i < 3; ++i) {
        Vector3 v(below, -below, below);
        expectNear(UVector3(v), Vector3(below, -below, 1.0), 0.0);
        EXPECT_FALSE(v.isParallel(v, -1.0) || v.isNormal(v, 2.0));
        v[i] = -kNullComponentTol;
        EXPECT_NEAR(UVector3(v).length(), 1.0, 1e-15);
        EXPECT_TRUE(v.isParallel(v, -1.0) && v.isNormal(v, 2.0));
        v[i] = NAN;
        EXPECT_FALSE(v.isNull() || v == v || v.isParallel(v, -1.0) || v.isNormal(v, -1.0));
        EXPECT_TRUE(Vector3() == Matrix3().column(i) * std::nextafter(1e-8, 0.0));
        EXPECT_TRUE(Vector3() != Matrix3().column(i) * 1e-8);
    }
}

TEST(Vector3, AngleTestsBelowAndAboveTheirBounds) {
    const double degree = std::atan(1.0) / 45.0;
    const auto at = [](double a) { return Vector3(-std::cos(a), std::sin(a), 0) * 3.0; };
    const Vector3 x(2.0, 0.0, 0.0);
    for (const double e : {-1e-7, 1e-7}) {
        EXPECT_EQ(x.isParallel(at(std::acos(std::sqrt(0.9999997258)) + e), -1.0), e < 0.0);
        EXPECT_EQ(x.isParallel(at(60.0 * degree + e), 0.5), e < 0.0);
        EXPECT_EQ(x.isAlmostParallel(at(5.0 * degree + e)), e < 0.0);
        EXPECT_EQ(x.isNormal(at(std::acos(0.000523599) - e), -1.0), e < 0.0);
        EXPECT_EQ(x.isAlmostNormal(at(85.0 * degree - e)), e < 0.0);
    }
    EXPECT_FALSE(x.isParallel(x, 1.0) || x.isNormal(Vector3(0, 1, 0), 0.0)) << "strict";
}

TEST(Vector3, PullBackOntoDependentVectors) {
    const Vector3 x(1.0, 0.0, 0.0);
    const struct {
        Vector3 basis[2], coords;
    } table[] = {{{x, x}, {6.0, 0.0, 0.0}},
                 {{x, x * 2.0}, {0.0, 3.0, 0.0}},
                 {{x, {0.0, 9.9e-5, 0.0}}, {6.0, 0.0, 0.0}},
                 {{x, {0.0, 1.01e-4, 0.0}}, {6.0, 4.0 / 1.01e-4, 0.0}},
                 {{{}, x * 1.01e-8}, {0.0, 6.0 / 1.01e-8, 0.0}},
                 {{{}, x * 0.99e-8}, {7.0, 7.0, 7.0}}};
    for (const auto& row : table) {
        Vector3 coords(7.0, 7.0, 7.0);
        EXPECT_EQ(Vector3(6.0, 4.0, 5.0).pullBack(row.basis, &coords), row.coords.z == 0.0);
        expectNear(coords, row.coords, 1e-15 * row.coords.length());
    }
}

// Weights near the border, for every order of the corners and off the plane.
TEST(Vector3, TrianglesExcludeTheirBorder) {
    const Vector3 corners[] = {{1.0, 0.0, 2.0}, {3.0, 1.0, 2.5}, {0.0, 4.0, 1.0}};
    const Vector3 inside[] = {{0.3, 0.3, 1.0}, {1e-12, 0.5, 1.0}, {0.5, 0.5 - 1e-12, 1.0}};
    const Vector3 outside[] = {{0.5, -1e-12, 1.0}, {0.0, 0.0, 1.0}, {0.5, 0.5, 1.0},
                               {1e-14, 0.5, 1.0},  {0.9, 0.3, 1.0}, {NAN, 0.3, 1.0}};
    for (int order = 0; order < 6; ++order) {
        const Vector3& a = corners[order % 3];
        const Vector3& b = corners[(order + 1 + order / 3) % 3];
        const Vector3& c = corners[(order + 2 - order / 3) % 3];
        const Matrix3 frame(b - a, c - a, (b - a) % (c - a));
        for (const Vector3& w : inside)
            EXPECT_TRUE((a + frame * w).isInTriangle(a, b, c)) << w.x << " " << w.y;
        for (const Vector3& w : outside)
            EXPECT_FALSE((a + frame * w).isInTriangle(a, b, c)) << w.x << " " << w.y;
    }
}

}  // namespace
