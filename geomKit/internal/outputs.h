/// @file
/// Output arrays that may be null. Internal: not installed.
#pragma once

#include <cstddef>

namespace geomKit::detail {

/// Element i of an output array, null if the array is.
template <typename T>
constexpr T* offset(T* output, std::size_t i) noexcept {
    return output != nullptr ? output + i : nullptr;
}

}  // namespace geomKit::detail
