// The example of README.md.
#include <cmath>
#include <vector>

#include "geomKit/geomKit.h"

int main() {
    using Point = geomKit::MeshFunction2D::Point;
    const std::vector<Point> corners = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    const std::vector<Point> values = {{10, 0}, {12, 0}, {12, 5}, {10, 5}};
    const geomKit::MeshFunction2D f(corners, values, {0, 1, 2, 0, 2, 3}, {});

    Point inside, outside;
    f.evaluate({0.25, 0.5}, &inside, nullptr);                  // inside is (10.5, 2.5)
    f.extrapolate({2.0, 0.5}, &outside, nullptr);               // outside is (14, 2.5)
    const bool hit = f.evaluate({2.0, 0.5}, &inside, nullptr);  // false, and nothing is written

    const bool asStated = std::abs(inside.u - 10.5) < 1e-12 && std::abs(inside.v - 2.5) < 1e-12 &&
                          std::abs(outside.u - 14.0) < 1e-12 && std::abs(outside.v - 2.5) < 1e-12 &&
                          !hit;
    return asStated ? 0 : 1;
}
