#include "tests/reference/plainElimination.h"
#include "tests/support.h"

using namespace geomKit;

namespace {

PlainSamples cloud(InputSource& in, std::size_t count) {
    PlainSamples samples(count);
    for (auto& [point, value] : samples) {
        point = in.vector(1.0);
        value = in.uniform(-1.0, 1.0);
    }
    return samples;
}

// Sizes around the panel of 32 pivots (four rows belong to the polynomial), and samples that end at
// a zero pivot early, late or not at all, meet zero factors, overflow, underflow or are not finite.
TEST(Implicit, FitHasTheBitsOfThreePlainLoops) {
    const struct {
        const char* name;
        Vector3 (*moved)(const Vector3&);
        std::size_t stride;  // every point, or every so many, is moved
    } kinds[] = {
        {"general", [](const Vector3& p) { return p; }, 1},
        {"plane", [](const Vector3& p) { return Vector3(p.x, p.y, 0.0); }, 1},
        {"repeated", [](const Vector3&) { return Vector3(); }, 3},
        {"grid", [](const Vector3& p) { return Vector3(std::round(p.x), p.y, p.z); }, 1},
        {"huge", [](const Vector3& p) { return p * 1e102; }, 1},
        {"overflow", [](const Vector3& p) { return p * 1e103; }, 2},
        {"tiny", [](const Vector3& p) { return p * 1e-104; }, 1},
        {"infinite", [](const Vector3& p) { return Vector3(kInfinity, p.y, p.z); }, 20},
        {"NaN", [](const Vector3& p) { return Vector3(p.x, p.y, kNaN); }, 4},
    };
    InputSource in(41);
    for (const auto& kind : kinds) {
        for (const std::size_t count : {0u, 1u, 3u, 4u, 5u, 20u, 27u, 28u, 29u, 61u, 150u}) {
            PlainSamples samples = cloud(in, count);
            for (std::size_t i = 0; i < count; i += kind.stride)
                samples[i].first = kind.moved(samples[i].first);
            if (count == 20) samples[7].second = kNaN;
            const PlainFit plain = plainFit(samples);
            const Implicit field(samples);
            std::vector<double> coefficients = field.weights;
            for (const double c : {field.offset, field.linear.x, field.linear.y, field.linear.z})
                coefficients.push_back(c);
            SCOPED_TRACE(std::string(kind.name) + ' ' + std::to_string(count));
            EXPECT_EQ(field.metZeroPivot(), plain.metZeroPivot);
            EXPECT_TRUE(sameBits(coefficients, plain.coefficients));
        }
    }
}

TEST(Implicit, ProgressRisesToOneAndMayEndTheFit) {
    InputSource in(44);
    const PlainSamples samples = cloud(in, 150);
    std::vector<double> shares;
    const Implicit told(samples, [&](double share) { shares.push_back(share); });
    EXPECT_TRUE(std::is_sorted(shares.begin(), shares.end()));
    EXPECT_GT(shares.size(), 5u);
    EXPECT_EQ(shares.front(), 0.0);
    EXPECT_EQ(shares.back(), 1.0);
    EXPECT_EQ(told.weights, Implicit(samples).weights);

    struct Enough {};
    const auto stop = [](double share) {
        if (share > 0.5) throw Enough();
    };
    EXPECT_THROW(Implicit(samples, stop), Enough);
}

TEST(Implicit, TakesItsSamplesOrTellsThatItDoesNot) {
    InputSource in(42);
    const Implicit empty((PlainSamples()));
    EXPECT_TRUE(empty.metZeroPivot());
    EXPECT_EQ(empty.maxResidual({}), 0.0);
    EXPECT_EQ(empty.evaluate({1.0, -2.0, 3.0}), 0.0);
    EXPECT_EQ(empty.getGradient({1.0, -2.0, 3.0}).lengthSq(), 0.0);
    PlainSamples samples = cloud(in, 60);
    const Implicit good(samples);
    EXPECT_LE(good.maxResidual(samples), 1e-8);
    samples[1].second += 2.0;
    EXPECT_NEAR(good.maxResidual(samples), 2.0, 1e-8);
    samples[0].first.x = kNaN;
    EXPECT_TRUE(std::isnan(good.maxResidual(samples)));
    // Two values at one point: rounding may hide the zero pivot, the residual tells.
    for (int i = 0; i < 100; ++i) {
        PlainSamples twice = cloud(in, 20);
        twice[7] = {twice[3].first, twice[3].second + 1.0};
        EXPECT_GT(Implicit(twice).maxResidual(twice), 0.1);
    }
    // Terms that a host cut off on one side only count for nothing.
    Implicit field(cloud(in, 40));
    field.weights.resize(3);
    const double cut = field.evaluate({0.1, 0.2, 0.3});
    field.centers.resize(3);
    EXPECT_EQ(field.evaluate({0.1, 0.2, 0.3}), cut);
}

// Faults in the order in which they are looked for: the first of them is told.
TEST(Implicit, CheckNamesTheSamplesToBlame) {
    InputSource in(43);
    using Fault = ImplicitCheck::Fault;
    const auto expect = [](PlainSamples samples, Fault fault, const std::string& text) {
        SCOPED_TRACE(text);
        const ImplicitCheck check = Implicit(samples).check();
        EXPECT_EQ(check.fault, fault);
        EXPECT_EQ(static_cast<bool>(check), fault == Fault::None);
        EXPECT_EQ(check.text(), text);
    };
    PlainSamples samples = cloud(in, 9);
    expect(samples, Fault::None, "no fault");
    samples[7].second = kInfinity;
    expect(samples, Fault::FieldNotFinite,
           "the field is not finite: a value is not, or distances overflow");
    PlainSamples flat = samples;
    for (auto& [point, value] : flat)
        point.z = 0.0;
    expect(flat, Fault::ZeroPivot,
           "the samples do not determine a field: they lie in a plane or nearly so");
    expect(cloud(in, 3), Fault::TooFewSamples,
           "there are only 3 samples, and a field takes at least 4");
    // Two pairs and a triple: the least second member, with the first that it repeats.
    samples[8].first = samples[0].first;
    samples[4].first = samples[6].first = samples[2].first = {0.0, 0.5, 1.0};
    samples[4].first.x = -0.0;
    samples[5].first = samples[1].first;
    expect(samples, Fault::RepeatedSample, "samples 2 and 4 have the same centre");
    expect({samples[2], samples[4]}, Fault::RepeatedSample, "samples 0 and 1 have the same centre");
    samples[3].first.y = kNaN;
    samples[6].first.z = kInfinity;
    expect(samples, Fault::NotFinite, "the centre of sample 3 is not finite");
}

// Whatever the blocks of terms, the lanes of points and the width of registers.
TEST(Implicit, ThreadsOverArraysGiveTheBitsOfOneByOne) {
    InputSource in(44);
    for (const std::size_t terms : {4u, 15u, 16u, 17u, 70u}) {
        const Implicit field(cloud(in, terms));
        for (const std::size_t count : {0u, 1u, 15u, 16u, 17u, 200u}) {
            std::vector<Vector3> points(count);
            for (Vector3& p : points)
                p = in.index(9) == 0 ? Vector3(kNaN, kInfinity, -1e200) : in.vector(2.0);
            std::vector<double> values(count);
            std::vector<Vector3> gradients = points;
            inThreads(2, [&](int part) {
                const std::size_t begin = part == 0 ? 0 : count / 2;
                const std::size_t size = part == 0 ? count / 2 : count - count / 2;
                Vector3* const inPlace = gradients.data() + begin;
                field.evaluate(points.data() + begin, size, values.data() + begin);
                field.getGradient(inPlace, size, inPlace);
            });
            for (std::size_t i = 0; i < count; ++i) {
                EXPECT_TRUE(sameBits(values[i], field.evaluate(points[i]))) << i;
                EXPECT_TRUE(sameBits(gradients[i], field.getGradient(points[i]))) << i;
            }
            field.evaluate(points.data(), count, nullptr);
            field.getGradient(points.data(), count, nullptr);
        }
    }
}

}  // namespace
