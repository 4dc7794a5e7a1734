#include <array>
#include <sstream>

#include <Eigen/Core>

#include "tests/valueTypes.h"

using namespace geomKit;

namespace {

using Vect2 = ktNM::vect2<double>;

struct Pixel {
    float x, y;
};

struct Homogeneous {
    double x, y, z;
};

static_assert(Vect2(3, 4) * Vect2(2, 1) / 5.0 == 2.0, "everything works at compile time");
static_assert(ktNM::vect2<int>(7, -7) / 2 == ktNM::vect2<int>(3, -3), "no reciprocal of integers");
static_assert(Vect2(std::array<float, 2>{0.5F, 2.0F}).to<Pixel>().y == 2.0F);
static_assert(!std::is_constructible_v<Vect2, Homogeneous> &&
                  !std::is_constructible_v<Vect2, Vector3> &&
                  !std::is_constructible_v<Vect2, const double*>,
              "only what has two numbers");

TEST(Vect2, GoesToOtherLibrariesAndBack) {
    const Vect2 p(0.25, -3.0);
    EXPECT_EQ(Vect2(p.to<Eigen::Vector2d>()), p);
    EXPECT_EQ(Vect2(2.0 * p.to<Eigen::Vector2f>()), 2.0 * p) << "an expression";
    EXPECT_EQ((Vect2(p.to<std::array<float, 2>>())), p);
    EXPECT_EQ(Vect2(p.to<Pixel>()), p);
    EXPECT_EQ(Vect2(p.to<ktNM::vect2<int>>()), Vect2(0.0, -3.0)) << "rounded towards 0";
    const double numbers[2] = {0.25, -3.0};
    EXPECT_EQ(Vect2(numbers), p);
    EXPECT_TRUE(std::equal(p.begin(), p.end(), numbers, numbers + 2));
}

TEST(Vect2, ComparesExactlyAndCountsByComponent) {
    const Vect2 a(1.0 / 3.0, -7.0);
    expectExactEquality(a);
    expectArithmetic(a, Vect2(1e-9, 0.1), 0.3, [](double x, double s) { return x / s; });
}

TEST(Vect2, PrintsInTheNumberFormatOfTheStream) {
    std::ostringstream text;
    text.precision(3);
    text << Vect2(1.0 / 3.0, -2.0) << ktNM::vect2<int>(20, 20);
    EXPECT_EQ(text.str(), "(0.333, -2)(20, 20)");
}

}  // namespace
