#include <gtest/gtest.h>

#include "tests/transforms/oracle.h"

namespace {

TEST(Transform, ComposesAndInverts) {
    InputSource in(41);
    for (int n = 0; n < 200; ++n) {
        const Transform a = randomTransform(in);
        const Transform b = randomTransform(in);
        const Vector3 p = in.vector(4.0);
        EXPECT_LE(((a * b).transformPoint(p) - a.transformPoint(b.transformPoint(p))).length(),
                  1e-12);
        EXPECT_LE((a * b).getMatrix().distTo(a.getMatrix() * b.getMatrix()), 1e-12);
        EXPECT_LE((a * a.inverse()).getMatrix().distTo(Matrix()), 1e-13);
        EXPECT_LE((a.linearComponent().transformPoint(p) - a.transformDirection(p)).length(), 0.0);
    }
    EXPECT_EQ(Transform(3.0).getLinear()(2, 2), 3.0);
    EXPECT_EQ((Transform(2.0) * Transform(UVector3(), Vector3(1.0, 0.0, 0.0), Vector3(1, 2, 3)))
                  .translation,
              Vector3(2.0, 4.0, 6.0));
}

TEST(Transform, BuildsFramesMirrorsAndRotations) {
    InputSource in(42);
    for (int n = 0; n < 100; ++n) {
        const Vector3 p = in.vector(3.0);
        const UVector3 u = in.vector(1.0);
        const UVector3 v = u % in.vector(1.0);
        const Transform frame(u, v, p);
        EXPECT_LE((frame.transformPoint(Vector3(0.0, 0.0, 1.0)) - p - u).length(), 1e-14);
        EXPECT_LE((frame.transformDirection(Vector3(1.0, 0.0, 0.0)) - v).length(), 1e-15);
        EXPECT_NEAR(frame.rotation.determinant(), 1.0, 1e-14);

        const Transform mirror = Transform::reflection(p, u);
        EXPECT_EQ(mirror.scale, -1.0);
        EXPECT_NEAR(mirror.rotation.determinant(), 1.0, 1e-14);
        EXPECT_LE((mirror.transformPoint(p + v * 2.0 + u) - (p + v * 2.0 - u)).length(), 1e-13);
        EXPECT_LE((mirror * mirror).getMatrix().distTo(Matrix()), 1e-13);

        const UVector3 to = in.vector(1.0);
        const Eigen::Matrix3d want =
            Eigen::Quaterniond::FromTwoVectors(eigen(u), eigen(to)).toRotationMatrix();
        EXPECT_LE(distance(eigen(Transform::rotate(u, to).rotation), want), 1e-7);

        const Transform half = Transform::rotate(u, UVector3(-u));
        EXPECT_LE((half.transformDirection(u) + u).length(), 1e-14);
        EXPECT_LE((half * half).getMatrix().distTo(Matrix()), 1e-14);
        const UVector3 near = u + v * 4e-4;
        EXPECT_EQ(Transform::rotate(u, near).getMatrix().distTo(Matrix()), 0.0)
            << "within 0.03 degrees nothing turns";
    }
}

TEST(Transform, InterpolateIsSlerpAndGeometricScale) {
    InputSource in(43);
    for (int n = 0; n < 200; ++n) {
        const Transform a = randomTransform(in);
        const Transform b = randomTransform(in);
        const double t = in.uniform(0.0, 1.0);
        const Transform blend = Transform::interpolate(a, b, t);
        const Eigen::Quaterniond qa(eigen(a.rotation));
        const Eigen::Quaterniond qb(eigen(b.rotation));
        EXPECT_LE(distance(eigen(blend.rotation), qa.slerp(t, qb).toRotationMatrix()), 1e-9);
        EXPECT_NEAR(std::log(std::abs(blend.scale)),
                    (1.0 - t) * std::log(std::abs(a.scale)) + t * std::log(std::abs(b.scale)),
                    1e-13);
        EXPECT_LE((blend.translation - (a.translation * (1.0 - t) + b.translation * t)).length(),
                  1e-14);
        for (const double start : {0.0, -3.0, kNaN}) {
            EXPECT_EQ(Transform::interpolate(a, b, start).getMatrix().distTo(a.getMatrix()), 0.0);
        }
        EXPECT_EQ(Transform::interpolate(a, b, 7.0).getMatrix().distTo(b.getMatrix()), 0.0);
    }
    EXPECT_EQ(Transform::interpolate(1.0, -1.0, 0.5).scale, 1.0);
    EXPECT_EQ(Transform::interpolate(1.0, -1.0, 0.51).scale, -1.0);
}

}  // namespace
