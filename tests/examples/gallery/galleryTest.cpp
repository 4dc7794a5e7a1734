#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>

#include <geomKit/debugDraw/gkFuncBinder.h>
#include <gtest/gtest.h>

#include "examples/gallery/SvgSink.h"
#include "examples/gallery/pictures.h"

using namespace geomKit;

namespace gallery {
namespace {

namespace fs = std::filesystem;

/// Equal but for the last digit of numbers, which compilers and processors may round otherwise.
void expectAlike(const std::string& a, const std::string& b) {
    constexpr double kLastDigit = 0.0101;
    const std::regex decimal("-?[0-9]+\\.[0-9]+");
    EXPECT_EQ(std::regex_replace(a, decimal, "#"), std::regex_replace(b, decimal, "#"));
    const std::sregex_iterator end;
    std::sregex_iterator inB(b.begin(), b.end(), decimal);
    for (std::sregex_iterator inA(a.begin(), a.end(), decimal); inA != end && inB != end; ++inA) {
        ASSERT_NEAR(std::stod(inA->str()), std::stod(inB->str()), kLastDigit) << inA->position();
        ++inB;
    }
}

TEST(Gallery, PicturesAreThoseOfThePagesAndSmall) {
    constexpr std::size_t kMostBytes = 60000;
    for (const Picture& picture : pictures()) {
        SCOPED_TRACE(picture.name);
        const std::string text = picture.draw();
        std::ifstream stream(GEOMKIT_GALLERY_FOLDER "/" + std::string(picture.name) + ".svg");
        expectAlike(text, {std::istreambuf_iterator<char>(stream), {}});
        EXPECT_LT(text.size(), kMostBytes);
    }
    const auto files = fs::directory_iterator(GEOMKIT_GALLERY_FOLDER);
    EXPECT_EQ(std::distance(begin(files), end(files)), static_cast<long>(pictures().size()));
}

TEST(SvgSink, TakesWhatIsDrawnWhileItLives) {
    {
        SvgSink sink(100.0, 50.0, "a < b & c");
        const std::string blank = sink.document();
        EXPECT_NE(blank.find("a &lt; b &amp; c"), std::string::npos);
        sink.projection = [](const Vector3& p) { return Pixel{p.x, p.y}; };
        gkFuncBinder::drawPoint({1.0, 2.0, 0.0}, kRed);
        EXPECT_NE(sink.document(), blank);
        gkFuncBinder::clear();
        EXPECT_EQ(sink.document(), blank);
    }
    gkFuncBinder::drawPoint({1.0, 2.0, 0.0}, kRed);  // reaches nobody
}

}  // namespace
}  // namespace gallery
