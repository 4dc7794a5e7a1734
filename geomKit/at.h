/// @file
/// Internal: not installed.
#pragma once

#include <cstddef>

/// An index that is not negative, as containers take it.
inline std::size_t at(int i) {
    return static_cast<std::size_t>(i);
}
