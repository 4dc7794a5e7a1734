#include <array>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "tests/reference/literalCubic.h"
#include "tests/support.h"

using namespace geomKit;

namespace {

using Coefficients = std::array<double, 4>;

constexpr double kUntouched = 77.0;

std::string text(const Coefficients& k) {
    std::ostringstream out;
    out << std::hexfloat << k[0] << " " << k[1] << " " << k[2] << " " << k[3];
    return out.str();
}

Coefficients fromRoots(double a, double p, double q, double r) {
    return {a, -a * (p + q + r), a * (p * q + q * r + r * p), -a * p * q * r};
}

/// Beside the root p, the complex pair q +- i sqrt(h).
Coefficients fromRootAndPair(double a, double p, double q, double h) {
    const double square = q * q + h;
    return {a, -a * (p + 2.0 * q), a * (2.0 * p * q + square), -a * p * square};
}

double sign(InputSource& in) {
    return in.index(2) == 0 ? 1.0 : -1.0;
}

/// Of either sign, its magnitude log-uniform between powers of 2.
double logUniform(InputSource& in, int least, int greatest) {
    const double mantissa = in.uniform(1.0, 2.0);
    return sign(in) * std::ldexp(mantissa, least + in.index(greatest - least));
}

/// In [-8, 8), with at most `bits` binary places.
double shortNumber(InputSource& in, int bits) {
    const int places = in.index(bits + 1);
    return std::ldexp(in.index(16 << places) - (8 << places), -places);
}

// Below a degree of 3 the answer is that of `solveQuadratic`, also below 2.
TEST(PolynomialRoots, AnswersAsDocumentedWhereAnEquationIsDegenerate) {
    const auto expect = [](const char* name, const Coefficients& k, std::vector<double> roots) {
        SCOPED_TRACE(name);
        std::vector<double> x(3, kUntouched);
        EXPECT_EQ(solveCubic(k[0], k[1], k[2], k[3], x.data()), static_cast<int>(roots.size()));
        roots.resize(3, kUntouched);
        EXPECT_TRUE(sameBits(x, roots)) << testing::PrintToString(x);
    };
    expect("triple root", {1.0, 0.0, 0.0, 0.0}, {-0.0, -0.0, -0.0});
    expect("double root, ascending though a < 0", {-1.0, 0.0, 3.0, -2.0}, {-2.0, 1.0, 1.0});
    expect("a just below the tolerance", {0.9e-13, -1.0, 0.0, 1.0}, {1.0, -1.0});
    expect("double root", {0.0, 1.0, -2.0, 1.0}, {1.0, 1.0});
    expect("ascending for b > 0", {0.0, 1.0, 0.0, -1.0}, {-1.0, 1.0});
    expect("no root", {0.0, 1.0, 0.0, 1.0}, {});
    expect("b just below the tolerance", {0.0, 0.9e-13, 2.0, -4.0}, {2.0});
    expect("b just above the tolerance", {0.0, -1.1e-13, 1.1e-13, 0.0}, {0.5, 0.5});
    expect("c just below the tolerance", {0.0, 0.0, 0.9e-13, 1.0}, {});
    expect("c just above the tolerance", {0.0, 0.0, -0x1p-43, 1.0}, {0x1p43});
    expect("every x is a root", {0.0, 0.0, 0.0, 0.0}, {});
    expect("NaN leading", {0.0, kNaN, 1.0, 1.0}, {kNaN, kNaN});
    expect("NaN constant", {0.0, 1.0, 1.0, kNaN}, {kNaN, kNaN});
    expect("NaN in a linear equation", {0.0, 0.0, kNaN, 1.0}, {kNaN});
    expect("NaN in a constant", {0.0, 0.0, 0.0, kNaN}, {});
}

TEST(PolynomialRoots, DecidesByTheExactDiscriminantAndSatisfiesTheQuadratic) {
    // Whole coefficients have an exact discriminant; powers of 2 move it across the tolerance.
    InputSource in(40);
    for (int i = 0; i < 40000; ++i) {
        const std::int64_t a = (in.index(1000) + 1) * (in.index(2) == 0 ? 1 : -1);
        const std::int64_t b = in.index(2000001) - 1000000;
        const std::int64_t nearDouble = b * b / (4 * a) + in.index(3) - 1;
        const std::int64_t c = i % 2 == 0 ? nearDouble : in.index(2000001) - 1000000;
        const double scale = std::ldexp(1.0, -in.index(30));
        const double k[3] = {static_cast<double>(a) * scale, static_cast<double>(b) * scale,
                             static_cast<double>(c) * scale};
        SCOPED_TRACE(text({k[0], k[1], k[2], scale}));
        const double discriminant = static_cast<double>(b * b - 4 * a * c) * scale * scale;
        double x[2];
        ASSERT_EQ(solveQuadratic(k[0], k[1], k[2], x), discriminant < -1e-13 ? 0 : 2);
        if (discriminant < -1e-13) continue;
        EXPECT_EQ(x[0] == x[1], discriminant < 1e-13);
        // Within the tolerance a double root misses by the discriminant.
        const double missed = x[0] == x[1] ? std::abs(discriminant / (4.0 * k[0])) : 0.0;
        const double size = k[1] * k[1] / std::abs(k[0]) + std::abs(k[2]);
        for (const long double root : x) {
            const long double residual = (k[0] * root + k[1]) * root + k[2];
            EXPECT_LE(std::abs(residual), missed + 1e-15 * size);
        }
    }
}

void expectPlainBits(const char* name, const Coefficients& k) {
    SCOPED_TRACE(name + (": " + text(k)));
    std::vector<double> ours(3, kUntouched);
    std::vector<double> plain = ours;
    EXPECT_EQ(solveCubic(k[0], k[1], k[2], k[3], ours.data()),
              solveCubicLiterally(k[0], k[1], k[2], k[3], plain.data()));
    EXPECT_TRUE(sameBits(ours, plain)) << testing::PrintToString(ours);
}

/// A number that halving of a bracket about 0 meets, or one of its neighbours.
double probe(InputSource& in) {
    const double power = std::pow(3.0, in.index(7));
    const int bits = in.index(46);
    const double x = power * std::ldexp(std::floor(std::ldexp(in.uniform(-1.0, 1.0), bits)), -bits);
    const double target = sign(in) * kInfinity;
    return in.index(3) == 0 ? std::nextafter(x, target) : x;
}

TEST(PolynomialRoots, ReturnsTheBitsOfThePlainForm) {
    const double special[] = {0.0,   1.0,   -1.0,   1e-13,     -3e-160,    5e-324,
                              1e154, 1e308, -1e308, kInfinity, -kInfinity, kNaN};
    InputSource in(43);
    for (int i = 0; i < 10000; ++i) {
        Coefficients k;
        for (double& number : k)
            number = special[in.index(12)];
        expectPlainBits("special numbers", k);
        for (double& number : k)
            number = logUniform(in, &number == k.data() ? -43 : -1074, 1023);
        expectPlainBits("all magnitudes", k);
        for (double& number : k)
            number = logUniform(in, -43, 12);
        expectPlainBits("about 1", k);

        const double p = shortNumber(in, 12), q = shortNumber(in, 8), h = shortNumber(in, 8);
        expectPlainBits("a short root", fromRootAndPair(sign(in), p, q, h + 8.01));
        const double near = p + logUniform(in, -54, 0), nearer = p + logUniform(in, -54, 0);
        expectPlainBits("nearly triple roots", fromRoots(logUniform(in, -30, 4), p, near, nearer));
        const double falling = -std::abs(logUniform(in, -43, 40));
        const double magnitude = std::abs(logUniform(in, -60, 8));
        expectPlainBits("falling, a root at a probe",
                        fromRootAndPair(falling, probe(in), in.uniform(-9.0, 9.0), magnitude));
        const double root = logUniform(in, -60, 8), centre = logUniform(in, -40, 8);
        expectPlainBits("falling, roots of all magnitudes",
                        fromRootAndPair(falling, root, centre, magnitude));
    }
}

double weightAt(double radius, double x) {
    double w = kUntouched;
    SmoothWeight(0.0, radius).evaluate(x, &w, nullptr, nullptr);
    return w;
}

TEST(SmoothWeight, EndsAtItsMargin) {
    EXPECT_EQ(weightAt(1.0, 0.5), 0.421875);
    EXPECT_GT(weightAt(1.0, 1.0 - 1.1e-8), 0.0);
    EXPECT_EQ(weightAt(1.0, 1.0 - 0.9e-8), 0.0);
    // A radius of at most 1e-8 has no margin and no slope.
    EXPECT_EQ(weightAt(1e-8, 0.9e-8), 1.0);
    EXPECT_EQ(weightAt(1e-8, 1.1e-8), 0.0);
    EXPECT_EQ(weightAt(-1.0, 0.0), 0.0);
}

}  // namespace
