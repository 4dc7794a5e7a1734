#include "examples/common/Image.h"

#include <algorithm>

namespace demo {

Image::Image(int width, int height, const Colour& fill)
    : width_(std::max(width, 0)),
      height_(std::max(height, 0)),
      pixels_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_), fill) {}

void Image::blend(int x, int y, const Colour& colour, double coverage) {
    Colour& under = at(x, y);
    const float over = colour.a * static_cast<float>(coverage);
    const float rest = under.a * (1.0F - over);
    const float alpha = over + rest;
    if (!(alpha > 0.0F)) return;
    under.r = (colour.r * over + under.r * rest) / alpha;
    under.g = (colour.g * over + under.g * rest) / alpha;
    under.b = (colour.b * over + under.b * rest) / alpha;
    under.a = alpha;
}

void Image::fill(const Colour& colour) {
    std::fill(pixels_.begin(), pixels_.end(), colour);
}

int clampedPixel(double position, int limit) {
    if (!(position > 0.0)) return 0;
    return position < limit ? static_cast<int>(position) : limit;
}

Image vignette(int width, int height, const Colour& middle, const Colour& corner) {
    Image image(width, height, middle);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const double dx = (x + 0.5) / width - 0.5;
            const double dy = (y + 0.5) / height - 0.5;
            image.at(x, y) = mix(middle, corner, 2.0 * (dx * dx + dy * dy));
        }
    }
    return image;
}

}  // namespace demo
