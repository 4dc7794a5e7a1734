/// @file
/// Internal: not installed.
#pragma once

#include <cstddef>

namespace geomKit::detail {

/// An index that is not negative, as containers take it.
inline std::size_t toIndex(int i) {
    return static_cast<std::size_t>(i);
}

}  // namespace geomKit::detail
