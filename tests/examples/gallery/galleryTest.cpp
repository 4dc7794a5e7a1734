#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>

#include <geomKit/debugDraw/gkFuncBinder.h>
#include <gtest/gtest.h>
#include <pugixml.hpp>

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

TEST(SvgSink, NumbersAreFixedRoundHalvesUpAndHaveNoNegativeZero) {
    EXPECT_EQ(number(1234.5678, 2), "1234.57");
    EXPECT_EQ(number(-0.004, 2), "0.00");
    EXPECT_EQ(number(-1.5, 0), "-1");
    // The last bits of a half do not decide.
    for (const double half : {0.125, std::nextafter(0.125, 0.0), std::nextafter(0.125, 1.0)}) {
        EXPECT_EQ(number(half, 2), "0.13");
    }
}

TEST(SvgSink, WritesWhatComesThroughTheHooksWhileItLives) {
    std::string drawn;
    {
        SvgSink sink(100.0, 50.0, "a < b & c");
        sink.projection = [](const Vector3& p) { return Pixel{p.x, p.y}; };
        gkFuncBinder::drawPoint({1.0, 2.0, 0.0}, kRed);
        gkFuncBinder::clear();
        gkFuncBinder::drawPoints({{3.0, 4.0, 0.0}, {5.0, 6.0, 0.0}}, kBlue, kLine);
        gkFuncBinder::drawPoints({}, kBlue, kLine);
        gkFuncBinder::drawPoints({{7.0, 8.0, 0.0}}, -1, 99);
        gkFuncBinder::drawVector({10.0, 20.0, 0.0}, {10.0, 0.0, 0.0}, kBlue, 3.0);
        drawn = sink.document();
    }
    gkFuncBinder::drawPoint({1.0, 2.0, 0.0}, kRed);  // reaches nobody
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(drawn.c_str()));
    const pugi::xml_node svg = document.child("svg");
    EXPECT_STREQ(svg.child_value("title"), "a < b & c");
    EXPECT_FALSE(svg.child("circle"));
    std::string paths;
    for (const pugi::xml_node& path : svg.children("path"))
        paths += std::string(path.attribute("d").value()) + '\n';
    // The head of the arrow is the last one.
    EXPECT_EQ(paths,
              "M3.00 4.00L5.00 6.00\nM7.00 8.00\nM10.00 20.00L40.00 20.00\n"
              "M40.00 20.00L31.00 23.60L31.00 16.40Z\n");
}

}  // namespace
}  // namespace gallery
