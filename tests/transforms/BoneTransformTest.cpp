#include "tests/transforms/oracle.h"
#include "tests/valueTypes.h"

using namespace geomKit;

namespace {

/// Linear part R U of a proper rotation and a positive stretch.
BoneTransform randomStretchedRotation(InputSource& in, double angle) {
    const Matrix3 frame = randomTransform(in).rotation;
    const double x = in.uniform(0.3, 3.0), y = in.uniform(0.3, 3.0);
    const Matrix3 turn = Matrix3::rotationMatrix(UVector3(in.vector(1.0)), angle);
    return {turn * frame * Matrix3::diagonal(x, y, 0.7) * frame.transpose(), in.vector(2.0)};
}

TEST(BoneTransform, IsAnAffineMapOfTwelveNumbers) {
    constexpr BoneTransform b(Matrix3(1, 2, 3, 4, 5, 6, 7, 8, 9), {10, 11, 12});
    static_assert((b * b).translation.x == 78.0, "bones compute at compile time");
    Matrix projective = b.getMatrix();
    projective(3, 1) = 5.0;
    EXPECT_EQ(BoneTransform(projective), b) << "the bottom row is read";
    EXPECT_EQ(testing::PrintToString(b),
              "linear [(1, 2, 3), (4, 5, 6), (7, 8, 9)], translation (10, 11, 12)");
    expectExactEquality(b);
    InputSource in(50);
    for (int n = 0; n < 50; ++n) {
        const BoneTransform x = randomStretchedRotation(in, 1.0);
        expectComposition(x, randomStretchedRotation(in, 2.0), in.vector(3.0));
        EXPECT_LE(distance(x * b.translation, x.getMatrix() * b.translation), 1e-13);
    }
    EXPECT_EQ(BoneTransform(Matrix3() * 0.002, b.translation).inverse(),
              BoneTransform(Matrix3() * 0.0, {}));
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

        // The stretch is the root of M^T M, and the rotation is M without it.
        const Eigen::Matrix3d m = eigen(x.linear);
        const Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> squared(m.transpose() * m);
        const auto stretch = [&squared](double power) -> Eigen::Matrix3d {
            const Eigen::Vector3d scales = squared.eigenvalues().array().pow(0.5 * power);
            return squared.eigenvectors() * scales.asDiagonal() *
                   squared.eigenvectors().transpose();
        };
        Eigen::AngleAxisd turn(Eigen::Matrix3d(m * stretch(-1.0)));
        turn.angle() *= t;
        EXPECT_LE(distance(blend.linear, turn * stretch(t)), 1e-6);
        EXPECT_LE(distance(blend.translation, x.translation * t), 1e-15);

        expectBlendsEnd(randomStretchedRotation(in, 1.0), x, 1e-12);
        for (const double start : {0.0, -3.0, kNaN})
            EXPECT_EQ(distance(BoneTransform::interpolate(x, start), Matrix()), 0.0);
        EXPECT_EQ(distance(BoneTransform::interpolate(x, 1.0), x), 0.0);
    }
}

TEST(BoneTransform, DegenerateBlends) {
    const auto halfOf = [](double scale) {
        return BoneTransform::interpolate({Matrix3() * scale, {}}, 0.5).linear;
    };
    EXPECT_EQ(halfOf(0.002), Matrix3() * 0.0) << "its determinant is below 1e-8";
    EXPECT_LE(distance(halfOf(0.0025), Matrix3() * 0.05), 1e-12);
    EXPECT_TRUE(std::isfinite(halfOf(-2.0)(1, 1)));
    const BoneTransform flat({}, {1.0, 0.0, 0.0}, {1.0, 1.0, 1.0}, {1.0, 1.0, 1.0}, 0.3);
    EXPECT_TRUE(BoneTransform::interpolate(flat, BoneTransform(), 0.5).linear.isNearZero());
}

}  // namespace
