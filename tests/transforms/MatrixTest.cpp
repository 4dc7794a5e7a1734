#include "tests/transforms/oracle.h"

using namespace geomKit;

namespace {

TEST(Matrix, AgreesWithEigen) {
    InputSource in(31);
    for (int n = 0; n < 200; ++n) {
        const auto [p, q, from, to] = in.vectors<4>(2.0);
        const Matrix a(in.matrix(2.0), q);
        const Matrix b = randomTransform(in).getMatrix();
        Matrix f = b;
        f(3, 2) = 0.25;
        const Eigen::Vector4d image = eigen(a) * eigen(p).homogeneous();
        EXPECT_LE(distance(f * a.transpose(), eigen(f) * eigen(a).transpose()), 1e-13);
        EXPECT_LE(distance(b.inverse(), eigen(b).inverse()), 1e-10);
        EXPECT_EQ(distance(f.inverse(), b.inverse()), 0.0) << "the bottom row is read";
        EXPECT_NEAR(a.distTo(f), distance(a, f), 1e-13);
        EXPECT_LE(distance(a.transformPoint(p), image.head<3>()), 1e-13);
        EXPECT_EQ(distance(f.scale(2.0), Matrix(Matrix3(b) * 2.0, b.translation() * 2.0)), 0.0);

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

// |det| = 1e-13 lies between the two.
TEST(Matrix, SingularInvertsToIdentity) {
    for (const double scale : {0.0, -4.64e-5, 4.64e-5, -4.65e-5, 4.65e-5, kNaN}) {
        const Matrix inverse = Transform(scale).getMatrix().inverse();
        EXPECT_EQ(distance(inverse, Matrix()) == 0.0, !(std::abs(scale) > 4.64e-5)) << scale;
    }
}

TEST(Matrix, FromFloatsAndFromAVector) {
    Matrixf floats;
    floats(1, 3) = 0.1f;
    EXPECT_EQ(Matrix(floats)(1, 3), static_cast<double>(0.1f));
    EXPECT_EQ(Matrix::vvt({1.0, 2.0, 3.0})(1, 2), 6.0);
    EXPECT_EQ(Matrix::vvt({1.0, 2.0, 3.0})(3, 3), 1.0);
}

TEST(Matrix, RotationsAboutShortAxes) {
    const double table[][3] = {{1e-5, 0.0, true},  {1e-5, 1.0, false},  {1e-5, -1.0, true},
                               {1e-5, 1e-5, true}, {1e-4, -1.0, false}, {0.0, 1.0, true},
                               {kNaN, 1.0, true}};
    for (const auto& [length, angle, identity] : table) {
        const Matrix m = Matrix::rotationMatrix(Vector3(0.0, 0.0, length), angle);
        EXPECT_EQ(m.distTo(Matrix()) == 0.0, identity != 0.0) << length << " " << angle;
    }
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
    const struct {
        int i, j;
        double change;
    } table[] = {{0, 3, 1e6}, {3, 3, -1e-6}, {3, 0, 1e-300}, {1, 1, 1e-3}, {1, 1, kNaN}};
    for (const auto& row : table) {
        Matrix m = mirror.getMatrix();
        m(row.i, row.j) += row.change;
        EXPECT_EQ(m.isRigid(), row.change == 1e6) << row.i << row.j;
    }
    for (const double scale : {1.00004, 1.0001, 0.0})
        EXPECT_EQ(Transform(scale).getMatrix().isRigid(), scale == 1.00004) << scale;
}

TEST(Matrix, Print) {
    testing::internal::CaptureStdout();
    Matrix(Matrix3(), Vector3(-12.345, 0.0, 0.0)).print();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "[1.00 0.00 0.00 -12.35 \n 0.00 1.00 0.00 0.00 \n 0.00 0.00 1.00 0.00 \n"
              " 0.00 0.00 0.00 1.00 ]\n");
}

}  // namespace
