#include "tests/vAlgebra/distance.h"
#include "tests/valueTypes.h"

using namespace geomKit;

namespace {

const double kPi = 4.0 * std::atan(1.0);
const Matrix3 kZero = Matrix3::diagonal(0.0, 0.0, 0.0);

TEST(Matrix3, IsNineNumbersRowByRow) {
    constexpr Matrix3 m(1, 2, 3, 4, 5, 6, 7, 8, 9);
    static_assert((m * m).transpose()(0, 2) == 102.0, "matrices compute at compile time");
    for (int i = 0; i < 9; ++i) {
        EXPECT_EQ(m(i / 3, i % 3), i + 1.0);
        EXPECT_EQ(m.row(i / 3)[i % 3], i + 1.0);
        EXPECT_EQ(m.column(i % 3)[i / 3], i + 1.0);
    }
    EXPECT_EQ(Matrix3(m.toArray()), m);
    EXPECT_EQ(Matrix3::fromRows(m.row(0), m.row(1), m.row(2)), m);
    EXPECT_EQ(Matrix3(m.column(0), m.column(1), m.column(2)), m);
    EXPECT_EQ(Matrix3(Matrix(m, {10, 11, 12})), m);
    EXPECT_EQ(Matrix3::diagonal(1, 2, 3), Matrix3(1, 0, 0, 0, 2, 0, 0, 0, 3));
    EXPECT_EQ(testing::PrintToString(m), "[(1, 2, 3), (4, 5, 6), (7, 8, 9)]");
    expectExactEquality(m);
}

TEST(Matrix3, ProductsInversesAndEigensystemsUndo) {
    InputSource in(301);
    for (int i = 0; i < 2000; ++i) {
        const Matrix3 m = in.matrix(std::exp(in.uniform(-1.0, 4.0)));
        const Matrix3 b = Matrix3::rotationMatrix(UVector3(in.vector(1.0)), 1.0) * 0.5;
        expectArithmetic(m, b, in.uniform(-3.0, 3.0), [](double x, double s) { return x / s; });
        EXPECT_LE(distance(m * b, eigen(m) * eigen(b)), 1e-13);
        if (std::abs(m.determinant()) < 0.05) continue;
        expectComposition(m, b, in.vector(0.1));
        const double eigs[] = {0.5, -2.0, 3.0};
        const Vector3 vecs[] = {m.column(0), m.column(1), m.column(2)};
        const Matrix3 stretched = m * Matrix3::diagonal(0.5, -2.0, 3.0);
        EXPECT_LE(distance(Matrix3::getMatrixFromEigs(eigs, vecs) * m, stretched), 1e-7);
    }
}

// Singular for the inverse is |det| < 1e-8, for the null space |det| <= 1e-8.
TEST(Matrix3, SingularityAtTheTolerance) {
    UVector3 null[3];
    const auto of = [](double det) { return Matrix3::diagonal(det, 1.0, 1.0); };
    for (const double det : {-kDetTol, kDetTol}) {
        EXPECT_EQ(of(det).inverse()(1, 1), 1.0) << det;
        EXPECT_EQ(of(det).getNullspace(null, false), 1) << det;
        EXPECT_EQ(of(std::nextafter(det, 2.0 * det)).getNullspace(null, false), 0) << det;
        EXPECT_EQ(of(std::nextafter(det, 0.0)).inverse(), kZero) << det;
    }
    EXPECT_TRUE(std::isnan(of(kNaN).inverse()(1, 1)));
}

TEST(Matrix3, NearTestsEntryByEntry) {
    for (int i = 0; i < 9; ++i) {
        SCOPED_TRACE(i);
        const auto with = [i](Matrix3 m, double d) {
            m(i / 3, i % 3) += d;
            return m;
        };
        const double bound = i % 4 == 0 ? 1.0 - kNearIdentityCos : kNormalCosDefault;
        for (const double sign : {-1.0, 1.0}) {
            EXPECT_TRUE(with(Matrix3(), sign * (bound - 1e-15)).isNearIdentity());
            EXPECT_FALSE(with(Matrix3(), sign * (bound + 1e-15)).isNearIdentity());
            EXPECT_TRUE(with(kZero, sign * std::nextafter(kDetTol, 0.0)).isNearZero());
            EXPECT_FALSE(with(kZero, sign * kDetTol).isNearZero());
        }
        EXPECT_FALSE(with(Matrix3(), kNaN).isNearIdentity());
        EXPECT_FALSE(with(kZero, kNaN).isNearZero());
    }
}

TEST(Matrix3, RotationsAgainstEigenAndBack) {
    InputSource in(302);
    for (int i = 0; i < 5000; ++i) {
        const UVector3 axis = in.vector(1.0);
        const double magnitude = std::exp(in.uniform(-6.5, std::log(kPi)));
        const double angle = i % 2 == 0 ? magnitude : -magnitude;
        const Matrix3 m = Matrix3::rotationMatrix(axis, angle);
        EXPECT_LE(distance(m, Eigen::AngleAxisd(angle, eigen(axis)).toRotationMatrix()), 2e-15);
        EXPECT_NEAR(m.getRotationAngle(&axis), angle, 1e-12);
        const double found = m.getRotationAngle(nullptr);
        EXPECT_LE(distance(Matrix3::rotationMatrix(m.getRotationAxis(), found), m), 1e-9);
        Vector3 a, b;
        getBasis(axis, a, b);
        const double turned = angle < 0.0 ? angle + 2.0 * kPi : angle;
        EXPECT_NEAR(getAngleBetween(a, m * a, axis), turned, 1e-14);

        const UVector3 to = axis + in.vector(std::exp(in.uniform(-35.0, 3.0)));
        EXPECT_LE(distance(Matrix3::rotationMatrix(axis, to) * axis, to), 1e-12);
        EXPECT_EQ(Matrix3::rotationMatrix(axis, axis), Matrix3());
        const Matrix3 half = Matrix3::rotationMatrix(axis, -axis);
        EXPECT_LE(distance(half * axis, -axis), 1e-15);
        EXPECT_LE(distance(half * half, Matrix3()), 1e-14);
    }
    // The angle is measured on the axis of the smallest signed component: not along that axis.
    const UVector3 down(0.0, 0.0, -1.0);
    EXPECT_EQ(Matrix3::rotationMatrix(down, 1.0).getRotationAngle(&down), 0.0);
}

// Orthonormal, annihilated and as many as there are, whichever columns are the dependent ones.
TEST(Matrix3, NullSpacesOfEveryRankInEveryOrder) {
    InputSource in(304);
    UVector3 null[3];
    for (int i = 0; i < 6000; ++i) {
        const int dimension = 1 + i % 2;
        const Vector3 a = in.vector(2.0);
        const Vector3 b = dimension == 1 ? in.vector(2.0) : a * in.uniform(-2.0, 2.0);
        if (dimension == 1 && (a % b).length() < 0.1) continue;
        const Vector3 c = a * in.uniform(-1.0, 1.0) + b * in.uniform(-1.0, 1.0);
        const Matrix3 orders[] = {{a, b, c}, {b, c, a}, {c, a, b}, {a, c, b}, {c, b, a}, {b, a, c}};
        const Matrix3& m = orders[i / 2 % 6];
        ASSERT_EQ(m.getNullspace(null, false), dimension);
        for (int k = 0; k < dimension; ++k) {
            EXPECT_LE((m * null[k]).length(), 1e-11);
            EXPECT_NEAR(null[k].length(), 1.0, 1e-14);
        }
        EXPECT_NEAR(dimension == 1 ? 0.0 : null[0] * null[1], 0.0, 1e-14);
    }
    EXPECT_EQ(Matrix3().getNullspace(null, true), 1) << "forced: a direction all the same";
    EXPECT_EQ((Matrix3() * 9e-9).getNullspace(null, false), 3);
}

}  // namespace
