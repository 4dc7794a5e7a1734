#include "examples/common/draw.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace demo {
namespace {

/// Pixels from (x0, y0) up to, not including, (x1, y1).
struct PixelBox {
    int x0;
    int y0;
    int x1;
    int y1;
};

/// The pixels that a shape reaches whose points keep `margin` from the given ones.
PixelBox boxAround(const Image& image, const std::vector<Point2>& points, double margin) {
    double x0 = std::numeric_limits<double>::infinity();
    double y0 = x0;
    double x1 = -x0;
    double y1 = -x0;
    for (const Point2& p : points) {
        x0 = std::min(x0, p.x);
        y0 = std::min(y0, p.y);
        x1 = std::max(x1, p.x);
        y1 = std::max(y1, p.y);
    }
    return {clampedPixel(x0 - margin, image.width()), clampedPixel(y0 - margin, image.height()),
            clampedPixel(x1 + margin + 1.0, image.width()),
            clampedPixel(y1 + margin + 1.0, image.height())};
}

double distanceToSegment(double x, double y, const Point2& a, const Point2& b) {
    const double ex = b.x - a.x;
    const double ey = b.y - a.y;
    const double lengthSq = ex * ex + ey * ey;
    double t = 0.0;
    if (lengthSq > 0.0) {
        t = std::clamp(((x - a.x) * ex + (y - a.y) * ey) / lengthSq, 0.0, 1.0);
    }
    const double dx = x - (a.x + ex * t);
    const double dy = y - (a.y + ey * t);
    return std::sqrt(dx * dx + dy * dy);
}

/// Blends `colour` by the coverage that `coverageAt(x, y)` gives for the pixel centred at (x, y).
template <typename Coverage>
void fillByCoverage(Image& image, const PixelBox& box, const Colour& colour,
                    const Coverage& coverageAt) {
    for (int y = box.y0; y < box.y1; ++y) {
        for (int x = box.x0; x < box.x1; ++x) {
            const double coverage = coverageAt(x + 0.5, y + 0.5);
            if (coverage > 0.0) image.blend(x, y, colour, std::min(coverage, 1.0));
        }
    }
}

}  // namespace

void drawLine(Image& image, const Point2& a, const Point2& b, double width, const Colour& colour) {
    drawPolyline(image, {a, b}, width, colour);
}

void drawPolyline(Image& image, const std::vector<Point2>& points, double width,
                  const Colour& colour) {
    const double reach = 0.5 * width + 0.5;
    const PixelBox all = boxAround(image, points, reach);
    const int columns = all.x1 - all.x0;
    const int rows = all.y1 - all.y0;
    if (columns <= 0 || rows <= 0) return;

    std::vector<float> coverage(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows));
    const auto cell = [&](int x, int y) -> float& {
        return coverage[static_cast<std::size_t>(y - all.y0) * static_cast<std::size_t>(columns) +
                        static_cast<std::size_t>(x - all.x0)];
    };
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        const PixelBox box = boxAround(image, {points[i], points[i + 1]}, reach);
        for (int y = box.y0; y < box.y1; ++y) {
            for (int x = box.x0; x < box.x1; ++x) {
                const double d = distanceToSegment(x + 0.5, y + 0.5, points[i], points[i + 1]);
                const auto c = static_cast<float>(std::min(reach - d, 1.0));
                if (c > cell(x, y)) cell(x, y) = c;
            }
        }
    }
    for (int y = all.y0; y < all.y1; ++y) {
        for (int x = all.x0; x < all.x1; ++x) {
            if (cell(x, y) > 0.0F) image.blend(x, y, colour, cell(x, y));
        }
    }
}

void drawDisc(Image& image, const Point2& centre, double radius, const Colour& colour) {
    fillByCoverage(
        image, boxAround(image, {centre}, radius + 0.5), colour,
        [&](double x, double y) { return radius + 0.5 - distanceToSegment(x, y, centre, centre); });
}

void drawRing(Image& image, const Point2& centre, double radius, double width,
              const Colour& colour) {
    const double reach = 0.5 * width + 0.5;
    fillByCoverage(image, boxAround(image, {centre}, radius + reach), colour,
                   [&](double x, double y) {
                       return reach - std::abs(radius - distanceToSegment(x, y, centre, centre));
                   });
}

void drawTriangle(Image& image, const Point2& a, const Point2& b, const Point2& c,
                  const Colour& colour) {
    constexpr int kSamples = 4;
    const auto side = [](const Point2& p, const Point2& q, double x, double y) {
        return (q.x - p.x) * (y - p.y) - (q.y - p.y) * (x - p.x);
    };
    fillByCoverage(image, boxAround(image, {a, b, c}, 0.5), colour, [&](double x, double y) {
        int inside = 0;
        for (int i = 0; i < kSamples * kSamples; ++i) {
            const int column = i % kSamples;
            const int row = i / kSamples;
            const double sx = x - 0.5 + (column + 0.5) / kSamples;
            const double sy = y - 0.5 + (row + 0.5) / kSamples;
            const double ab = side(a, b, sx, sy);
            const double bc = side(b, c, sx, sy);
            const double ca = side(c, a, sx, sy);
            if ((ab >= 0.0 && bc >= 0.0 && ca >= 0.0) || (ab <= 0.0 && bc <= 0.0 && ca <= 0.0)) {
                ++inside;
            }
        }
        return static_cast<double>(inside) / (kSamples * kSamples);
    });
}

void drawArrow(Image& image, const Point2& a, const Point2& b, double width, double head,
               const Colour& colour) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double length = std::sqrt(dx * dx + dy * dy);
    if (!(length > 0.0)) return;
    const double along = std::min(head, length) / length;
    const Point2 neck{b.x - dx * along, b.y - dy * along};
    const double half = 0.4 * along;
    drawLine(image, a, neck, width, colour);
    drawTriangle(image, b, {neck.x - dy * half, neck.y + dx * half},
                 {neck.x + dy * half, neck.y - dx * half}, colour);
}

}  // namespace demo
