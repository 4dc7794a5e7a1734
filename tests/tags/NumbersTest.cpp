// Numbers as text: an ordinary stream in the classic locale is the oracle, in a process whose own
// locale has decimal commas.
#include <cmath>
#include <cstring>
#include <limits>
#include <locale>
#include <random>

#include "tests/tags/Rig.h"
#include "tests/tags/documents.h"

namespace {

template <typename T, typename Bits>
T fromBits(Bits bits) {
    static_assert(sizeof(T) == sizeof bits);
    T value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

template <typename Bits, typename T>
Bits bitsOf(T value) {
    return fromBits<Bits>(value);
}

std::string bone(const std::string& x) {
    return "<Bone><tip x='" + x + "' y='1' z='2'/><children/></Bone>";
}

TEST(Numbers, vectorsAreWrittenAsAClassicStreamWritesThem) {
    std::vector<double> values = {0.0, -0.0, 0.1, -2.5, 1e15, 123456789012345678.0, 1e-5, 1e-4};
    using Limits = std::numeric_limits<double>;
    values.insert(values.end(), {Limits::max(), Limits::min(), Limits::denorm_min(), NAN, -NAN,
                                 Limits::infinity(), -Limits::infinity(), 0.5 + Limits::epsilon()});
    std::mt19937_64 random(1);
    for (int i = 0; i < 20000; ++i)
        values.push_back(fromBits<double>(random()));

    const CommaLocale comma;
    for (const double value : values) {
        std::ostringstream expected;
        expected.imbue(std::locale::classic());
        expected.precision(15);
        expected << value;
        std::ostringstream unused;
        OutTag tag(unused, "tag");
        tag.setAttr("x", value);
        ASSERT_EQ(tag.getAttr("x"), expected.str());
    }
}

TEST(Numbers, vectorsAreReadAsAClassicStreamReadsThem) {
    std::istringstream table(
        "1|-2.5|+3|1e3|1E+3|.5|5.|-.5e-3|1e400|-1e400|1e-400|4e-324|0x10|1,5|1.5,2|1.000.0|nan|inf|"
        "-inf|| | 7 |7 8|abc|1e|1e+|--1|- 1|.|-|1_0|1.5f|infinity|1e5 "
        "x|00012|1.7976931348623159e308");
    std::vector<std::string> texts;
    for (std::string text; std::getline(table, text, '|');)
        texts.push_back(text);
    std::mt19937_64 random(2);
    const std::string alphabet = "0123456789+-.eE ,xn";
    for (int i = 0; i < 20000; ++i) {
        std::string text;
        for (auto size = random() % 7; size > 0; --size)
            text += alphabet[random() % alphabet.size()];
        texts.push_back(text);
    }
    const CommaLocale comma;
    for (const std::string& text : texts) {
        std::istringstream stream(text);
        stream.imbue(std::locale::classic());
        double expected = 0.0;
        std::string rest;
        const bool wasRead = static_cast<bool>(stream >> expected);
        const bool isClean = wasRead && !(stream >> rest);

        LoadReport report;
        const auto object = loadedAs<Bone>(bone(text), &report);
        ASSERT_EQ(bitsOf<std::uint64_t>(object->tip.x), bitsOf<std::uint64_t>(expected)) << text;
        ASSERT_EQ(report.isClean(), isClean) << text << '\n' << report.text();
    }
}

TEST(Numbers, floatsAndIntsLoadBackBitForBit) {
    std::vector<float> floats = {0.0f,     -0.0f,     1e-45f, 3.4028235e38f,
                                 INFINITY, -INFINITY, NAN,    -NAN};
    for (const std::uint32_t nan : {0x7fc00001u, 0xffc12345u, 0x7f800001u, 0xffbfffffu}) {
        floats.push_back(fromBits<float>(nan));
    }
    std::mt19937_64 random(3);
    for (int i = 0; i < 20000; ++i) {
        floats.push_back(fromBits<float>(static_cast<std::uint32_t>(random())));
    }
    MeshFunction2D function(false);
    function.normaldots = floats;
    function.facets = {0, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};

    const CommaLocale comma;
    const auto loaded = loadedAs<MeshFunction2D>(saved(function));
    EXPECT_EQ(loaded->facets, function.facets);
    ASSERT_EQ(loaded->normaldots.size(), floats.size());
    EXPECT_EQ(std::memcmp(loaded->normaldots.data(), floats.data(), 4 * floats.size()), 0);
}

}  // namespace
