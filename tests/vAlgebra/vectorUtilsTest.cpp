#include "tests/vAlgebra/distance.h"

using namespace geomKit;

namespace {

// The end tests include their bound of 1e-13, which is of an unnormalised dot product.
TEST(VectorUtils, SegmentDistanceAtTheEnds) {
    const auto expect = [](const char* name, double x, double end, double want) {
        double t = -1.0;
        distSqToLineSegment({x, 1e-20, 0.0}, Vector3(), {end, 0.0, 0.0}, &t);
        EXPECT_EQ(t, want) << name;
    };
    expect("at the tolerance", 1e-13, 1, 0);
    expect("beyond it", 1.01e-13, 1, 1.01e-13);
    expect("near the end", 1 - 0.99e-13, 1, 1);
    expect("a short segment", 0.5e-7, 1e-7, 0);
    expect("of no length", 0.5, 0, 0);
    expect("a long one", 1e3, 2e3, 0.5);
}

TEST(VectorUtils, BasesAreRightHandedAlsoInPlace) {
    InputSource in(202);
    // Slopes below and above that of 0.03 degrees.
    const double flat = 0.99 * kNormalCosDefault, steep = 1.01 * kNormalCosDefault;
    const Vector3 ties[] = {{1, 1, 1}, {0, 0, 1}, {0, 1, 0}, {1, 0, 0}, {1, 1, 0}, {0, -1, 1}};
    for (int i = 0; i < 500; ++i) {
        const UVector3 v = i < 6 ? ties[i] : in.vector(1.0);
        Vector3 e1, e2;
        getBasis(v, e1, e2);
        EXPECT_LE(distance(Matrix3(e1, e2, v) * Matrix3(e1, e2, v).transpose(), Matrix3()), 1e-15);
        EXPECT_LE(distance(e1 % e2, v), 1e-15);
        Vector3 aliased[2] = {v, v};
        getBasis(aliased[0], aliased[0], e2);
        getBasis(aliased[1], e1, aliased[1]);
        EXPECT_LE(distance(Matrix3(aliased[0], aliased[1], v), Matrix3(e1, e2, v)), 0.0);
        for (const double reach : {1e-9, 1e6}) {
            EXPECT_TRUE(samePlane(e2, v, e2 + (e1 + v * flat) * reach, -v)) << reach;
            EXPECT_FALSE(samePlane(e2, v, e2 + (e1 + v * steep) * reach, v)) << reach;
        }
        EXPECT_FALSE(samePlane(e2, v, e2, v + e1 * (2.0 * steep)));
    }
}

TEST(VectorUtils, CurvaturesWhereTheyAreNotDefined) {
    const Vector3 flat[3] = {{1, 0, 0}, {2, 0, 0}, {}};
    EXPECT_FALSE(principalCurvatures(flat, flat, nullptr, nullptr));
    EXPECT_EQ(calcCurvature(Vector3(3.1e-7, 0, 0), Vector3(0, 1, 0)), 0.0);
    EXPECT_GT(calcCurvature(Vector3(3.2e-7, 0, 0), Vector3(0, 1, 0)), 1e12);
}

}  // namespace
