#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "geomKit/debugDraw/gkFuncBinder.h"
#include "geomKit/vAlgebra/vectorUtils.h"

using namespace geomKit;

namespace {

/// What the callbacks were called with, as text.
std::ostringstream drawn;

/// Makes every call of the interface; returns what they drew.
std::string drawEverything() {
    Vector3 a(1, 2, 3);
    Vector3 b(4, 5, 6);
    drawn.str("");
    gkFuncBinder::drawVector(a, b, 7, 0.5);
    dVec(a, b, 3);
    dVecSc(a, b, 4, 2.0);
    gkFuncBinder::drawPoint(a, 8);
    dPnt(b, 9);
    gkFuncBinder::drawPoints({a, b}, 1, 2);
    gkFuncBinder::clear();
    cl();
    return drawn.str();
}

TEST(GkFuncBinder, CallsReachTheRegisteredCallbacksOnly) {
    EXPECT_EQ(drawEverything(), "") << "null when the library is loaded";
    gkFuncBinder::registerDrawPoints([](const std::vector<Vector3>& points, int colour, int style) {
        drawn << points.size() << " points " << colour << style << ";";
    });
    EXPECT_EQ(drawEverything(), "") << "drawing points asks for the draw-point callback too";
    gkFuncBinder::registerDrawPoint(
        [](const Vector3& p, int colour) { drawn << p << colour << ";"; });
    EXPECT_EQ(drawEverything(), "(1, 2, 3)8;(4, 5, 6)9;2 points 12;");
    gkFuncBinder::registerDrawPoints(nullptr);
    EXPECT_EQ(drawEverything(), "(1, 2, 3)8;(4, 5, 6)9;") << "it alone draws no points";

    gkFuncBinder::iGet()->iReset();
    gkFuncBinder::registerClear([] { drawn << "clear;"; });
    gkFuncBinder::registerDrawVector(
        [](const Vector3& a, const Vector3& v, int colour, double scale) {
            drawn << a << v << colour << " " << scale << ";";
        });
    EXPECT_EQ(drawEverything(),
              "(1, 2, 3)(4, 5, 6)7 0.5;(1, 2, 3)(4, 5, 6)3 0.1;(1, 2, 3)(4, 5, 6)4 2;clear;clear;");
}

}  // namespace
