#include <array>

#include "tests/reference/literalCubic.h"
#include "tests/support.h"

using namespace geomKit;

namespace {

bool hasPlainBits(const std::array<double, 4>& k) {
    double ours[3] = {7.0, 7.0, 7.0};
    double plain[3] = {7.0, 7.0, 7.0};
    bool same = solveCubic(k[0], k[1], k[2], k[3], ours) ==
                solveCubicLiterally(k[0], k[1], k[2], k[3], plain);
    for (int j = 0; j < 3; ++j)
        same =
            same && (sameBits(ours[j], plain[j]) || (std::isnan(ours[j]) && std::isnan(plain[j])));
    return same;
}

TEST(PolynomialRoots, FindsTheRootsThatACubicWasBuiltFrom) {
    // Multiples of 1/16 have exact coefficients, so a double or triple root is truly one.
    InputSource in(41);
    for (int i = 0; i < 20000; ++i) {
        const double a = std::ldexp(i % 2 == 0 ? 1.0 : -1.0, in.index(7) - 5);
        const double p = (in.index(129) - 64) / 16.0;
        const double q = i % 3 == 0 ? p : (in.index(129) - 64) / 16.0;
        const double r = i % 9 == 0 ? p : (in.index(129) - 64) / 16.0;
        double expected[3] = {p, q, r};
        std::sort(expected, expected + 3);
        const double scale = i % 3 == 0 ? 1.0 : std::ldexp(1.0, in.index(20));
        const double b = -a * (p + q + r) * scale;
        const double c = a * (p * q + q * r + r * p) * scale * scale;
        double x[3];
        ASSERT_EQ(solveCubic(a, b, c, -a * p * q * r * scale * scale * scale, x), 3);
        for (int k = 0; k < 3; ++k)
            EXPECT_NEAR(x[k], expected[k] * scale, 1e-9 * scale) << p << " " << q << " " << r;
        // One real root: the quadratic factor has the roots q +- i sqrt(r^2 + 1).
        const double m = q * q + r * r + 1.0;
        ASSERT_EQ(solveCubic(a, -a * (p + 2.0 * q), a * (2.0 * p * q + m), -a * p * m, x), 1);
        EXPECT_NEAR(x[0], p, 5e-14);
    }
}

TEST(PolynomialRoots, ReturnsTheBitsOfThePlainFormForEveryInput) {
    const double special[] = {0.0,   1.0,   -1.0,   1e-13,     -3e-160,    5e-324,
                              1e154, 1e308, -1e308, kInfinity, -kInfinity, kNaN};
    constexpr int kSpecials = 12 * 12 * 12 * 12;
    InputSource in(43);
    for (int i = 0; i < 2 * kSpecials; ++i) {
        std::array<double, 4> k;
        for (int j = 0, n = i; j < 4; ++j, n /= 12) {
            const double drawn = in.uniform(-1.0, 1.0) * std::pow(10.0, in.index(9));
            k[static_cast<std::size_t>(j)] = i < kSpecials ? special[n % 12] : drawn;
        }
        EXPECT_TRUE(hasPlainBits(k)) << i;
    }
}

TEST(PolynomialRoots, ReturnsTheBitsOfThePlainFormForRootsAtItsProbes) {
    // Probes are multiples of 3^m / 2^n. A close pair, or a slope that nearly vanishes, leaves
    // little of the bracket where signs are certain.
    InputSource in(47);
    for (int i = 0; i < 60000; ++i) {
        const double x = in.uniform(-1.0, 1.0);
        const int bits = in.index(16);
        const double probe =
            std::ldexp(std::pow(3.0, in.index(7)) * std::floor(std::ldexp(x, bits)), -bits);
        const double p = i % 2 == 0 ? probe : 8.0 * x;
        const double q = i % 3 == 0 ? p + std::ldexp(x, -in.index(50)) : in.uniform(-30.0, 30.0);
        const double r = i % 7 == 0 ? 2.0 * p - q : in.uniform(-9.0, 9.0);
        const double a = std::ldexp(i % 5 < 2 ? 1.0 : -1.0, in.index(60) - 40);
        const double square = i % 11 == 0 ? q * q + r * r : q * r;
        const double sum = i % 11 == 0 ? 2.0 * q : q + r;
        EXPECT_TRUE(hasPlainBits({a, -a * (p + sum), a * (p * sum + square), -a * p * square}))
            << i;
    }
}

TEST(SmoothWeight, HasTheDerivativesItSaysAndEndsAtItsMargin) {
    for (double x = -0.9; x < 5.0; x += 0.0625) {
        double w[3];
        double dw[3];
        double d2w[3];
        for (int k = 0; k < 3; ++k)
            SmoothWeight(2.0, 3.0).evaluate(x + (k - 1) * 1e-4, &w[k], &dw[k], &d2w[k]);
        EXPECT_NEAR(dw[1], (w[2] - w[0]) / 2e-4, 1e-7);
        EXPECT_NEAR(d2w[1], (dw[2] - dw[0]) / 2e-4, 1e-7);
    }
    const auto at = [](double radius, double x) {
        double w = -1.0;
        SmoothWeight(0.0, radius).evaluate(x, &w, nullptr, nullptr);
        return w;
    };
    EXPECT_EQ(at(1.0, 0.5), 0.421875);
    EXPECT_TRUE(at(1.0, 1.0 - 0.9e-8) == 0.0 && at(1.0, 1.0 - 1.1e-8) > 0.0);
    EXPECT_TRUE(at(1e-8, 0.9e-8) == 1.0 && at(1e-8, 1.1e-8) == 0.0 && at(-1.0, 0.0) == 0.0);
}

}  // namespace
