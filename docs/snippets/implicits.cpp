// The examples of implicits.md.
#include <cmath>
#include <memory>
#include <utility>
#include <vector>

#include "geomKit/implicits/ImplEllipsoid.h"
#include "geomKit/implicits/Implicit.h"

using namespace geomKit;

namespace {

bool fitsAFieldToASphere() {
    const double d = 0.1;
    std::vector<std::pair<Vector3, Vector3>> outline;
    for (int i = 0; i < 40; ++i) {
        const double z = (i + 0.5) / 20.0 - 1.0;
        const double r = std::sqrt(1.0 - z * z);
        const Vector3 normal(r * std::cos(2.4 * i), r * std::sin(2.4 * i), z);
        outline.emplace_back(normal, normal);
    }
    const std::vector<Vector3> points = {{0.5, 0, 0}, {0, 0, 2}};
    std::vector<double> values(points.size());

    std::vector<std::pair<Vector3, double>> samples;
    for (const auto& [point, normal] : outline) {
        samples.emplace_back(point, 0.0);
        samples.emplace_back(point + normal * d, d);
    }
    const Implicit field(samples);
    if (!field.check() || !(field.maxResidual(samples) <= 1e-6 * d)) return false;
    field.evaluate(points.data(), points.size(), values.data());

    return values[0] < 0.0 && values[1] > 0.0;
}

bool thickensAnEllipsoid() {
    const ImplEllipsoid unit({{1, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {0, -1, 0}, {0, 0, 1}, {0, 0, -1}});
    ImplEllipsoid ellipsoid = unit;

    const ImplEllipsoid skin = ellipsoid.thickened(0.5);

    double value = 0.0;
    skin.evaluate({1.5, 0, 0}, &value, nullptr, nullptr);
    return std::abs(value - 1.0) < 1e-12;
}

}  // namespace

int main() {
    return fitsAFieldToASphere() && thickensAnEllipsoid() ? 0 : 1;
}
