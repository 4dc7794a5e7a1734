/// @file
/// Shaded triangles with hidden surfaces removed.
#pragma once

#include <vector>

#include "examples/common/Camera.h"
#include "examples/common/Image.h"

namespace demo {

/// Several samples per pixel side, each holding the nearest triangle's colour: neighbouring
/// triangles join without seams and outlines come out smooth.
class DepthRaster {
public:
    DepthRaster(int width, int height, int samplesPerSide);

    struct Vertex {
        ScreenPoint at;
        Colour colour;
    };

    /// Colours run linearly over the triangle in the picture. A triangle with a vertex behind the
    /// eye is left out.
    void triangle(const Vertex& a, const Vertex& b, const Vertex& c);

    /// Lays the averaged samples over an image of the raster's own size.
    void drawInto(Image& image) const;

private:
    int width_;
    int height_;
    int samples_;
    Image colours_;
    std::vector<double> depths_;
};

}  // namespace demo
