/// @file
/// The mean of points.
#pragma once

#include <vector>

#include "geomKit/vAlgebra/Vector3.h"

namespace geomKit {

/// The mean of `pts`: their sum in order, from (0, 0, 0), times 1/n. No points give NaN. A pure
/// function, safe from any number of threads.
[[nodiscard]] inline Vector3 centroid(const std::vector<Vector3>& pts) noexcept {
    Vector3 sum;
    for (const Vector3& p : pts)
        sum += p;
    return sum * (1.0 / static_cast<double>(pts.size()));
}

}  // namespace geomKit
