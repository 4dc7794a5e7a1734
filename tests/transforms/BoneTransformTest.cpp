#include "tests/transforms/oracle.h"

using namespace geomKit;

namespace {

/// Linear part R U of a proper rotation and a positive stretch.
BoneTransform randomStretchedRotation(InputSource& in, double angle) {
    const Matrix3 frame = randomTransform(in).rotation;
    const Vector3 x(in.uniform(0.3, 3.0), 0.0, 0.0);
    const Vector3 y(0.0, in.uniform(0.3, 3.0), 0.0);
    const UVector3 axis = in.vector(1.0);
    BoneTransform bone;
    bone.linear = Matrix3::rotationMatrix(axis, angle) * frame * Matrix3(x, y, {0.0, 0.0, 0.7}) *
                  frame.transpose();
    bone.translation = in.vector(2.0);
    return bone;
}

TEST(BoneTransform, CarriesTheBone) {
    InputSource in(51);
    for (int n = 0; n < 200; ++n) {
        const auto [a, b, c, d] = in.vectors<4>(3.0);
        const double twist = in.uniform(-3.0, 3.0);
        const BoneTransform x(a, b, c, d, twist);
        EXPECT_LE(distance(x.transformPoint(a), c) + distance(x.transformPoint(b), d), 1e-12);

        const Vector3 offset = (b - a).normalize() % in.vector(1.0);
        const Vector3 image = x.transformDirection(offset);
        EXPECT_NEAR(image.length(), offset.length(), 1e-12);
        EXPECT_NEAR(image * (d - c).normalize(), 0.0, 1e-12);
        const Vector3 untwisted = BoneTransform(a, b, c, d, 0.0).transformDirection(offset);
        const Eigen::AngleAxisd turn(twist, eigen(d - c).normalized());
        EXPECT_LE(distance(image, turn * eigen(untwisted)), 1e-12);
        const BoneTransform moved(a, b, c, c + (b - a), 0.0);
        EXPECT_LE(distance(moved, Matrix(Matrix3(), c - a)), 1e-12);
    }
}

TEST(BoneTransform, InterpolatesThePolarFactors) {
    InputSource in(52);
    for (int n = 0; n < 200; ++n) {
        const BoneTransform x = randomStretchedRotation(in, in.uniform(0.01, 3.0));
        const double t = in.uniform(0.0, 1.0);
        const BoneTransform blend = BoneTransform::interpolate(x, t);

        const Eigen::JacobiSVD<Eigen::Matrix3d> svd(eigen(x.linear),
                                                    Eigen::ComputeFullU | Eigen::ComputeFullV);
        const Eigen::Matrix3d v = svd.matrixV();
        Eigen::AngleAxisd turn(Eigen::Matrix3d(svd.matrixU() * v.transpose()));
        turn.angle() *= t;
        const Eigen::Vector3d power = svd.singularValues().array().pow(t);
        EXPECT_LE(distance(blend.linear, turn * (v * power.asDiagonal() * v.transpose())), 1e-6);
        EXPECT_LE(distance(blend.translation, x.translation * t), 1e-15);

        expectBlendsEnd(randomStretchedRotation(in, 1.0), x, 1e-12);
        for (const double start : {0.0, -3.0, kNaN})
            EXPECT_EQ(distance(BoneTransform::interpolate(x, start), Matrix()), 0.0);
        EXPECT_EQ(distance(BoneTransform::interpolate(x, 1.0), x), 0.0);
    }
}

TEST(BoneTransform, DegenerateBlends) {
    const struct { double size, half; } table[] = {{0.002, 0.0}, {0.0025, 0.05}};
    BoneTransform bone;
    for (const auto& row : table) {
        bone.linear = Matrix3() * row.size;
        EXPECT_LE(distance(BoneTransform::interpolate(bone, 0.5).linear, Matrix3() * row.half),
                  1e-12);
    }
    bone.linear = Matrix3() * -2.0;
    EXPECT_TRUE(std::isfinite(BoneTransform::interpolate(bone, 0.5).linear(1, 1)));
    const BoneTransform flat({}, {1.0, 0.0, 0.0}, {1.0, 1.0, 1.0}, {1.0, 1.0, 1.0}, 0.3);
    EXPECT_TRUE(BoneTransform::interpolate(flat, BoneTransform(), 0.5).linear.isNearZero());
}

}  // namespace
