#include "examples/common/DepthRaster.h"

#include <algorithm>
#include <limits>

#include "examples/common/rasterize.h"

namespace demo {
namespace {

constexpr Colour kNothing{0.0F, 0.0F, 0.0F, 0.0F};

}  // namespace

DepthRaster::DepthRaster(int width, int height, int samplesPerSide)
    : width_(width),
      height_(height),
      samples_(samplesPerSide),
      colours_(width * samplesPerSide, height * samplesPerSide, kNothing),
      depths_(
          static_cast<std::size_t>(colours_.width()) * static_cast<std::size_t>(colours_.height()),
          std::numeric_limits<double>::infinity()) {}

void DepthRaster::triangle(const Vertex& a, const Vertex& b, const Vertex& c) {
    if (!(a.at.depth > 0.0 && b.at.depth > 0.0 && c.at.depth > 0.0)) return;
    const auto sample = [this](const Vertex& v) { return toSamples({v.at.x, v.at.y}, samples_); };
    forEachSample(
        sample(a), sample(b), sample(c), colours_.width(), colours_.height(),
        [&](int x, int y, double wa, double wb, double wc) {
            // 1/depth, not depth, is linear over the picture.
            const double depth = 1.0 / (wa / a.at.depth + wb / b.at.depth + wc / c.at.depth);
            double& nearest =
                depths_[static_cast<std::size_t>(y) * static_cast<std::size_t>(colours_.width()) +
                        static_cast<std::size_t>(x)];
            if (!(depth < nearest)) return;
            nearest = depth;
            const auto blended = [&](float va, float vb, float vc) {
                return static_cast<float>(va * wa + vb * wb + vc * wc);
            };
            colours_.at(x, y) = {blended(a.colour.r, b.colour.r, c.colour.r),
                                 blended(a.colour.g, b.colour.g, c.colour.g),
                                 blended(a.colour.b, b.colour.b, c.colour.b),
                                 blended(a.colour.a, b.colour.a, c.colour.a)};
        });
}

void DepthRaster::drawInto(Image& image) const {
    const int columns = std::min(width_, image.width());
    const int rows = std::min(height_, image.height());
    const auto share = 1.0F / static_cast<float>(samples_ * samples_);
    for (int y = 0; y < rows; ++y) {
        for (int x = 0; x < columns; ++x) {
            Colour sum = kNothing;
            for (int i = 0; i < samples_ * samples_; ++i) {
                const Colour& c =
                    colours_.at(x * samples_ + i % samples_, y * samples_ + i / samples_);
                sum.r += c.r * c.a;
                sum.g += c.g * c.a;
                sum.b += c.b * c.a;
                sum.a += c.a;
            }
            if (!(sum.a > 0.0F)) continue;
            image.blend(x, y, {sum.r / sum.a, sum.g / sum.a, sum.b / sum.a, sum.a * share});
        }
    }
}

}  // namespace demo
