/// @file
/// A host's side of the debug drawing hooks.
#pragma once

#include <functional>

#include <geomKit/vAlgebra/Vector3.h>

#include "examples/common/draw.h"

namespace demo {

/// While it lives, whatever is drawn through `gkFuncBinder` appears in its image.
///
/// Colours are indices into `paletteColour`. There is one registry, so one sink at a time. Not for
/// concurrent drawing.
class DebugSink {
public:
    /// From the drawing's own coordinates to pixels.
    using Projection = std::function<Point2(const geomKit::Vector3&)>;

    /// How `drawPoints` shows its points.
    enum Style { kDots = 0, kPolyline = 1, kPolylineWithDots = 2 };

    /// The image must outlive the sink. `clear()` brings back what it holds now.
    DebugSink(Image& image, Projection projection);
    ~DebugSink();
    DebugSink(const DebugSink&) = delete;
    DebugSink& operator=(const DebugSink&) = delete;

    double lineWidth = 2.0;
    double dotRadius = 3.0;
    double arrowHead = 8.0;

    /// Calls received so far.
    int calls() const { return calls_; }

private:
    struct Callbacks;

    Image& image_;
    Image background_;
    Projection projection_;
    int calls_ = 0;
};

}  // namespace demo
