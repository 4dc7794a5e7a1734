// Numbers as text: an ordinary stream in the classic locale is the oracle, in a process whose own
// locale has decimal commas.
#include <cstring>
#include <fstream>
#include <locale>

#include "tests/support.h"
#include "tests/tags/Rig.h"
#include "tests/tags/documents.h"

using namespace geomKit;

namespace {

/// The given numbers and many of random bits, with every kind of NaN.
template <typename T>
std::vector<T> numbers(std::initializer_list<T> given) {
    std::vector<T> values = given;
    InputSource in(1);
    for (int i = 0; i < 20000; ++i) {
        const std::uint64_t bits = in.bits();
        std::memcpy(&values.emplace_back(), &bits, sizeof(T));
    }
    return values;
}

TEST(Numbers, VectorsAreWrittenAsAClassicStreamWritesThem) {
    using Limits = std::numeric_limits<double>;
    const std::vector<double> values = numbers<double>(
        {0.0, -0.0, 0.1, -2.5, 1e15, 123456789012345678.0, 1e-5, 1e-4, Limits::max(), Limits::min(),
         Limits::denorm_min(), kNaN, -kNaN, kInfinity, -kInfinity, 0.5 + Limits::epsilon()});
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

TEST(Numbers, VectorsAreReadAsAClassicStreamReadsThem) {
    std::ifstream table(GEOMKIT_TEST_FOLDER "/numbers.txt");
    std::vector<std::string> texts;
    for (std::string text; std::getline(table, text);)
        texts.push_back(text);
    ASSERT_GT(texts.size(), 30u);
    InputSource in(2);
    const std::string alphabet = "0123456789+-.eE ,xn";
    for (int i = 0; i < 20000; ++i) {
        std::string text;
        for (int size = in.index(7); size > 0; --size)
            text += alphabet[static_cast<std::size_t>(in.index(19))];
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
        const auto object =
            loadedAs<Bone>("<Bone><tip x='" + text + "' y='1' z='2'/><children/></Bone>", &report);
        ASSERT_EQ(std::memcmp(&object->tip.x, &expected, sizeof expected), 0) << text;
        ASSERT_EQ(report.isClean(), isClean) << text << '\n' << report.text();
    }
}

TEST(Numbers, FloatsAndIntsLoadBackBitForBit) {
    const std::vector<float> floats =
        numbers<float>({0.0f, -0.0f, 1e-45f, 3.4028235e38f, INFINITY, -INFINITY, NAN, -NAN});
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
