#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "geomKit/debugDraw/gkFuncBinder.h"
#include "geomKit/vAlgebra/vectorUtils.h"

using namespace geomKit;

namespace {

/// What the callbacks without a context were called with, as text.
std::ostringstream drawn;

/// Makes every call of the interface, of variables, sums and constants; returns what they drew.
std::string drawEverything() {
    Vector3 a(1, 2, 3), b(4, 5, 6);
    drawn.str("");
    gkFuncBinder::drawVector(a, b, 7, 0.5);
    dVec(a, b, 3);
    dVec(a, b - a, 3);
    dVecSc(a, b, 4, 2.0);
    dVecSc({}, b, 4, 2.0);
    gkFuncBinder::drawPoint(a, 8);
    dPnt(b, 9);
    dPnt(a + b, 1);
    gkFuncBinder::drawPoints({a, b}, 1, 2);
    gkFuncBinder::clear();
    cl();
    return drawn.str();
}

const std::string kVectors =
    "(1, 2, 3)(4, 5, 6)7 0.5;(1, 2, 3)(4, 5, 6)3 0.1;(1, 2, 3)(3, 3, 3)3 0.1;"
    "(1, 2, 3)(4, 5, 6)4 2;(0, 0, 0)(4, 5, 6)4 2;";
const std::string kPoints = "(1, 2, 3)8;(4, 5, 6)9;(5, 7, 9)1;";

/// The text that a callback's context points to.
std::string& textOf(void* context) {
    return *static_cast<std::string*>(context);
}

TEST(GkFuncBinder, CallsReachTheRegisteredCallbacksOnly) {
    EXPECT_EQ(drawEverything(), "") << "null when the library is loaded";
    gkFuncBinder::registerDrawPoints([](const std::vector<Vector3>& points, int colour, int style) {
        drawn << points.size() << " points " << colour << style << ";";
    });
    EXPECT_EQ(drawEverything(), "") << "drawing points asks for the draw-point callback too";
    gkFuncBinder::registerDrawPoint(
        [](const Vector3& p, int colour) { drawn << p << colour << ";"; });
    EXPECT_EQ(drawEverything(), kPoints + "2 points 12;");
    gkFuncBinder::registerDrawPoints(nullptr);
    EXPECT_EQ(drawEverything(), kPoints) << "it alone draws no points";

    gkFuncBinder::iGet()->iReset();
    gkFuncBinder::registerClear([] { drawn << "clear;"; });
    gkFuncBinder::registerDrawVector(
        [](const Vector3& a, const Vector3& v, int colour, double scale) {
            drawn << a << v << colour << " " << scale << ";";
        });
    EXPECT_EQ(drawEverything(), kVectors + "clear;clear;");
}

TEST(GkFuncBinder, EachCallbackHasItsOwnContextAndReplacesTheOtherKind) {
    std::string vectors, points, sets, clears;
    gkFuncBinder::iGet()->iReset();
    gkFuncBinder::registerDrawVector(
        [](const Vector3&, const Vector3&, int, double scale, void* in) {
            textOf(in) += std::to_string(static_cast<int>(10 * scale)) + ";";
        },
        &vectors);
    gkFuncBinder::registerDrawPoints(
        [](const auto&, int colour, int style, void* in) {
            textOf(in) += std::to_string(10 * colour + style);
        },
        &sets);
    gkFuncBinder::registerClear([](void* in) { textOf(in) += "clear;"; }, &clears);
    drawEverything();
    EXPECT_EQ(vectors, "5;1;1;20;20;");
    EXPECT_EQ(clears, "clear;clear;");
    EXPECT_EQ(sets, "") << "drawing points asks for the draw-point callback too";

    gkFuncBinder::registerDrawPoint([](const auto&, int) { drawn << "replaced"; });
    gkFuncBinder::registerDrawPoint(
        [](const auto&, int colour, void* in) { textOf(in) += std::to_string(colour); }, &points);
    gkFuncBinder::registerClear(nullptr, &clears);
    EXPECT_EQ(drawEverything(), "");
    EXPECT_EQ(points, "891");
    EXPECT_EQ(sets, "12");
    EXPECT_EQ(clears, "clear;clear;") << "a callback that was taken back";
    gkFuncBinder::registerDrawPoint([](const auto&, int colour) { drawn << colour; });
    EXPECT_EQ(drawEverything(), "891");
    EXPECT_EQ(points, "891") << "a callback that was replaced";
    gkFuncBinder::iGet()->iReset();
}

}  // namespace
