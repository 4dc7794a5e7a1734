#include "examples/common/DebugSink.h"

#include <utility>

#include <geomKit/debugDraw/gkFuncBinder.h>

#include "examples/common/colourMaps.h"

namespace demo {
namespace {

DebugSink* activeSink = nullptr;

}  // namespace

struct DebugSink::Callbacks {
    static void drawVector(const Vector3& origin, const Vector3& vector, int colour, double scale) {
        DebugSink& sink = receive();
        drawArrow(sink.image_, sink.projection_(origin), sink.projection_(origin + vector * scale),
                  sink.lineWidth, sink.arrowHead, paletteColour(colour));
    }

    static void drawPoint(const Vector3& point, int colour) {
        DebugSink& sink = receive();
        drawDisc(sink.image_, sink.projection_(point), sink.dotRadius, paletteColour(colour));
    }

    static void drawPoints(const std::vector<Vector3>& points, int colour, int style) {
        DebugSink& sink = receive();
        std::vector<Point2> pixels;
        pixels.reserve(points.size());
        for (const Vector3& p : points) {
            pixels.push_back(sink.projection_(p));
        }
        if (style != kDots) {
            drawPolyline(sink.image_, pixels, sink.lineWidth, paletteColour(colour));
        }
        if (style != kPolyline) {
            for (const Point2& p : pixels) {
                drawDisc(sink.image_, p, sink.dotRadius, paletteColour(colour));
            }
        }
    }

    static void clear() {
        DebugSink& sink = receive();
        sink.image_ = sink.background_;
    }

    static DebugSink& receive() {
        ++activeSink->calls_;
        return *activeSink;
    }
};

DebugSink::DebugSink(Image& image, Projection projection)
    : image_(image), background_(image), projection_(std::move(projection)) {
    activeSink = this;
    gkFuncBinder::registerDrawVector(&Callbacks::drawVector);
    gkFuncBinder::registerDrawPoint(&Callbacks::drawPoint);
    gkFuncBinder::registerDrawPoints(&Callbacks::drawPoints);
    gkFuncBinder::registerClear(&Callbacks::clear);
}

DebugSink::~DebugSink() {
    if (activeSink != this) return;
    gkFuncBinder::iGet()->iReset();
    activeSink = nullptr;
}

}  // namespace demo
