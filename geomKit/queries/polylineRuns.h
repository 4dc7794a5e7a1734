/// @file
/// How the segments of a long polyline are halved into runs. Internal: not installed.
#pragma once

#include <cstdint>

namespace geomKit::detail {

/// Runs of fewer segments are scanned, longer ones halved.
inline constexpr std::int32_t kShortRun = 10;

/// Bounds the rounding of `distSqToLineSegment` and of the distance to a box, in units of the
/// squared distance to the far side of the box: 128 units in the last place, twice what the
/// worst-case analysis of the formulas needs.
inline constexpr double kRunRounding = 0x1p-46;

/// Whether the run from vertex `first` to vertex `last` is scanned.
constexpr bool isShortRun(std::int32_t first, std::int32_t last) {
    return last - first < kShortRun;
}

/// The vertex at which that run is halved.
constexpr std::int32_t middleOfRun(std::int32_t first, std::int32_t last) {
    return first + (last - first) / 2;
}

}  // namespace geomKit::detail
