#include "tests/vAlgebra/distance.h"

using namespace geomKit;

namespace {

// The iteration stops at an off-diagonal sum of 1e-8, which bounds the error of the eigenvalues and
// of A v - lambda v. Any matrix is decomposed as its symmetric part.
TEST(Eigensystem, AgainstEigen) {
    InputSource in(401);
    for (int i = 0; i < 5000; ++i) {
        const double size = std::exp(in.uniform(-3.0, 6.0));
        Matrix3 m = in.matrix(size);
        if (i % 2 == 0) {  // two eigenvalues nearly, or exactly, equal
            const Matrix3 r = Matrix3::rotationMatrix(in.vector(1.0), in.uniform(-3.0, 3.0));
            const double gap = i % 4 == 0 ? 0.0 : std::exp(in.uniform(-35.0, 0.0));
            m = r * Matrix3::diagonal(size, size + gap, in.uniform(0.0, size)) * r.transpose();
        }
        const Matrix3 part = (m + m.transpose()) * 0.5;
        const auto want = Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d>(eigen(part)).eigenvalues();
        double eigs[3];
        UVector3 v[3];
        ASSERT_TRUE(jacobiMethod(m, eigs, v)) << m;
        for (int k = 0; k < 3; ++k) {
            EXPECT_NEAR(eigs[k], want[k], 2e-8);
            EXPECT_LE(distance(part * v[k], v[k] * eigs[k]), 2e-8);
        }
        EXPECT_LE(distance(v[0] % v[1] * ((v[0] % v[1]) * v[2]), v[2]), 1e-13);
    }
}

TEST(Eigensystem, PivotsOfEqualAndOfNaNEntries) {
    const auto expect = [](const char* name, double yx, double zx, double zy, int p, int q) {
        int gotP = -1, gotQ = -1;
        double c = 0.0, s = 0.0, t = 0.0, tau = 0.0;
        const Matrix3 m({1.0, yx, zx}, {yx, 1.0, zy}, {zx, zy, 2.0});
        jacobiRotation(m, gotP, gotQ, c, s, t, tau);
        EXPECT_EQ(gotP, p) << name;
        EXPECT_EQ(gotQ, q) << name;
        return t;
    };
    expect("all equal: the last", 1, 1, 1, 2, 1);
    expect("equal sizes: the later", 2, -2, 1, 2, 0);
    expect("nothing to choose", 0, 0, 0, 2, 1);
    expect("NaN alone", kNaN, kNaN, kNaN, 2, 1);
    expect("NaN beside a number", kNaN, 1, kNaN, 2, 0);
    EXPECT_EQ(expect("equal diagonal entries turn by -45 degrees", -2, 1, 1, 1, 0), -1.0);
}

TEST(Eigensystem, EndsOnEveryMagnitude) {
    InputSource in(402);
    for (const double huge : {1e-300, 1e20, 1e150, 1e300, kInfinity, kNaN}) {
        SCOPED_TRACE(huge);
        double eigs[3];
        UVector3 v[3];
        const Matrix3 m = in.matrix(1.0) * huge;
        EXPECT_TRUE(jacobiMethod(m, eigs, v));
        EXPECT_EQ(std::isfinite(eigs[0] + eigs[1] + eigs[2]), std::isfinite(huge));
    }
    const Matrix3 endless({1e200, 0.5, 1.0}, {0.5, 1e200, 2.0}, {1.0, 2.0, 1e200});
    EXPECT_FALSE(jacobiMethod(endless, nullptr, nullptr));
    EXPECT_EQ(endless.getEigensystem(nullptr, nullptr), 3);
}

}  // namespace
