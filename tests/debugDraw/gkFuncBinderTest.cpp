#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "geomKit/debugDraw/gkFuncBinder.h"
#include "geomKit/vAlgebra/vectorUtils.h"

using namespace geomKit;

namespace {

using Binder = gkFuncBinder;

/// What the callbacks without a context were called with, as text.
std::ostringstream drawn;

/// Makes every call of the interface, of variables, sums and constants; returns what they drew.
std::string drawEverything() {
    Vector3 a(1, 2, 3), b(4, 5, 6);
    drawn.str("");
    Binder::drawVector(a, b, 7, 0.5);
    dVec(a, b, 3);
    dVec(a, b - a, 3);
    dVecSc(a, b, 4, 2.0);
    dVecSc({}, b, 4, 2.0);
    Binder::drawPoint(a, 8);
    dPnt(b, 9);
    dPnt(a + b, 1);
    Binder::drawPoints({a, b}, 1, 2);
    Binder::clear();
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
    Binder::registerDrawPoints([](const std::vector<Vector3>& points, int colour, int style) {
        drawn << points.size() << " points " << colour << style << ";";
    });
    EXPECT_EQ(drawEverything(), "") << "drawing points asks for the draw-point callback too";
    Binder::registerDrawPoint([](const Vector3& p, int colour) { drawn << p << colour << ";"; });
    EXPECT_EQ(drawEverything(), kPoints + "2 points 12;");
    Binder::registerDrawPoints(nullptr);
    EXPECT_EQ(drawEverything(), kPoints) << "it alone draws no points";

    Binder::iGet()->iReset();
    Binder::registerClear([] { drawn << "clear;"; });
    Binder::registerDrawVector([](const Vector3& a, const Vector3& v, int colour, double scale) {
        drawn << a << v << colour << " " << scale << ";";
    });
    EXPECT_EQ(drawEverything(), kVectors + "clear;clear;");
}

TEST(GkFuncBinder, EachCallbackHasItsOwnContextAndReplacesTheOtherKind) {
    std::string vectors, points, sets, clears;
    Binder::iGet()->iReset();
    Binder::registerDrawVector(
        [](const auto&, const auto&, int, double scale, void* in) {
            textOf(in) += std::to_string(static_cast<int>(10 * scale)) + ";";
        },
        &vectors);
    Binder::registerDrawPoints([](const auto&, int colour, int style,
                                  void* in) { textOf(in) += std::to_string(10 * colour + style); },
                               &sets);
    Binder::registerClear([](void* in) { textOf(in) += "clear;"; }, &clears);
    drawEverything();
    EXPECT_EQ(vectors, "5;1;1;20;20;");
    EXPECT_EQ(clears, "clear;clear;");
    EXPECT_EQ(sets, "") << "drawing points asks for the draw-point callback too";

    Binder::registerDrawPoint([](const auto&, int) { drawn << "replaced"; });
    Binder::registerDrawPoint(
        [](const auto&, int colour, void* in) { textOf(in) += std::to_string(colour); }, &points);
    Binder::registerClear(nullptr, &clears);
    EXPECT_EQ(drawEverything(), "");
    EXPECT_EQ(points, "891");
    EXPECT_EQ(sets, "12");
    EXPECT_EQ(clears, "clear;clear;") << "a callback that was taken back";
    Binder::registerDrawPoint([](const auto&, int colour) { drawn << colour; });
    EXPECT_EQ(drawEverything(), "891") << "a callback that replaced another";
    Binder::iGet()->iReset();
}

}  // namespace
