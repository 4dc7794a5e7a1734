#include "examples/common/Colour.h"

#include <algorithm>
#include <cmath>

namespace demo {

double linearFromSrgb(double encoded) {
    return encoded <= 0.04045 ? encoded / 12.92 : std::pow((encoded + 0.055) / 1.055, 2.4);
}

double srgbFromLinear(double linear) {
    return linear <= 0.0031308 ? linear * 12.92 : 1.055 * std::pow(linear, 1.0 / 2.4) - 0.055;
}

Colour hexColour(std::uint32_t rrggbb, float alpha) {
    const auto channel = [rrggbb](unsigned shift) {
        return static_cast<float>(linearFromSrgb(((rrggbb >> shift) & 0xFFU) / 255.0));
    };
    return {channel(16), channel(8), channel(0), alpha};
}

Colour mix(const Colour& a, const Colour& b, double t) {
    const auto w = static_cast<float>(std::clamp(t, 0.0, 1.0));
    return {a.r + (b.r - a.r) * w, a.g + (b.g - a.g) * w, a.b + (b.b - a.b) * w,
            a.a + (b.a - a.a) * w};
}

Colour scaled(const Colour& colour, double light) {
    const auto w = static_cast<float>(light);
    return {colour.r * w, colour.g * w, colour.b * w, colour.a};
}

}  // namespace demo
