#include "examples/gallery/strokes.h"

#include <cmath>
#include <cstddef>
#include <cstdint>

#include <geomKit/debugDraw/gkFuncBinder.h>
#include <geomKit/vAlgebra/vectorUtils.h>

using namespace geomKit;

namespace gallery {

void dot(const Vector3& p, int colour) {
    gkFuncBinder::drawPoint(p, colour);
}

void arrow(const Vector3& from, const Vector3& vector, int colour) {
    gkFuncBinder::drawVector(from, vector, colour, 1.0);
}

void line(const Vector3& a, const Vector3& b, int colour, Style style) {
    gkFuncBinder::drawPoints({a, b}, colour, style);
}

void path(const std::vector<Vector3>& points, int colour, Style style) {
    gkFuncBinder::drawPoints(points, colour, style);
}

std::vector<Vector3> ring(const Vector3& centre, const Vector3& e1, const Vector3& e2, int count) {
    std::vector<Vector3> points;
    for (int i = 0; i <= count; ++i) {
        const double t = kFullTurn * (i % count) / count;
        points.push_back(centre + e1 * std::cos(t) + e2 * std::sin(t));
    }
    return points;
}

std::vector<Vector3> square(const Vector3& centre, const UVector3& normal, double size) {
    Vector3 e1;
    Vector3 e2;
    getBasis(normal, e1, e2);
    e1 *= size;
    e2 *= size;
    return {centre - e1 - e2, centre + e1 - e2, centre + e1 + e2, centre - e1 + e2};
}

void boxEdges(const Vector3& low, const Vector3& high, int colour, Style style) {
    const auto loop = [&](double z) {
        return std::vector<Vector3>{{low.x, low.y, z},
                                    {high.x, low.y, z},
                                    {high.x, high.y, z},
                                    {low.x, high.y, z},
                                    {low.x, low.y, z}};
    };
    const std::vector<Vector3> bottom = loop(low.z);
    const std::vector<Vector3> top = loop(high.z);
    path(bottom, colour, style);
    path(top, colour, style);
    for (std::size_t i = 0; i < 4; ++i)
        line(bottom[i], top[i], colour, style);
}

std::vector<Vector3> rectangle(const Vector3& low, const Vector3& high) {
    return {low, {high.x, low.y, 0.0}, high, {low.x, high.y, 0.0}};
}

void floorGrid(int size) {
    for (int i = -size; i <= size; ++i) {
        line(Vector3(i, -size, 0.0), Vector3(i, size, 0.0), kPale, kThin);
        line(Vector3(-size, i, 0.0), Vector3(size, i, 0.0), kPale, kThin);
    }
}

double scatter(int index) {
    auto bits = static_cast<std::uint32_t>(index) * 2654435769U + 0x9E3779B9U;
    bits ^= bits >> 16U;
    bits *= 0x7FEB352DU;
    bits ^= bits >> 15U;
    bits *= 0x846CA68BU;
    bits ^= bits >> 16U;
    return bits * (2.0 / 4294967295.0) - 1.0;
}

}  // namespace gallery
