#include <gtest/gtest.h>

#include "tests/transforms/oracle.h"

namespace {

TEST(Matrix, AgreesWithEigen) {
    InputSource in(31);
    for (int n = 0; n < 200; ++n) {
        const Matrix3 linear = in.matrix(2.0);
        const Matrix a(linear, in.vector(3.0));
        const Matrix b = randomTransform(in).getMatrix();
        Matrix f = b;
        f(3, 2) = 0.25;
        const Vector3 p = in.vector(2.0);
        EXPECT_LE(distance(eigen(f * a.transpose()), eigen(f) * eigen(a).transpose()), 1e-13);
        EXPECT_LE(distance(eigen(b.inverse()), eigen(b).inverse()), 1e-10);
        EXPECT_NEAR(a.distTo(f), distance(eigen(a), eigen(f)), 1e-13);
        EXPECT_LE(
            (eigen(a.transformPoint(p)) - (eigen(a) * eigen(p).homogeneous()).head<3>()).norm(),
            1e-13);
        EXPECT_LE(
            distance(eigen(Matrix::vvt(p)).topLeftCorner<3, 3>(), eigen(p) * eigen(p).transpose()),
            1e-13);
        EXPECT_EQ(f.inverse().distTo(b.inverse()), 0.0) << "the bottom row is read";
        Matrix product = f;
        product *= product;
        EXPECT_EQ(product.distTo(f * f), 0.0);
        EXPECT_EQ(f.scale(2.0)(1, 3), 2.0 * f(1, 3));
        EXPECT_EQ(f.scale(2.0)(3, 2), 0.0);
    }
    Matrixf host;
    host(2, 3) = 0.1F;
    EXPECT_EQ(Matrix(host).translation().z, static_cast<double>(0.1F));
}

TEST(Matrix, SingularInvertsToIdentity) {
    for (const double scale : {0.0, 2e-5, kNaN}) {
        const Matrix m = Transform(scale).getMatrix();
        EXPECT_EQ(m.inverse().distTo(Matrix()), 0.0) << scale;
    }
    EXPECT_NEAR(Transform(1e-4).getMatrix().inverse()(1, 1), 1e4, 1e-8);
}

TEST(Matrix, RotationMatrix) {
    InputSource in(32);
    for (int n = 0; n < 100; ++n) {
        const Vector3 axis = in.vector(4.0);
        const double angle = in.uniform(-4.0, 4.0);
        const Eigen::Matrix3d want =
            Eigen::AngleAxisd(angle, eigen(axis).normalized()).toRotationMatrix();
        const Matrix m = Matrix::rotationMatrix(axis, angle);
        EXPECT_LE(distance(eigen(Matrix3(m)), want), 1e-13);
        EXPECT_NEAR(std::abs(m.getRotationAxis() * axis.normalize()), 1.0, 1e-12);
        EXPECT_NEAR(m.getRotationAngle(axis), std::remainder(angle, 2.0 * M_PI), 1e-9);
    }
    const struct {
        double length, angle;
        bool identity;
    } shortAxes[] = {{1e-5, 0.0, true},  {1e-5, 1.0, false},  {1e-5, -1.0, true},
                     {1e-5, 1e-5, true}, {1e-4, -1.0, false}, {0.0, 1.0, true},
                     {kNaN, 1.0, true}};
    for (const auto& c : shortAxes) {
        const Matrix m = Matrix::rotationMatrix(Vector3(0.0, 0.0, c.length), c.angle);
        EXPECT_EQ(m.distTo(Matrix()) == 0.0, c.identity) << c.length << " " << c.angle;
        EXPECT_EQ(m(0, 0), c.identity ? 1.0 : std::cos(c.angle));
    }
    EXPECT_EQ(Matrix().getRotationAxis(), Vector3(1.0, 0.0, 0.0));
}

TEST(Matrix, IsRigid) {
    InputSource in(33);
    Transform rigid = randomTransform(in);
    rigid.scale = -1.0;
    const auto with = [&](int i, int j, double value) {
        Matrix m = rigid.getMatrix();
        m(i, j) = value;
        return m.isRigid();
    };
    EXPECT_TRUE(with(0, 3, 1e6));
    EXPECT_FALSE(with(3, 3, 0.999999));
    EXPECT_FALSE(with(3, 0, 1e-300));
    EXPECT_FALSE(with(1, 1, kNaN));
    EXPECT_FALSE(with(1, 1, rigid.getMatrix()(1, 1) + 1e-3));
    EXPECT_TRUE(Transform(1.00004).getMatrix().isRigid());
    EXPECT_FALSE(Transform(1.0001).getMatrix().isRigid());
    EXPECT_FALSE(Transform(0.0).getMatrix().isRigid());
}

TEST(Matrix, RigidTransform) {
    InputSource in(34);
    for (int n = 0; n < 100; ++n) {
        const Vector3 p0 = in.vector(3.0);
        const Vector3 d0 = in.vector(2.0);
        const Vector3 p1 = in.vector(3.0);
        const Vector3 d1 = in.vector(2.0);
        const Matrix m = Matrix::rigidTransform(p0, d0, p1, d1);
        EXPECT_TRUE(m.isRigid());
        EXPECT_LE((m.transformPoint(p0) - p1).length(), 1e-13);
        EXPECT_LE((m.transformDirection(d0.normalize()) - d1.normalize()).length(), 1e-10);
    }
    const Vector3 up(0.0, 0.0, 2.0);
    const Matrix opposite = Matrix::rigidTransform({}, up, {}, -up);
    EXPECT_EQ(opposite.transformDirection(up), up) << "opposite directions turn about z";
    EXPECT_EQ(Matrix::rigidTransform(up, up, up, up).distTo(Matrix()), 0.0);
}

TEST(Matrix, Interpolate) {
    InputSource in(35);
    for (int n = 0; n < 100; ++n) {
        Transform a = randomTransform(in);
        Transform b = randomTransform(in);
        a.scale = std::abs(a.scale);
        b.scale = std::abs(b.scale);
        const double t = in.uniform(0.0, 1.0);
        const Matrix blend = Matrix::interpolate(a.getMatrix(), b.getMatrix(), t);
        EXPECT_LE(blend.distTo(Transform::interpolate(a, b, t).getMatrix()), 1e-9);
        EXPECT_EQ(Matrix::interpolate(a.getMatrix(), b.getMatrix(), 7.0).distTo(b.getMatrix()),
                  0.0);
        for (const double start : {0.0, -3.0, kNaN}) {
            const Matrix same = Matrix::interpolate(a.getMatrix(), b.getMatrix(), start);
            EXPECT_EQ(same.distTo(a.getMatrix()), 0.0);
        }
    }
    const Matrix tiny = Matrix::rotationMatrix(Vector3(0.0, 0.0, 1.0), 1e-7);
    EXPECT_EQ(Matrix::interpolate(Matrix(), tiny, 0.9)(1, 0), 0.0) << "tiny turns jump at the end";
}

TEST(Matrix, Print) {
    Matrix m;
    m(0, 3) = -12.345;
    testing::internal::CaptureStdout();
    m.print();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "[1.00 0.00 0.00 -12.35 \n 0.00 1.00 0.00 0.00 \n 0.00 0.00 1.00 0.00 \n"
              " 0.00 0.00 0.00 1.00 ]\n");
}

}  // namespace
