#include "tests/transforms/oracle.h"
#include "tests/valueTypes.h"

using namespace geomKit;

namespace {

constexpr Matrix kCounted(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
static_assert((kCounted * kCounted).transpose()(0, 3) == 426.0, "matrices compute at compile time");

TEST(Matrix, EveryWayInAndOutKeepsThePlacesOfTheNumbers) {
    std::array<float, 16> floats{};
    for (int i = 0; i < 16; ++i) {
        EXPECT_EQ(kCounted(i / 4, i % 4), i + 1.0);
        Matrixf one;
        EXPECT_EQ(one, Matrixf());
        one(i / 4, i % 4) = floats[static_cast<std::size_t>(i)] = 0.1F * static_cast<float>(i + 1);
        EXPECT_NE(one, Matrixf()) << i;
    }
    EXPECT_EQ(Matrix(kCounted.toArray()), kCounted);
    const Matrix wide = Matrixf(floats);
    EXPECT_TRUE(std::equal(wide.begin(), wide.end(), floats.begin(), floats.end()));
    const Matrix affine(Matrix3(1, 2, 3, 5, 6, 7, 9, 10, 11), kCounted.translation());
    EXPECT_EQ(testing::PrintToString(affine),
              "[(1, 2, 3, 4), (5, 6, 7, 8), (9, 10, 11, 12), (0, 0, 0, 1)]");
    EXPECT_EQ(Matrix::vvt({1, 2, 3}), Matrix(1, 2, 3, 0, 2, 4, 6, 0, 3, 6, 9, 0, 0, 0, 0, 1));
    expectExactEquality(kCounted);
}

TEST(Matrix, AgreesWithEigen) {
    InputSource in(31);
    for (int n = 0; n < 200; ++n) {
        const auto [p, q, from, to] = in.vectors<4>(2.0);
        const Matrix a(in.matrix(2.0), q), b = randomTransform(in).getMatrix();
        Matrix f = b;
        f(3, 2) = 0.25;
        expectArithmetic(a, f, in.uniform(0.5, 2.0), [](double x, double s) { return x / s; });
        expectComposition(b, randomTransform(in).getMatrix(), p);
        EXPECT_EQ(f.inverse(), b.inverse()) << "the bottom row is read";
        EXPECT_EQ(f.scale(2.0), Matrix(Matrix3(b) * 2.0, b.translation() * 2.0));

        const double angle = in.uniform(-4.0, 4.0);
        const Matrix m = Matrix::rotationMatrix(p, angle);
        const Eigen::AngleAxisd turn(angle, eigen(p).normalized());
        EXPECT_LE(distance(Matrix3(m), turn.toRotationMatrix()), 1e-13);
        EXPECT_NEAR(std::abs(m.getRotationAxis() * p.normalize()), 1.0, 1e-12);
        EXPECT_NEAR(m.getRotationAngle(p), std::remainder(angle, 2.0 * M_PI), 1e-9);

        const Matrix motion = Matrix::rigidTransform(p, from, q, to);
        EXPECT_TRUE(motion.isRigid());
        EXPECT_LE(distance(motion.transformPoint(p), q), 1e-13);
        EXPECT_LE(distance(motion.transformDirection(from.normalize()), to.normalize()), 1e-10);
    }
}

// The cube of the scale is the determinant, and 1e-13 the largest that is singular.
TEST(Matrix, SingularInvertsToIdentity) {
    const double below = std::cbrt(0.99 * kNullComponentTol);
    const double above = std::cbrt(1.01 * kNullComponentTol);
    for (const double scale : {0.0, -below, below, kNaN})
        EXPECT_EQ(Transform(scale).getMatrix().inverse(), Matrix()) << scale;
    for (const double scale : {-above, above})
        EXPECT_NEAR(Transform(scale).getMatrix().inverse()(1, 1) * scale, 1.0, 1e-12) << scale;
}

TEST(Matrix, RotationsAboutShortAxes) {
    const auto isIdentity = [](double length, double angle) {
        return Matrix::rotationMatrix(Vector3(0.0, 0.0, length), angle) == Matrix();
    };
    EXPECT_TRUE(isIdentity(1e-5, 1e-5)) << "the length is not shorter than the angle";
    EXPECT_TRUE(isIdentity(1e-5, -1.0)) << "nor than a negative one";
    EXPECT_FALSE(isIdentity(1e-5, 1.0));
    EXPECT_FALSE(isIdentity(1e-4, -1.0)) << "long enough for any angle";
    EXPECT_TRUE(isIdentity(0.0, 1.0));
    EXPECT_TRUE(isIdentity(kNaN, 1.0));
    EXPECT_EQ(Matrix().getRotationAxis(), Vector3(1.0, 0.0, 0.0));
    const Vector3 up(0.0, 0.0, 2.0);
    EXPECT_EQ(Matrix::rigidTransform({}, up, {}, -up).transformDirection(up), up)
        << "opposite directions turn about z";
    const Matrix tiny = Matrix::rotationMatrix(up, 1e-7);
    EXPECT_EQ(Matrix::interpolate(Matrix(), tiny, 0.9)(1, 0), 0.0) << "tiny turns jump at the end";
}

TEST(Matrix, IsRigid) {
    InputSource in(33);
    Transform mirror = randomTransform(in);
    mirror.scale = -1.0;
    const auto isRigid = [&mirror](int i, int j, double change) {
        Matrix m = mirror.getMatrix();
        m(i, j) += change;
        return m.isRigid();
    };
    EXPECT_TRUE(isRigid(0, 3, 1e6));
    EXPECT_TRUE(isRigid(2, 3, kNaN)) << "the translation is not read";
    EXPECT_FALSE(isRigid(3, 3, -1e-6));
    EXPECT_FALSE(isRigid(3, 0, 1e-300));
    EXPECT_FALSE(isRigid(1, 1, 1e-3));
    EXPECT_FALSE(isRigid(1, 1, kNaN));
    EXPECT_TRUE(Transform(1.00004).getMatrix().isRigid());
    EXPECT_FALSE(Transform(1.0001).getMatrix().isRigid());
    EXPECT_FALSE(Transform(0.0).getMatrix().isRigid());
}

TEST(Matrix, Print) {
    testing::internal::CaptureStdout();
    Matrix(Matrix3(), Vector3(-12.345, 0.0, 0.0)).print();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "[1.00 0.00 0.00 -12.35 \n 0.00 1.00 0.00 0.00 \n 0.00 0.00 1.00 0.00 \n"
              " 0.00 0.00 0.00 1.00 ]\n");
}

}  // namespace
