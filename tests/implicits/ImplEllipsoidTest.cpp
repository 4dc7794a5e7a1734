#include <algorithm>
#include <limits>
#include <memory>

#include <Eigen/Dense>
#include <gtest/gtest.h>

#include "geomKit/implicits/ImplEllipsoid.h"
#include "geomKit/vAlgebra/vectorUtils.h"
#include "tests/golden/Digest.h"
#include "tests/vAlgebra/ExpectNear.h"

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

double valueAt(const ImplEllipsoid& ellipsoid, const Vector3& p) {
    double value = kNaN;
    EXPECT_TRUE(ellipsoid.evaluate(p, &value, nullptr, nullptr));
    return value;
}

std::vector<Vector3> cloud(InputSource& in, int count, const Vector3& size) {
    const Matrix3 turn = Matrix3::rotationMatrix(UVector3(in.vector(1.0)), 1.0);
    std::vector<Vector3> points;
    for (; count > 0; --count) {
        const Vector3 v = in.vector(1.0);
        points.push_back(turn * Vector3(v.x * size.x, v.y * size.y, v.z * size.z));
    }
    return points;
}

Eigen::Matrix3d toEigen(const Matrix3& m) {
    Eigen::Matrix3d e;
    for (int r = 0; r < 3; ++r)
        e.row(r) << m(r, 0), m(r, 1), m(r, 2);
    return e;
}

TEST(ImplEllipsoid, HoldsEveryPointAndTouchesOne) {
    InputSource in(51);
    struct Shape {
        Vector3 size;
        double tolerance;  // rounding times the ratio of the shape's eigenvalues
    };
    for (const auto& [size, tolerance] :
         {Shape{{1, 2, 3}, 1e-9}, Shape{{5, 5, 0}, 1e-8}, Shape{{90, 0, 0}, 1e-5},
          Shape{{0, 0, 0}, 1e-9}, Shape{{1e-5, 1e-4, 1e3}, 1e-2}}) {
        for (const int count : {1, 2, 3, 40}) {
            const std::vector<Vector3> points = cloud(in, count, size);
            const Vector3 aside = in.vector(1.0);
            for (const ImplEllipsoid& e : {ImplEllipsoid(points), ImplEllipsoid(points, aside)}) {
                double largest = 0.0;
                for (const Vector3& p : points)
                    largest = std::max(largest, valueAt(e, p));
                EXPECT_LE(largest - 1.0, tolerance) << size << count;
                const bool allAtCentre = e.matrix(0, 0) > 0.99e14;
                EXPECT_TRUE(allAtCentre || 1.0 - largest <= tolerance) << size << count;
            }
        }
    }
}

TEST(ImplEllipsoid, TakesItsShapeFromTheSecondMoments) {
    InputSource in(52);
    for (int i = 0; i < 100; ++i) {
        const std::vector<Vector3> points = cloud(in, 30, {1.0, 2.0, 4.0});
        const ImplEllipsoid e(points);
        Eigen::Matrix3d moments = Eigen::Matrix3d::Zero();
        Vector3 sum;
        for (const Vector3& p : points) {
            const Vector3 q = p - e.center;
            sum += q;
            const Eigen::Vector3d d(q.x, q.y, q.z);
            moments += d * d.transpose();
        }
        expectNear(sum, Vector3(), 1e-12);
        const Eigen::Matrix3d product = moments * toEigen(e.matrix);
        EXPECT_LE((product / product(0, 0) - Eigen::Matrix3d::Identity()).norm(), 1e-7);

        const Vector3 p = in.vector(6.0);
        double value = 0.0;
        Vector3 gradient;
        Matrix3 hessian;
        e.evaluate(p, &value, &gradient, &hessian);
        const Vector3 step = in.vector(1e-5);
        const double rise = (valueAt(e, p + step) - valueAt(e, p - step)) * 0.5;
        EXPECT_NEAR(gradient * step * value, rise, 1e-11);
        expectNear(hessian, e.matrix, 0.0);
        e.evaluate(e.center, nullptr, &gradient, nullptr);
        EXPECT_EQ(gradient.lengthSq(), 0.0);
    }
}

TEST(ImplEllipsoid, ThickeningMovesEverySemiAxis) {
    InputSource in(53);
    const auto semiAxes = [](const ImplEllipsoid& e) {
        const Eigen::Matrix3d m = toEigen(e.matrix);
        const Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> solver((m + m.transpose()) * 0.5);
        return Eigen::Vector3d(solver.eigenvalues().cwiseInverse().cwiseSqrt());
    };
    for (int i = 0; i < 100; ++i) {
        ImplEllipsoid e(cloud(in, 30, {1.0, 2.0, 4.0}));
        const Eigen::Vector3d before = semiAxes(e);
        for (const double distance : {0.0, 0.5, -0.5 * before[2]}) {
            const Matrix3 untouched = e.matrix;
            const std::unique_ptr<ImplEllipsoid> thick(e.thicken(distance));
            expectNear(e.matrix, untouched, 0.0);
            expectNear(thick->center, e.center, 0.0);
            EXPECT_LE((semiAxes(*thick).array() - before.array() - distance).matrix().norm(), 1e-6);
        }
    }
}

TEST(ImplEllipsoid, AnswersDegenerateInput) {
    const Vector3 place(1.0, 2.0, 3.0);
    ImplEllipsoid point({place, place});
    expectNear(point.center, place, 0.0);
    expectNear(point.matrix * 1e-14, Matrix3(), 1e-15);
    EXPECT_NEAR(valueAt(ImplEllipsoid({place}, {1.0, 2.0, 5.0}), place), 1.0, 1e-12);

    const double large = 2000.0;
    ImplEllipsoid wide(
        {{large, 0, 0}, {-large, 0, 0}, {0, large, 0}, {0, -large, 0}, {0, 0, large}}, Vector3());
    const std::unique_ptr<ImplEllipsoid> cut(wide.thicken(0.0));
    EXPECT_NEAR(valueAt(*cut, {1000.0, 0.0, 0.0}), 1.0, 1e-12)
        << "semi-axes above 1e3 count as 1e3";

    for (const double bad : {kNaN, kInf, -kInf, 1e200}) {
        const std::vector<Vector3> points = {place, {bad, 0.0, 1.0}, {0.0, 1.0, bad}};
        for (ImplEllipsoid e : {ImplEllipsoid(points), ImplEllipsoid(points, place),
                                ImplEllipsoid({place}, {bad, bad, bad}), ImplEllipsoid({}),
                                ImplEllipsoid({}, place)}) {
            double value = 0.0;
            Vector3 gradient;
            EXPECT_TRUE(e.evaluate({bad, 1.0, 2.0}, &value, &gradient, nullptr));
            EXPECT_NE(std::unique_ptr<ImplEllipsoid>(e.thicken(bad)), nullptr);
        }
    }
    EXPECT_TRUE(std::isnan(ImplEllipsoid({}).center.x) &&
                std::isnan(ImplEllipsoid({}, place).matrix(0, 0)));
}

}  // namespace
