/// @file
/// Colours in linear light, so that mixing and averaging them look right.
#pragma once

#include <cstdint>

namespace demo {

/// Linear-light red, green, blue and opacity, each in [0, 1]; not premultiplied.
struct Colour {
    float r = 0.0F;
    float g = 0.0F;
    float b = 0.0F;
    float a = 1.0F;
};

/// The colour that style sheets write as #RRGGBB.
Colour hexColour(std::uint32_t rrggbb, float alpha = 1.0F);

/// a at t = 0, b at t = 1; t is clamped.
Colour mix(const Colour& a, const Colour& b, double t);

/// The colour with its light scaled and its opacity kept.
Colour scaled(const Colour& colour, double light);

/// The linear value of an sRGB-encoded one and back, both in [0, 1].
double linearFromSrgb(double encoded);
double srgbFromLinear(double linear);

}  // namespace demo
