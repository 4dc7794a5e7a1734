#include <algorithm>
#include <cmath>
#include <limits>
#include <thread>

#include <gtest/gtest.h>

#include "bench/implicits/plainElimination.h"
#include "geomKit/implicits/Implicit.h"
#include "tests/golden/Digest.h"

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

PlainSamples cloud(InputSource& in, std::size_t count) {
    PlainSamples samples(count);
    for (auto& [point, value] : samples) {
        point = in.vector(1.0);
        value = in.uniform(-1.0, 1.0);
    }
    return samples;
}

bool sameBits(double a, double b) {
    return (std::isnan(a) && std::isnan(b)) || (a == b && std::signbit(a) == std::signbit(b));
}

bool sameBits(const Vector3& a, const Vector3& b) {
    return sameBits(a.x, b.x) && sameBits(a.y, b.y) && sameBits(a.z, b.z);
}

/// Whether the fit has the oracle's bits.
bool matchesPlainLoops(const PlainSamples& samples) {
    const PlainFit plain = plainFit(samples);
    const Implicit field(samples);
    std::vector<double> coefficients = field.weights;
    for (const double c : {field.offset, field.linear.x, field.linear.y, field.linear.z})
        coefficients.push_back(c);
    return field.metZeroPivot() == plain.metZeroPivot &&
           std::equal(coefficients.begin(), coefficients.end(), plain.coefficients.begin(),
                      plain.coefficients.end(), [](double a, double b) { return sameBits(a, b); });
}

// Sizes around the panel of 32 pivots (four rows belong to the polynomial), and samples that end at
// a zero pivot early, late or not at all, meet zero factors, overflow, underflow or are not finite.
TEST(Implicit, FitHasTheBitsOfThreePlainLoops) {
    struct Kind {
        const char* name;
        Vector3 (*moved)(const Vector3&);
        std::size_t stride;  // every point, or every so many, is moved
    };
    const Kind kinds[] = {
        {"general", [](const Vector3& p) { return p; }, 1},
        {"plane", [](const Vector3& p) { return Vector3(p.x, p.y, 0.0); }, 1},
        {"repeated", [](const Vector3&) { return Vector3(); }, 3},
        {"grid", [](const Vector3& p) { return Vector3(std::round(p.x), p.y, p.z); }, 1},
        {"huge", [](const Vector3& p) { return p * 1e102; }, 1},
        {"overflow", [](const Vector3& p) { return p * 1e103; }, 2},
        {"tiny", [](const Vector3& p) { return p * 1e-104; }, 1},
        {"infinite", [](const Vector3& p) { return Vector3(kInf, p.y, p.z); }, 20},
        {"NaN", [](const Vector3& p) { return Vector3(p.x, p.y, kNaN); }, 4},
    };
    InputSource in(41);
    for (const Kind& kind : kinds) {
        for (const std::size_t count : {0u, 1u, 3u, 4u, 5u, 27u, 28u, 29u, 61u, 150u}) {
            PlainSamples samples = cloud(in, count);
            for (std::size_t i = 0; i < count; i += kind.stride)
                samples[i].first = kind.moved(samples[i].first);
            EXPECT_TRUE(matchesPlainLoops(samples)) << kind.name << ' ' << count;
        }
    }
    PlainSamples samples = cloud(in, 20);
    samples[7].second = kNaN;
    EXPECT_TRUE(matchesPlainLoops(samples));
}

TEST(Implicit, TakesItsSamples) {
    InputSource in(42);
    for (const std::size_t count : {4u, 9u, 60u, 300u}) {
        const PlainSamples samples = cloud(in, count);
        const Implicit field(samples);
        EXPECT_FALSE(field.metZeroPivot());
        EXPECT_LE(field.maxResidual(samples), 1e-8);
    }
}

TEST(Implicit, WithoutSamplesIsZeroEverywhere) {
    const Implicit field({});
    EXPECT_EQ(field.evaluate({1.0, -2.0, 3.0}), 0.0);
    EXPECT_EQ(field.getGradient({1.0, -2.0, 3.0}).lengthSq(), 0.0);
}

TEST(Implicit, TellsWhatTheFitHides) {
    InputSource in(43);
    const Implicit empty((PlainSamples()));
    EXPECT_TRUE(empty.metZeroPivot());
    EXPECT_EQ(empty.maxResidual({}), 0.0);
    // Two values at one point: rounding hides some of the zero pivots, the residual tells of all.
    int hidden = 0;
    for (int i = 0; i < 100; ++i) {
        PlainSamples twice = cloud(in, 20);
        twice[7] = {twice[3].first, twice[3].second + 1.0};
        const Implicit field(twice);
        hidden += field.metZeroPivot() ? 0 : 1;
        EXPECT_GT(field.maxResidual(twice), 0.1);
    }
    EXPECT_GT(hidden, 0);

    const PlainSamples samples = cloud(in, 40);
    Implicit field(samples);
    EXPECT_NEAR(field.maxResidual({{samples[0].first, samples[0].second + 2.0}, samples[1]}), 2.0,
                1e-9);
    EXPECT_TRUE(std::isnan(field.maxResidual({{Vector3(kNaN, 0.0, 0.0), 0.0}, samples[1]})));
    // Terms that a host cut off on one side only count for nothing.
    field.weights.resize(3);
    const double cut = field.evaluate({0.1, 0.2, 0.3});
    field.centers.resize(3);
    EXPECT_EQ(field.evaluate({0.1, 0.2, 0.3}), cut);
}

// The sums as plain loops: what blocks of terms, lanes of points and registers of any width keep.
TEST(Implicit, ThreadsOverArraysGiveTheBitsOfPlainSums) {
    InputSource in(44);
    for (const std::size_t terms : {4u, 15u, 16u, 17u, 70u}) {
        const Implicit field(cloud(in, terms));
        for (const std::size_t count : {0u, 1u, 15u, 16u, 17u, 200u}) {
            std::vector<Vector3> points(count);
            for (Vector3& p : points)
                p = in.index(9) == 0 ? Vector3(kNaN, kInf, -1e200) : in.vector(2.0);
            std::vector<double> values(count);
            std::vector<Vector3> gradients = points;
            const std::size_t half = count / 2;
            const auto run = [&](std::size_t begin, std::size_t end) {
                field.evaluate(points.data() + begin, values.data() + begin, end - begin);
                Vector3* const inPlace = gradients.data() + begin;
                field.getGradient(inPlace, inPlace, end - begin);
            };
            std::thread other(run, 0, half);
            run(half, count);
            other.join();
            for (std::size_t i = 0; i < count; ++i) {
                const Vector3& p = points[i];
                const Vector3& a = field.linear;
                double value = field.offset + (a.z * p.z + (a.x * p.x + a.y * p.y));
                Vector3 gradient = a;
                for (std::size_t k = 0; k < terms; ++k) {
                    const Vector3 d = p - field.centers[k];
                    const double s = d.z * d.z + (d.x * d.x + d.y * d.y);
                    value = (s * std::sqrt(s)) * field.weights[k] + value;
                    const double r = std::sqrt(d.z * d.z + d.x * d.x + d.y * d.y);
                    gradient += d * (3.0 * r) * field.weights[k];
                }
                EXPECT_TRUE(sameBits(values[i], value) && sameBits(gradients[i], gradient)) << i;
                EXPECT_TRUE(sameBits(field.evaluate(p), value) &&
                            sameBits(field.getGradient(p), gradient));
            }
        }
    }
}

}  // namespace
