#include <memory>

#include "tests/vAlgebra/distance.h"

using namespace geomKit;

namespace {

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

TEST(ImplEllipsoid, HoldsEveryPointAndTouchesOne) {
    InputSource in(51);
    // The tolerance is rounding times the ratio of the shape's eigenvalues.
    const std::pair<Vector3, double> shapes[] = {{{1, 2, 3}, 1e-9},
                                                 {{5, 5, 0}, 1e-8},
                                                 {{90, 0, 0}, 1e-5},
                                                 {{0, 0, 0}, 1e-9},
                                                 {{1e-5, 1e-4, 1e3}, 1e-2}};
    for (const auto& [size, tolerance] : shapes) {
        for (const int count : {1, 2, 3, 40}) {
            const std::vector<Vector3> points = cloud(in, count, size);
            const Vector3 aside = in.vector(1.0);
            for (const ImplEllipsoid& e : {ImplEllipsoid(points), ImplEllipsoid(points, aside)}) {
                double largest = 0.0;
                for (const Vector3& p : points)
                    largest = std::max(largest, valueAt(e, p));
                const bool allAtCentre = e.matrix(0, 0) > 0.99e14;
                EXPECT_NEAR(allAtCentre && largest < 1.0 ? 1.0 : largest, 1.0, tolerance)
                    << count << " points of " << size;
            }
        }
    }
}

TEST(ImplEllipsoid, HasItsDerivativesAndThickensItsSemiAxes) {
    InputSource in(52);
    const auto semiAxes = [](const ImplEllipsoid& e) {
        const Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> solver(eigen(e.matrix));
        return Eigen::Vector3d(solver.eigenvalues().cwiseInverse().cwiseSqrt());
    };
    for (int i = 0; i < 100; ++i) {
        const std::vector<Vector3> points = cloud(in, 30, {1.0, 2.0, 4.0});
        ImplEllipsoid e(points);
        double value = 0.0;
        Vector3 gradient;
        Matrix3 hessian;
        const Vector3 p = in.vector(6.0);
        e.evaluate(p, &value, &gradient, &hessian);
        EXPECT_LE(distance(gradient * (value * value), hessian * (p - e.center)), 1e-11);
        e.evaluate(e.center, nullptr, &gradient, nullptr);
        EXPECT_EQ(gradient.lengthSq(), 0.0);

        const Eigen::Vector3d before = semiAxes(e);
        for (const double distance : {0.0, 0.5, -0.5 * before[2]}) {
            const std::unique_ptr<ImplEllipsoid> thick(e.thicken(distance));
            EXPECT_EQ(e.thickened(distance).matrix, thick->matrix);
            EXPECT_EQ(thick->center, e.center);
            EXPECT_EQ(e.matrix, hessian) << "the ellipsoid itself was thickened";
            EXPECT_LE((semiAxes(*thick).array() - before.array() - distance).matrix().norm(), 1e-6);
        }
    }
}

TEST(ImplEllipsoid, AnswersDegenerateInput) {
    const Vector3 place(1.0, 2.0, 3.0);
    ImplEllipsoid point({place, place});
    EXPECT_LE(distance(point.center, place), 0.0);
    EXPECT_LE(distance(point.matrix * 1e-14, Matrix3()), 1e-15);
    EXPECT_NEAR(valueAt(ImplEllipsoid({place}, {1.0, 2.0, 5.0}), place), 1.0, 1e-12);

    const double large = 2000.0;
    ImplEllipsoid wide(
        {{large, 0, 0}, {-large, 0, 0}, {0, large, 0}, {0, -large, 0}, {0, 0, large}}, Vector3());
    EXPECT_NEAR(valueAt(wide.thickened(0.0), {1000.0, 0.0, 0.0}), 1.0, 1e-12)
        << "semi-axes above 1e3 count as 1e3";

    for (const double bad : {kNaN, kInfinity, -kInfinity, 1e200}) {
        const std::vector<Vector3> points = {place, {bad, 0.0, 1.0}, {0.0, 1.0, bad}};
        for (ImplEllipsoid e : {ImplEllipsoid(points), ImplEllipsoid(points, place),
                                ImplEllipsoid({place}, {bad, bad, bad}), ImplEllipsoid({}),
                                ImplEllipsoid({}, place)}) {
            double value = 0.0;
            Vector3 gradient;
            EXPECT_TRUE(e.evaluate({bad, 1.0, 2.0}, &value, &gradient, nullptr));
            EXPECT_TRUE(sameBits(e.thickened(bad).center, e.center));
        }
    }
    EXPECT_TRUE(std::isnan(ImplEllipsoid({}).center.x));
    EXPECT_TRUE(std::isnan(ImplEllipsoid({}, place).matrix(0, 0)));
}

}  // namespace
