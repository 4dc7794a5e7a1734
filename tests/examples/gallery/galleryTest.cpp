#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <geomKit/debugDraw/gkFuncBinder.h>
#include <gtest/gtest.h>
#include <pugixml.hpp>

#include "examples/gallery/SvgSink.h"
#include "examples/gallery/contours.h"
#include "examples/gallery/pictures.h"

namespace gallery {
namespace {

namespace fs = std::filesystem;

/// Reads the number that `text` begins with, if any, and cuts it off.
bool takeNumber(std::string_view& text, double* value) {
    const auto [end, status] =
        std::from_chars(text.data(), text.data() + text.size(), *value, std::chars_format::fixed);
    if (status != std::errc()) return false;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return true;
}

/// Where two texts part that may differ in the last digit of their numbers; empty when they do not.
std::string firstDifference(std::string_view a, std::string_view b) {
    constexpr double kLastDigit = 0.0101;
    while (!a.empty() && !b.empty()) {
        const std::string_view at = a.substr(0, 60);
        double x = 0.0;
        double y = 0.0;
        if (takeNumber(a, &x)) {
            if (!takeNumber(b, &y) || !(std::abs(x - y) <= kLastDigit)) return std::string(at);
            continue;
        }
        if (a.front() != b.front()) return std::string(at);
        a.remove_prefix(1);
        b.remove_prefix(1);
    }
    return std::string(a) + std::string(b);
}

/// Every place in the data of a path, which has M, L, h0 and Z only, must lie on the sheet.
void expectInside(const std::string& data, double width, double height) {
    std::istringstream places(data);
    for (char command = 0; places >> command;) {
        double x = 0.0;
        double y = 0.0;
        if (command == 'Z' || (command == 'h' && places >> x)) continue;
        ASSERT_TRUE((command == 'M' || command == 'L') && places >> x >> y) << data;
        EXPECT_TRUE(x >= 0.0 && x <= width && y >= 0.0 && y <= height) << x << ' ' << y;
    }
}

TEST(Gallery, PicturesAreThoseOfThePages) {
    for (const Picture& picture : pictures()) {
        SCOPED_TRACE(picture.name);
        std::ifstream stream(GEOMKIT_GALLERY_FOLDER "/" + std::string(picture.name) + ".svg");
        const std::string kept{std::istreambuf_iterator<char>(stream), {}};
        EXPECT_EQ(firstDifference(picture.draw(), kept), "");
    }
    const auto files = fs::directory_iterator(GEOMKIT_GALLERY_FOLDER);
    EXPECT_EQ(std::distance(begin(files), end(files)), static_cast<long>(pictures().size()));
}

TEST(Gallery, PicturesAreWellFormedSmallAndInsideTheirSheets) {
    constexpr std::size_t kMostBytes = 60000;
    for (const Picture& picture : pictures()) {
        SCOPED_TRACE(picture.name);
        const std::string text = picture.draw();
        EXPECT_LT(text.size(), kMostBytes);
        pugi::xml_document document;
        ASSERT_TRUE(document.load_string(text.c_str()));
        const pugi::xml_node svg = document.child("svg");
        const double width = svg.attribute("width").as_double();
        const double height = svg.attribute("height").as_double();
        for (const pugi::xml_node& path : svg.children("path")) {
            expectInside(path.attribute("d").value(), width, height);
        }
        EXPECT_NE(svg.child("path"), pugi::xml_node());
        EXPECT_NE(svg.child("text"), pugi::xml_node());
    }
}

/// A figure that no longer shows its case would go unnoticed when the pictures are written anew.
TEST(Gallery, EveryStatusIsShown) {
    const auto expectAll = [](const std::string& text, const std::vector<std::string>& all) {
        for (const std::string& status : all)
            EXPECT_NE(text.find(status), std::string::npos) << status;
    };
    expectAll(lines(), {"0: kMeet", "1: kParallel", "2: kCoincident", "3: kSkew"});
    expectAll(planes(), {"0: kHit", "1: kParallel", "2: kInPlane", "0: kMeet", "2: kCoincident"});
    expectAll(triangles(), {"0: kHit", "1: kMiss", "2: kInPlane", "3: kParallel", "4: kDegen"});
    expectAll(spheres(), {"numHits = 0", "numHits = 1", "numHits = 2"});
    expectAll(roots(), {"answers 1", "answers 2", "answers 3"});
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
    const auto plain = [](const Vector3& p) { return Pixel{p.x, p.y}; };
    std::string drawn;
    {
        SvgSink sink(100.0, 50.0, "a < b & c");
        sink.projection = plain;
        gkFuncBinder::drawPoint({1.0, 2.0, 0.0}, kRed);
        gkFuncBinder::clear();
        gkFuncBinder::drawPoints({{3.0, 4.0, 0.0}, {5.0, 6.0, 0.0}}, kBlue, kLine);
        gkFuncBinder::drawPoints({}, kBlue, kLine);
        gkFuncBinder::drawPoints({{7.0, 8.0, 0.0}}, -1, 99);
        gkFuncBinder::drawVector({10.0, 20.0, 0.0}, {10.0, 0.0, 0.0}, kBlue, 3.0);
        drawn = sink.document();
    }
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(drawn.c_str()));
    const pugi::xml_node svg = document.child("svg");
    EXPECT_STREQ(svg.child_value("title"), "a < b & c");
    EXPECT_FALSE(svg.child("circle"));
    std::vector<std::string> paths;
    for (const pugi::xml_node& path : svg.children("path"))
        paths.push_back(path.attribute("d").value());
    // The head of the arrow is the last one.
    EXPECT_EQ(paths, (std::vector<std::string>{"M3.00 4.00L5.00 6.00", "M7.00 8.00",
                                               "M10.00 20.00L40.00 20.00",
                                               "M40.00 20.00L31.00 23.60L31.00 16.40Z"}));
    gkFuncBinder::drawPoint({1.0, 2.0, 0.0}, kRed);  // reaches nobody
}

TEST(Contours, FollowTheLevelAndClose) {
    const Vector3 low(-2.0, -2.0, 0.0);
    const Vector3 high(2.0, 2.0, 0.0);
    const auto circle = [](const Vector3& p) { return p.length() - 1.3; };
    const auto closed = contours(circle, low, high, 80, 80, 0.0);
    ASSERT_EQ(closed.size(), 1U);
    EXPECT_EQ(closed[0].front(), closed[0].back());
    double length = 0.0;
    for (std::size_t i = 0; i < closed[0].size(); ++i) {
        EXPECT_NEAR(closed[0][i].length(), 1.3, 1e-3);
        if (i > 0) length += (closed[0][i] - closed[0][i - 1]).length();
    }
    EXPECT_NEAR(length, 2.0 * 3.141592653589793 * 1.3, 1e-2);

    // Both branches of a hyperbola; through the saddle itself when the level is its value.
    const auto saddle = [](const Vector3& p) { return p.x * p.y; };
    for (const double level : {0.5, -0.5, 0.0}) {
        const auto open = contours(saddle, low, high, 41, 41, level);
        EXPECT_EQ(open.size(), 2U) << level;
        for (const auto& curve : open) {
            for (const Vector3& p : curve)
                EXPECT_NEAR(saddle(p), level, 1e-2);
            for (const Vector3& end : {curve.front(), curve.back()}) {
                EXPECT_EQ(std::max(std::abs(end.x), std::abs(end.y)), 2.0);
            }
        }
    }
    EXPECT_TRUE(contours(circle, low, high, 8, 8, 5.0).empty());
}

}  // namespace
}  // namespace gallery
