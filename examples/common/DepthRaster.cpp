#include "examples/common/DepthRaster.h"

#include <algorithm>
#include <cmath>
#include <limits>

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
    const double scale = samples_;
    const Point2 pa{a.at.x * scale - 0.5, a.at.y * scale - 0.5};
    const Point2 pb{b.at.x * scale - 0.5, b.at.y * scale - 0.5};
    const Point2 pc{c.at.x * scale - 0.5, c.at.y * scale - 0.5};
    const double det = (pb.x - pa.x) * (pc.y - pa.y) - (pc.x - pa.x) * (pb.y - pa.y);
    if (!(std::abs(det) > 0.0)) return;

    const int x0 = clampedPixel(std::ceil(std::min({pa.x, pb.x, pc.x})), colours_.width());
    const int y0 = clampedPixel(std::ceil(std::min({pa.y, pb.y, pc.y})), colours_.height());
    const int x1 = clampedPixel(std::floor(std::max({pa.x, pb.x, pc.x})) + 1.0, colours_.width());
    const int y1 = clampedPixel(std::floor(std::max({pa.y, pb.y, pc.y})) + 1.0, colours_.height());
    for (int y = y0; y < y1; ++y) {
        for (int x = x0; x < x1; ++x) {
            const double dx = x - pa.x;
            const double dy = y - pa.y;
            const double wb = (dx * (pc.y - pa.y) - dy * (pc.x - pa.x)) / det;
            const double wc = (dy * (pb.x - pa.x) - dx * (pb.y - pa.y)) / det;
            const double wa = 1.0 - wb - wc;
            if (!(wa >= 0.0 && wb >= 0.0 && wc >= 0.0)) continue;
            // 1/depth, not depth, is linear over the picture.
            const double depth = 1.0 / (wa / a.at.depth + wb / b.at.depth + wc / c.at.depth);
            double& nearest =
                depths_[static_cast<std::size_t>(y) * static_cast<std::size_t>(colours_.width()) +
                        static_cast<std::size_t>(x)];
            if (!(depth < nearest)) continue;
            nearest = depth;
            const auto blended = [&](float va, float vb, float vc) {
                return static_cast<float>(va * wa + vb * wb + vc * wc);
            };
            colours_.at(x, y) = {blended(a.colour.r, b.colour.r, c.colour.r),
                                 blended(a.colour.g, b.colour.g, c.colour.g),
                                 blended(a.colour.b, b.colour.b, c.colour.b),
                                 blended(a.colour.a, b.colour.a, c.colour.a)};
        }
    }
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
