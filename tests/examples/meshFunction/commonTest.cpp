#include <cmath>

#include <geomKit/debugDraw/gkFuncBinder.h>
#include <geomKit/vAlgebra/vectorUtils.h>
#include <gtest/gtest.h>

#include "examples/common/Camera.h"
#include "examples/common/DebugSink.h"
#include "examples/common/DepthRaster.h"
#include "examples/common/commandLine.h"

using namespace demo;

namespace {

constexpr Colour kBlack{0.0F, 0.0F, 0.0F, 1.0F};
constexpr Colour kWhite{1.0F, 1.0F, 1.0F, 1.0F};
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

/// The area that white covers on black, in pixels.
double whiteArea(const Image& image) {
    double area = 0.0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            area += static_cast<double>(image.at(x, y).g);
        }
    }
    return area;
}

/// The area of a white shape on black.
template <typename Draw, typename... Arguments>
double covered(Draw draw, Arguments... arguments) {
    Image image(64, 64, kBlack);
    draw(image, arguments..., kWhite);
    return whiteArea(image);
}

}  // namespace

TEST(Draw, shapesCoverTheirArea) {
    const Point2 middle{30.3, 31.6};
    const double length = std::sqrt(39.8 * 39.8 + 30.6 * 30.6);
    EXPECT_NEAR(covered(drawDisc, middle, 12.0), M_PI * 144.0, 4.5);
    EXPECT_NEAR(covered(drawRing, middle, 20.0, 3.0), M_PI * 120.0, 3.8);
    EXPECT_NEAR(covered(drawLine, Point2{10.2, 12.7}, Point2{50.0, 43.3}, 4.0),
                4.0 * length + M_PI * 4.0, 2.1);
    EXPECT_NEAR(covered(drawTriangle, Point2{5, 7}, Point2{58, 20}, Point2{21, 55}), 1168.0, 11.0);
    EXPECT_NEAR(covered(drawDisc, Point2{0.0, 30.0}, 12.0), M_PI * 72.0, 2.2);
    EXPECT_EQ(covered(drawDisc, Point2{1e300, -1e300}, 12.0), 0.0);
    EXPECT_EQ(covered(drawLine, Point2{kNaN, 3.0}, Point2{30.0, kInf}, 4.0), 0.0);
}

TEST(Draw, aTranslucentLineIsLaidDownOnce) {
    Image image(32, 32, kBlack);
    drawPolyline(image, {{4, 16}, {28, 16}, {4, 16}}, 6.0, {1.0F, 1.0F, 1.0F, 0.5F});
    EXPECT_NEAR(image.at(16, 16).g, 0.5, 1e-6);
}

TEST(DepthRaster, theNearestTriangleWinsInAnyOrderAndCutsWherePlanesCross) {
    // A red plane at depth 2 and a white one that comes nearer to the right: they cross at x = 32.
    const auto quad = [](DepthRaster& raster, double left, double right, const Colour& colour) {
        const DepthRaster::Vertex a{{0, 0, left}, colour};
        const DepthRaster::Vertex b{{64, 0, right}, colour};
        const DepthRaster::Vertex c{{64, 64, right}, colour};
        const DepthRaster::Vertex d{{0, 64, left}, colour};
        raster.triangle(a, b, c);
        raster.triangle(a, c, d);
    };
    for (const bool whiteFirst : {false, true}) {
        DepthRaster raster(64, 64, 2);
        if (whiteFirst) quad(raster, 4.0, 4.0 / 3.0, kWhite);
        quad(raster, 2.0, 2.0, {1.0F, 0.0F, 0.0F, 1.0F});
        if (!whiteFirst) quad(raster, 4.0, 4.0 / 3.0, kWhite);
        Image image(64, 64, kBlack);
        raster.drawInto(image);
        EXPECT_NEAR(whiteArea(image), 32.0 * 64.0, 64.0);
        EXPECT_GT(image.at(40, 10).g, 0.99F);
        EXPECT_LT(image.at(24, 10).g, 0.01F);
        EXPECT_GT(image.at(24, 10).r, 0.99F);
    }
}

TEST(Camera, fitsItsPointsAndFindsThemAgain) {
    std::vector<Vector3> points;
    points.reserve(8);
    for (int i = 0; i < 8; ++i) {
        points.emplace_back(i & 1 ? 3.0 : -2.0, i & 2 ? 1.0 : 0.5, i & 4 ? 4.0 : -1.0);
    }
    const Camera camera =
        cameraAround(points, UVector3(0.4, 0.3, 1.0), UVector3(0, 1, 0), 3.0, 200, 100, 10);
    double low[2] = {kInf, kInf};
    double high[2] = {-kInf, -kInf};
    for (const Vector3& p : points) {
        const Point2 q = camera.pixel(p);
        const double at[2] = {q.x, q.y};
        for (int k = 0; k < 2; ++k) {
            low[k] = std::min(low[k], at[k]);
            high[k] = std::max(high[k], at[k]);
        }
        EXPECT_GT(camera.project(p).depth, 0.0);
        const auto back = camera.onPlane(q, p, UVector3(0.1, 1.0, 0.2));
        ASSERT_TRUE(back);
        EXPECT_LE(dist(*back, p), 1e-9);
    }
    EXPECT_NEAR(low[0] + high[0], 200.0, 1e-9);
    EXPECT_NEAR(low[1] + high[1], 100.0, 1e-9);
    EXPECT_NEAR(std::min(low[0], low[1]), 10.0, 1e-9);
}

TEST(DebugSink, drawsWhatTheHooksReceiveWhileItLives) {
    Image image(64, 64, kBlack);
    Vector3 origin(1.0, 2.0, 0.0);
    Vector3 along(30.0, 0.0, 0.0);
    {
        DebugSink sink(image, [](const Vector3& p) { return Point2{10.0 * p.x, 10.0 * p.y}; });
        dPnt(origin, 2);
        EXPECT_GT(image.at(10, 20).r, 0.1F);
        cl();
        EXPECT_EQ(whiteArea(image), 0.0);
        dVec(origin, along, 2);
        EXPECT_GT(image.at(25, 20).r, 0.1F) << "the vector is drawn at a tenth of its length";
        EXPECT_LT(image.at(50, 20).r, 0.01F);
        gkFuncBinder::drawPoints({origin, Vector3(1.0, 6.0, 0.0)}, 2, DebugSink::kPolyline);
        EXPECT_GT(image.at(10, 40).r, 0.1F);
        EXPECT_EQ(sink.calls(), 4);
    }
    image.fill(kBlack);
    dPnt(origin, 2);
    EXPECT_EQ(whiteArea(image), 0.0);
}

TEST(CommandLine, acceptsWhatItPromisesOnly) {
    const std::pair<std::vector<const char*>, bool> cases[] = {
        {{"program", "model.obj", "--size", "320", "--out", "here"}, true},
        {{"program", "--help"}, true},
        {{"program", "--size"}, false},
        {{"program", "--size", "31"}, false},
        {{"program", "--size", "99999999999999"}, false},
        {{"program", "--size", "320px"}, false},
        {{"program", "--sise", "320"}, false},
        {{"program", "one.obj", "two.obj"}, false},
    };
    for (const auto& [words, isValid] : cases) {
        Options options;
        std::string error;
        EXPECT_EQ(parseCommandLine(static_cast<int>(words.size()), words.data(), &options, &error),
                  isValid);
        EXPECT_EQ(error.empty(), isValid) << words.back();
    }
}
