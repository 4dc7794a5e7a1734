#include "examples/meshFunction/texture.h"

#include <algorithm>
#include <cmath>
#include <utility>

using namespace geomKit;

namespace demo {
namespace {

/// Twice the area of a triangle.
double doubleArea(const Point2& a, const Point2& b, const Point2& c) {
    return std::abs((b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y));
}

}  // namespace

void wrapTexture(Mesh& mesh, const UVector3& from, const UVector3& up) {
    Vector3 middle;
    for (const Vector3& p : mesh.positions) {
        middle += p;
    }
    middle *= 1.0 / static_cast<double>(std::max<std::size_t>(mesh.positions.size(), 1));
    const UVector3 right = (up % from).normalize();
    const UVector3 front = (right % up).normalize();

    double radius = 0.0;
    mesh.uvs.clear();
    for (const Vector3& p : mesh.positions) {
        const Vector3 d = p - middle;
        mesh.uvs.push_back({std::atan2(d * right, d * front), d * up});
        radius += (d - up * (d * up)).length() / static_cast<double>(mesh.positions.size());
    }
    for (Point2& uv : mesh.uvs) {
        uv.x *= radius;
    }
}

double cellsPerUnit(const View& view, double cellSize) {
    // For each facet its pixels per unit of texture coordinates and its area in the picture.
    std::vector<std::pair<double, double>> scales;
    double total = 0.0;
    for (std::size_t i = 0; i + 2 < view.mesh.facets.size(); i += 3) {
        const auto pixel = [&](std::size_t k) {
            const ScreenPoint& p = view.at[static_cast<std::size_t>(view.mesh.facets[i + k])];
            return Point2{p.x, p.y};
        };
        const auto uv = [&](std::size_t k) {
            return view.mesh.uvs[static_cast<std::size_t>(view.mesh.facets[i + k])];
        };
        const double area = doubleArea(pixel(0), pixel(1), pixel(2));
        const double scale = std::sqrt(area / doubleArea(uv(0), uv(1), uv(2)));
        if (!std::isfinite(scale) || !(scale > 0.0)) continue;
        scales.emplace_back(scale, area);
        total += area;
    }
    std::sort(scales.begin(), scales.end());
    double below = 0.0;
    for (const auto& [scale, area] : scales) {
        below += area;
        if (below >= 0.5 * total) return std::exp2(std::round(std::log2(scale / cellSize)));
    }
    return 1.0;
}

}  // namespace demo
