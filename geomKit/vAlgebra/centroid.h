/// @file
/// The mean of points.
#pragma once

#include <cstddef>
#include <vector>

#include "geomKit/vAlgebra/Vector3.h"

namespace geomKit {

/// The mean of `pts`: their sum in order, from (0, 0, 0), times 1/n. No points give NaN. A pure
/// function, safe from any number of threads.
[[nodiscard]] inline Vector3 centroid(const Vector3* pts, std::size_t count) noexcept {
    Vector3 sum;
    for (std::size_t i = 0; i < count; ++i)
        sum += pts[i];
    return sum * (1.0 / static_cast<double>(count));
}
[[nodiscard]] inline Vector3 centroid(const std::vector<Vector3>& pts) noexcept {
    return centroid(pts.data(), pts.size());
}

}  // namespace geomKit
