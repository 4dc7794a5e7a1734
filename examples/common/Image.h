/// @file
/// `Image`, the picture that the host programs draw into.
#pragma once

#include <vector>

#include "examples/common/Colour.h"

namespace demo {

/// A rectangle of colours. Pixel (0, 0) is at the top left and covers the unit square whose centre
/// is (0.5, 0.5).
class Image {
public:
    Image(int width, int height, const Colour& fill);

    int width() const { return width_; }
    int height() const { return height_; }

    /// The caller keeps x and y inside.
    Colour& at(int x, int y) { return pixels_[index(x, y)]; }
    const Colour& at(int x, int y) const { return pixels_[index(x, y)]; }

    /// Lays `colour` over a pixel of which it covers the fraction `coverage`.
    void blend(int x, int y, const Colour& colour, double coverage = 1.0);

    void fill(const Colour& colour);

private:
    std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
               static_cast<std::size_t>(x);
    }

    int width_;
    int height_;
    std::vector<Colour> pixels_;
};

/// The pixel column or row of a position, clamped to [0, limit]; 0 for NaN.
int clampedPixel(double position, int limit);

/// A background that is lightest at its middle and darkens softly to the corners.
Image vignette(int width, int height, const Colour& middle, const Colour& corner);

}  // namespace demo
