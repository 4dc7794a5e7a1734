/// @file
/// The sample points that a triangle covers.
#pragma once

#include <algorithm>
#include <cmath>

#include "examples/common/Image.h"
#include "examples/common/draw.h"

namespace demo {

/// Calls visit(x, y, wa, wb, wc) for every integer point of a `columns` x `rows` grid in the
/// triangle, edges included, with its barycentric weights. Nothing for a triangle without area.
template <typename Visit>
void forEachSample(const Point2& a, const Point2& b, const Point2& c, int columns, int rows,
                   const Visit& visit) {
    const double det = (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
    if (!(std::abs(det) > 0.0)) return;
    const int x0 = clampedPixel(std::ceil(std::min({a.x, b.x, c.x})), columns);
    const int y0 = clampedPixel(std::ceil(std::min({a.y, b.y, c.y})), rows);
    const int x1 = clampedPixel(std::floor(std::max({a.x, b.x, c.x})) + 1.0, columns);
    const int y1 = clampedPixel(std::floor(std::max({a.y, b.y, c.y})) + 1.0, rows);
    for (int y = y0; y < y1; ++y) {
        for (int x = x0; x < x1; ++x) {
            const double dx = x - a.x;
            const double dy = y - a.y;
            const double wb = (dx * (c.y - a.y) - dy * (c.x - a.x)) / det;
            const double wc = (dy * (b.x - a.x) - dx * (b.y - a.y)) / det;
            const double wa = 1.0 - wb - wc;
            if (wa >= 0.0 && wb >= 0.0 && wc >= 0.0) visit(x, y, wa, wb, wc);
        }
    }
}

/// Where sample (0, 0) of a grid with `perPixel` samples a pixel side lies at the first pixel's
/// top left sample.
inline Point2 toSamples(const Point2& pixel, double perPixel) {
    return {pixel.x * perPixel - 0.5, pixel.y * perPixel - 0.5};
}

}  // namespace demo
