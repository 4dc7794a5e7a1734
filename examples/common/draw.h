/// @file
/// Anti-aliased lines, discs and triangles in an `Image`. Coordinates are pixels, x to the right
/// and y down; what lies outside the image or is not a number is not drawn.
#pragma once

#include <vector>

#include "examples/common/Image.h"

namespace demo {

/// A position in a picture, or texture coordinates.
struct Point2 {
    double x = 0.0;
    double y = 0.0;
};

void drawLine(Image& image, const Point2& a, const Point2& b, double width, const Colour& colour);

/// Joined by round corners. A translucent colour is laid down once, also where the line meets
/// itself.
void drawPolyline(Image& image, const std::vector<Point2>& points, double width,
                  const Colour& colour);

void drawDisc(Image& image, const Point2& centre, double radius, const Colour& colour);

/// A circle of the given line width.
void drawRing(Image& image, const Point2& centre, double radius, double width,
              const Colour& colour);

void drawTriangle(Image& image, const Point2& a, const Point2& b, const Point2& c,
                  const Colour& colour);

/// A line that ends in a head of the given length at `b`.
void drawArrow(Image& image, const Point2& a, const Point2& b, double width, double head,
               const Colour& colour);

}  // namespace demo
