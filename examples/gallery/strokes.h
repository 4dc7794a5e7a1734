/// @file
/// Shapes drawn through the debug hooks.
#pragma once

#include <vector>

#include <geomKit/vAlgebra/UVector3.h>
#include <geomKit/vAlgebra/Vector3.h>

#include "examples/gallery/SvgSink.h"

namespace gallery {

inline constexpr double kFullTurn = 6.283185307179586;

void dot(const geomKit::Vector3& p, int colour);
void arrow(const geomKit::Vector3& from, const geomKit::Vector3& vector, int colour);
void line(const geomKit::Vector3& a, const geomKit::Vector3& b, int colour, Style style = kLine);
void path(const std::vector<geomKit::Vector3>& points, int colour, Style style = kLine);

/// The points centre + e1 cos t + e2 sin t, the first one again at the end.
std::vector<geomKit::Vector3> ring(const geomKit::Vector3& centre, const geomKit::Vector3& e1,
                                   const geomKit::Vector3& e2, int count = 64);
/// The corners of a square of the plane through `centre`, `size` from its middle to its sides.
std::vector<geomKit::Vector3> square(const geomKit::Vector3& centre,
                                     const geomKit::UVector3& normal, double size);
/// The edges of the box between two corners.
void boxEdges(const geomKit::Vector3& low, const geomKit::Vector3& high, int colour, Style style);
/// The corners of a rectangle in the xy plane.
std::vector<geomKit::Vector3> rectangle(const geomKit::Vector3& low, const geomKit::Vector3& high);
/// Thin lines of the plane z = 0 around the origin, one unit apart.
void floorGrid(int size);

/// Some pseudo-random number in [-1, 1] for each index, the same everywhere.
double scatter(int index);

}  // namespace gallery
