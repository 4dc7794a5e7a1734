/// @file
/// Hash and equality for tables with exact positions as keys.
#pragma once

#include <cstddef>

#include "geomKit/vAlgebra/Vector3.h"
#include "geomKit/vAlgebra/hashNumbers.h"

namespace geomKit {

/// The hash that goes with `ExactEqual`. `Vector3::operator==` is a tolerance, for which there is
/// no hash.
///
///     std::unordered_map<Vector3, int, ExactHash, ExactEqual> vertexAt;
struct ExactHash {
    [[nodiscard]] std::size_t operator()(const Vector3& v) const noexcept {
        const double numbers[3] = {v.x, v.y, v.z};
        return detail::hashNumbers(numbers, 3);
    }
};

/// `Vector3::equalsExactly`: both zeros are one key, and a NaN is never found again.
struct ExactEqual {
    [[nodiscard]] bool operator()(const Vector3& a, const Vector3& b) const noexcept {
        return a.equalsExactly(b);
    }
};

}  // namespace geomKit
