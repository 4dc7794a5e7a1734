#include <gtest/gtest.h>

#include "tests/transforms/oracle.h"

namespace {

/// Linear part R U of a proper rotation and a positive stretch.
Matrix3 randomStretchedRotation(InputSource& in, double angle) {
    const Matrix3 frame = randomTransform(in).rotation;
    const double x = in.uniform(0.3, 3.0);
    const double y = in.uniform(0.3, 3.0);
    const Matrix3 diagonal({x, 0.0, 0.0}, {0.0, y, 0.0}, {0.0, 0.0, 0.7});
    const UVector3 axis = in.vector(1.0);
    return Matrix3::rotationMatrix(axis, angle) * frame * diagonal * frame.transpose();
}

TEST(BoneTransform, CarriesTheBone) {
    InputSource in(51);
    for (int n = 0; n < 200; ++n) {
        const Vector3 a = in.vector(3.0);
        const Vector3 b = in.vector(3.0);
        const Vector3 c = in.vector(3.0);
        const Vector3 d = in.vector(3.0);
        const double twist = in.uniform(-3.0, 3.0);
        const BoneTransform x(a, b, c, d, twist);
        EXPECT_LE((x.transformPoint(a) - c).length(), 1e-12);
        EXPECT_LE((x.transformPoint(b) - d).length(), 1e-12);

        const Vector3 offset = (b - a).normalize() % in.vector(1.0);
        const Vector3 image = x.transformDirection(offset);
        EXPECT_NEAR(image.length(), offset.length(), 1e-12);
        EXPECT_NEAR(image * (d - c).normalize(), 0.0, 1e-12);
        const Vector3 untwisted = BoneTransform(a, b, c, d, 0.0).transformDirection(offset);
        const Eigen::AngleAxisd turn(twist, eigen(d - c).normalized());
        EXPECT_LE(distance(eigen(image), turn * eigen(untwisted)), 1e-12);
        EXPECT_LE(
            BoneTransform(a, b, c, c + (b - a), 0.0).getMatrix().distTo(Matrix(Matrix3(), c - a)),
            1e-12);
    }
}

TEST(BoneTransform, InterpolatesThePolarFactors) {
    InputSource in(52);
    for (int n = 0; n < 200; ++n) {
        BoneTransform x;
        x.linear = randomStretchedRotation(in, in.uniform(0.01, 3.0));
        x.translation = in.vector(2.0);
        const double t = in.uniform(0.0, 1.0);
        const BoneTransform blend = BoneTransform::interpolate(x, t);

        const Eigen::JacobiSVD<Eigen::Matrix3d> svd(eigen(x.linear),
                                                    Eigen::ComputeFullU | Eigen::ComputeFullV);
        Eigen::AngleAxisd turn(Eigen::Matrix3d(svd.matrixU() * svd.matrixV().transpose()));
        turn.angle() *= t;
        const Eigen::Vector3d power = svd.singularValues().array().pow(t);
        const Eigen::Matrix3d stretch =
            svd.matrixV() * power.asDiagonal() * svd.matrixV().transpose();
        EXPECT_LE(distance(eigen(blend.linear), turn * stretch), 1e-6);
        EXPECT_LE((blend.translation - x.translation * t).length(), 1e-15);

        BoneTransform y;
        y.linear = randomStretchedRotation(in, 1.0);
        EXPECT_LE(BoneTransform::interpolate(y, x, 1.0).getMatrix().distTo(x.getMatrix()), 1e-12);
        for (const double start : {0.0, -3.0, kNaN}) {
            EXPECT_EQ(BoneTransform::interpolate(x, start).getMatrix().distTo(Matrix()), 0.0);
            EXPECT_EQ(BoneTransform::interpolate(y, x, start).getMatrix().distTo(y.getMatrix()),
                      0.0);
        }
        EXPECT_EQ(BoneTransform::interpolate(x, 1.0).getMatrix().distTo(x.getMatrix()), 0.0);
    }
}

TEST(BoneTransform, HalvesComposeWhereRotationAndStretchCommute) {
    const Matrix3 turn = Matrix3::rotationMatrix(UVector3(), 1.0);
    const auto error = [&](double stretchX, double stretchZ) {
        BoneTransform x;
        x.linear = turn * Matrix3({stretchX, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, stretchZ});
        const BoneTransform half = BoneTransform::interpolate(x, 0.5);
        return distance(eigen(half.linear * half.linear), eigen(x.linear));
    };
    EXPECT_LE(error(1.0, 3.0), 1e-8);
    EXPECT_GE(error(2.0, 1.0), 0.1);
}

TEST(BoneTransform, DegenerateBlends) {
    BoneTransform small;
    small.linear = small.linear * 0.002;
    EXPECT_TRUE(BoneTransform::interpolate(small, 0.5).linear.isNearZero());
    small.linear = Matrix3() * 0.0025;
    EXPECT_NEAR(BoneTransform::interpolate(small, 0.5).linear(0, 0), 0.05, 1e-12);
    BoneTransform mirror;
    mirror.linear = Matrix3() * -2.0;
    EXPECT_TRUE(std::isfinite(BoneTransform::interpolate(mirror, 0.5).linear(1, 1)));
    const BoneTransform flat({}, {1.0, 0.0, 0.0}, {1.0, 1.0, 1.0}, {1.0, 1.0, 1.0}, 0.3);
    EXPECT_TRUE(BoneTransform::interpolate(flat, BoneTransform(), 0.5).linear.isNearZero());
}

}  // namespace
