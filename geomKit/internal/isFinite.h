/// @file
/// Internal: not installed.
#pragma once

#include <cmath>

#include "geomKit/vAlgebra/Vector3.h"

namespace geomKit::detail {

/// Neither NaN nor infinite in any component.
inline bool isFinite(const Vector3& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

}  // namespace geomKit::detail
