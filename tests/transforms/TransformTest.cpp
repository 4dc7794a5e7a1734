#include "tests/transforms/oracle.h"
#include "tests/valueTypes.h"

using namespace geomKit;

namespace {

TEST(Transform, ComposesAndInverts) {
    InputSource in(41);
    for (int n = 0; n < 200; ++n) {
        const Transform a = randomTransform(in), b = randomTransform(in);
        const Vector3 p = in.vector(4.0);
        expectComposition(a, b, p);
        EXPECT_LE(distance(a * p, a.getMatrix() * p), 1e-13);
        EXPECT_EQ(distance(a.linearComponent().transformPoint(p), a.transformDirection(p)), 0.0);
        EXPECT_LE(distance(a.getLinear() * p, a.transformDirection(p)), 1e-13);
    }
}

TEST(Transform, IsThirteenNumbers) {
    constexpr Transform t(Matrix3(1, 2, 3, 4, 5, 6, 7, 8, 9), {10, 11, 12}, -2);
    static_assert((t * t).scale == 4.0, "transforms compute at compile time");
    EXPECT_EQ(testing::PrintToString(t),
              "rotation [(1, 2, 3), (4, 5, 6), (7, 8, 9)], translation (10, 11, 12), scale -2");
    EXPECT_EQ(Transform(t.rotation, t.translation).scale, 1.0);
    expectExactEquality(t);
}

TEST(Transform, BuildsFramesMirrorsAndRotations) {
    InputSource in(42);
    for (int n = 0; n < 100; ++n) {
        const Vector3 p = in.vector(3.0);
        const UVector3 u = in.vector(1.0), v = u % in.vector(1.0);
        const Transform frame(u, v, p);
        EXPECT_LE(distance(frame.transformPoint(Vector3(0.0, 0.0, 1.0)), p + u), 1e-14);
        EXPECT_LE(distance(frame.transformDirection(Vector3(1.0, 0.0, 0.0)), v), 1e-15);
        const Transform mirror = Transform::reflection(p, u);
        EXPECT_EQ(mirror.scale, -1.0);
        EXPECT_LE(distance(mirror.transformPoint(p + v * 2.0 + u), p + v * 2.0 - u), 1e-13);
        EXPECT_LE(distance(mirror * mirror, Matrix()), 1e-13);
        for (const Transform& proper : {frame, mirror})
            EXPECT_NEAR(proper.rotation.determinant(), 1.0, 1e-14);

        const UVector3 to = in.vector(1.0);
        const auto want = Eigen::Quaterniond::FromTwoVectors(eigen(u), eigen(to));
        EXPECT_LE(distance(Transform::rotate(u, to).rotation, want.toRotationMatrix()), 1e-7);
        const Transform half = Transform::rotate(u, UVector3(-u));
        EXPECT_LE(distance(half.transformDirection(u), -u), 1e-14);
        EXPECT_LE(distance(half * half, Matrix()), 1e-14);
        EXPECT_EQ(distance(Transform::rotate(u, UVector3(u + v * 4e-4)), Matrix()), 0.0)
            << "within 0.03 degrees nothing turns";
    }
}

TEST(Transform, InterpolateIsSlerpAndGeometricScaleAlsoOfMatrices) {
    InputSource in(43);
    for (int n = 0; n < 200; ++n) {
        const Transform a = randomTransform(in), b = randomTransform(in);
        const double t = in.uniform(0.0, 1.0);
        const Transform blend = Transform::interpolate(a, b, t);
        const Eigen::Quaterniond qa(eigen(a.rotation));
        const Eigen::Quaterniond qb(eigen(b.rotation));
        EXPECT_LE(distance(blend.rotation, qa.slerp(t, qb).toRotationMatrix()), 1e-9);
        const double scale = std::pow(std::abs(a.scale), 1.0 - t) * std::pow(std::abs(b.scale), t);
        EXPECT_NEAR(std::abs(blend.scale), scale, 1e-13);
        EXPECT_LE(distance(blend.translation, lerp(a.translation, b.translation, t)), 1e-14);
        expectBlendsEnd(a, b, 0.0);
        expectBlendsEnd(a.getMatrix(), b.getMatrix(), 0.0);
        if (a.scale < 0.0 || b.scale < 0.0) continue;
        EXPECT_LE(distance(Matrix::interpolate(a.getMatrix(), b.getMatrix(), t), blend), 1e-9);
    }
    EXPECT_EQ(Transform::interpolate(1.0, -1.0, 0.5).scale, 1.0);
    EXPECT_EQ(Transform::interpolate(1.0, -1.0, 0.51).scale, -1.0);
}

// The ends may lie among the results, which are written before the last of them is needed.
TEST(Transform, InterpolateOfManyHasTheBitsOfOneByOne) {
    InputSource in(44);
    const double ts[] = {0.5, 0.0, -0.0, kNaN, 1.0, -kInfinity, 7.0, 1e-300, 0.999};
    const Transform a = randomTransform(in), b = randomTransform(in);
    for (const std::size_t count : {0u, 1u, 9u}) {
        std::vector<Transform> out = {a, b, 3, 4, 5, 6, 7, 8, 9, 10};
        std::vector<Transform> want = out;
        Transform::interpolate(out[0], out[1], ts, count, out.data());
        Transform::interpolate(a, b, ts, count, nullptr);
        for (std::size_t i = 0; i < count; ++i)
            want[i] = Transform::interpolate(a, b, ts[i]);
        EXPECT_EQ(out, want);
    }
}

}  // namespace
