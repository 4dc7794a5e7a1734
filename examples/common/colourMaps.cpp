#include "examples/common/colourMaps.h"

#include <algorithm>
#include <array>

namespace demo {
namespace {

constexpr std::array<std::uint32_t, 8> kPalette = {0xD1495B, 0x00798C, 0xEDAE49, 0x5B4B8A,
                                                   0x66A182, 0xE4572E, 0x2E86DE, 0x8D6A9F};
constexpr std::array<std::uint32_t, 6> kSequential = {0x1B1B3A, 0x23466E, 0x1F7A8C,
                                                      0x4BAE8B, 0xB5D56A, 0xFDF3A7};
constexpr std::array<std::uint32_t, 5> kDiverging = {0x2A4B8D, 0x7FA8D1, 0xF4F1EA, 0xE59A78,
                                                     0xA8323E};

/// Between the stops, in the encoded space in which they are evenly spaced to the eye.
template <std::size_t N>
Colour between(const std::array<std::uint32_t, N>& stops, double t) {
    const double x = t > 0.0 ? std::min(t, 1.0) * static_cast<double>(N - 1) : 0.0;
    const std::size_t i = std::min(static_cast<std::size_t>(x), N - 2);
    const double f = x - static_cast<double>(i);
    const auto channel = [&](unsigned shift) {
        const double a = ((stops[i] >> shift) & 0xFFU) / 255.0;
        const double b = ((stops[i + 1] >> shift) & 0xFFU) / 255.0;
        return static_cast<float>(linearFromSrgb(a + (b - a) * f));
    };
    return {channel(16), channel(8), channel(0), 1.0F};
}

}  // namespace

Colour paletteColour(int index) {
    return hexColour(kPalette[static_cast<unsigned>(index) % kPalette.size()]);
}

Colour sequentialColour(double t) {
    return between(kSequential, t);
}

Colour divergingColour(double t) {
    return between(kDiverging, 0.5 + 0.5 * t);
}

}  // namespace demo
