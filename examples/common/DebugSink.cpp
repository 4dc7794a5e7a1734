#include "examples/common/DebugSink.h"

#include <utility>

#include <geomKit/debugDraw/gkFuncBinder.h>

#include "examples/common/colourMaps.h"

using namespace geomKit;

namespace demo {

struct DebugSink::Callbacks {
    static void drawVector(const Vector3& origin, const Vector3& vector, int colour, double scale,
                           void* context) {
        DebugSink& sink = receive(context);
        drawArrow(sink.image_, sink.projection_(origin), sink.projection_(origin + vector * scale),
                  sink.lineWidth, sink.arrowHead, paletteColour(colour));
    }

    static void drawPoint(const Vector3& point, int colour, void* context) {
        DebugSink& sink = receive(context);
        drawDisc(sink.image_, sink.projection_(point), sink.dotRadius, paletteColour(colour));
    }

    static void drawPoints(const std::vector<Vector3>& points, int colour, int style,
                           void* context) {
        DebugSink& sink = receive(context);
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

    static void clear(void* context) {
        DebugSink& sink = receive(context);
        sink.image_ = sink.background_;
    }

    static DebugSink& receive(void* context) {
        auto& sink = *static_cast<DebugSink*>(context);
        ++sink.calls_;
        return sink;
    }
};

DebugSink::DebugSink(Image& image, Projection projection)
    : image_(image), background_(image), projection_(std::move(projection)) {
    gkFuncBinder::registerDrawVector(&Callbacks::drawVector, this);
    gkFuncBinder::registerDrawPoint(&Callbacks::drawPoint, this);
    gkFuncBinder::registerDrawPoints(&Callbacks::drawPoints, this);
    gkFuncBinder::registerClear(&Callbacks::clear, this);
}

DebugSink::~DebugSink() {
    gkFuncBinder::iGet()->iReset();
}

}  // namespace demo
