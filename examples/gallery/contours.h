/// @file
/// Lines along which a function of the plane has one value.
#pragma once

#include <functional>
#include <vector>

#include <geomKit/vAlgebra/Vector3.h>

namespace gallery {

/// The polylines on which `f` = `level`, from its values at the corners of nx by ny equal cells
/// between two corners of the plane z = 0. A closed one ends with its first point again.
std::vector<std::vector<geomKit::Vector3>> contours(
    const std::function<double(const geomKit::Vector3&)>& f, const geomKit::Vector3& low,
    const geomKit::Vector3& high, int nx, int ny, double level);

/// The same for values that are known: `values[i + j * (nx + 1)]` belongs to corner (i, j).
std::vector<std::vector<geomKit::Vector3>> contours(const std::vector<double>& values,
                                                    const geomKit::Vector3& low,
                                                    const geomKit::Vector3& high, int nx, int ny,
                                                    double level);

/// The corners that the values of the second form belong to, in their order.
std::vector<geomKit::Vector3> gridCorners(const geomKit::Vector3& low, const geomKit::Vector3& high,
                                          int nx, int ny);

}  // namespace gallery
