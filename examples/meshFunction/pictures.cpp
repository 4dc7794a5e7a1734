#include "examples/meshFunction/pictures.h"

#include <algorithm>
#include <cmath>

#include <geomKit/debugDraw/gkFuncBinder.h>

#include "examples/common/DebugSink.h"
#include "examples/common/colourMaps.h"

using namespace geomKit;

namespace demo {
namespace {

const Colour kGlazeLight = hexColour(0xF6EFE2);
const Colour kGlazeDark = hexColour(0x2B7A8B);
const Colour kPaper = hexColour(0xFBF8F1);

/// Lays the average of what `colourOf` gives for each pixel's known samples over the background.
template <typename ColourOf>
Image picture(const Field& field, const Image& background, const ColourOf& colourOf) {
    Image image = background;
    const int count = field.perPixel * field.perPixel;
    for (int y = 0; y < field.height; ++y) {
        for (int x = 0; x < field.width; ++x) {
            Colour sum{0.0F, 0.0F, 0.0F, 0.0F};
            int known = 0;
            for (int i = 0; i < count; ++i) {
                const FieldSample& sample = field.at(x, y, i);
                if (!sample.isKnown) continue;
                const Colour c = colourOf(sample);
                sum = {sum.r + c.r, sum.g + c.g, sum.b + c.b, 1.0F};
                ++known;
            }
            if (known == 0) continue;
            image.blend(x, y, scaled(sum, 1.0 / known), static_cast<double>(known) / count);
        }
    }
    return image;
}

bool isDarkCell(const ktNM::vect2<double>& uv, double cellsPerUnit) {
    const double cell = std::floor(uv.u * cellsPerUnit) + std::floor(uv.v * cellsPerUnit);
    return std::fmod(cell, 2.0) != 0.0;
}

/// Lit from the eye: matt, darker towards the outline, with a soft highlight.
Colour shaded(const Colour& colour, double cosine) {
    const double c = std::clamp(cosine, 0.0, 1.0);
    const Colour matt = scaled(colour, 0.16 + 0.84 * c);
    return mix(matt, Colour{1.0F, 1.0F, 1.0F, 1.0F}, 0.22 * std::pow(c, 60.0));
}

Colour glaze(const FieldSample& sample, double cellsPerUnit) {
    return isDarkCell(sample.value, cellsPerUnit) ? kGlazeDark : kGlazeLight;
}

}  // namespace

Image checkerPicture(const Field& field, double cellsPerUnit, const Image& background) {
    return picture(field, background, [&](const FieldSample& sample) {
        return shaded(glaze(sample, cellsPerUnit), sample.number);
    });
}

Image cosinePicture(const Field& field, const Image& background) {
    return picture(field, background,
                   [](const FieldSample& sample) { return sequentialColour(sample.number); });
}

Image curvaturePicture(const Field& curvature, double most, const Image& background) {
    return picture(curvature, background, [most](const FieldSample& sample) {
        // Curvatures are negative where the surface bulges towards its normal.
        const double mean = -0.5 * (sample.value.u + sample.value.v);
        return shaded(divergingColour(mean / most), sample.number);
    });
}

Image extrapolatedPicture(const Field& field, const Field& outside, double cellsPerUnit,
                          const Image& background) {
    const Image around = picture(outside, background, [](const FieldSample& sample) {
        const double t = std::asinh(-sample.number) / std::asinh(100.0);
        const bool isSecondBand = std::fmod(std::floor(t * 12.0), 2.0) != 0.0;
        return scaled(sequentialColour(1.0 - t), isSecondBand ? 0.86 : 1.0);
    });
    return checkerPicture(field, cellsPerUnit, around);
}

Image palePicture(const Image& picture) {
    Image pale = picture;
    for (int y = 0; y < pale.height(); ++y) {
        for (int x = 0; x < pale.width(); ++x) {
            pale.at(x, y) = mix(pale.at(x, y), kPaper, 0.7);
        }
    }
    return pale;
}

int drawBoundaries(const MeshFunction2D& function, Image& picture) {
    DebugSink sink(picture, [](const Vector3& p) { return Point2{p.x, p.y}; });
    sink.lineWidth = 2.0;
    int colour = 0;
    for (const auto& boundary : function.boundaries) {
        const std::vector<Vector3>& points = boundary->points;
        gkFuncBinder::drawPoints(points, colour, DebugSink::kPolyline);
        gkFuncBinder::drawPoint(points.front(), colour);
        const std::size_t middle = points.size() / 2;
        if (middle + 1 < points.size()) {
            const Vector3 along = (points[middle + 1] - points[middle]).normalize();
            gkFuncBinder::drawVector(points[middle], along, colour, 2.0 * sink.arrowHead);
        }
        ++colour;
    }
    return sink.calls();
}

}  // namespace demo
