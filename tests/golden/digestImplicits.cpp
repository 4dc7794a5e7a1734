#include <memory>

#include "tests/golden/Digest.h"

using namespace geomKit;

namespace {

void addFields(Digest& digest, InputSource& in, int i) {
    const std::size_t counts[] = {0, 3, 4, 30, 100, 300};
    std::vector<std::pair<Vector3, double>> samples(counts[i / 3]);
    for (auto& [point, value] : samples) {
        point = in.vector(1.0);
        value = in.uniform(-1.0, 1.0);
        // In general position, in a plane, and on a grid with repeated points.
        if (i % 3 == 1) point.z = 0.0;
        if (i % 3 == 2) point = Vector3(std::floor(4.0 * point.x), point.y > 0.0, value > 0.0);
    }
    const Implicit field(samples);
    digest.add(field.weights, field.offset, field.linear, field.metZeroPivot());
    auto points = in.vectors<20>(2.0);
    double values[20];
    field.evaluate(points.data(), 20, values);
    field.getGradient(points.data(), 20, points.data());
    digest.add(field.maxResidual(samples));
    for (std::size_t k = 0; k < 20; ++k)
        digest.add(values[k], points[k]);
}

void addEllipsoids(Digest& digest, InputSource& in, int /*i*/) {
    std::vector<Vector3> points;
    for (int n = in.index(30); n >= 0; --n)
        points.push_back(in.vector(3.0));
    ImplEllipsoid ellipsoid(points);
    const std::unique_ptr<ImplEllipsoid> thick(ellipsoid.thicken(in.uniform(-1.0, 1.0)));
    double value = 0.0;
    Vector3 gradient;
    ellipsoid.evaluate(in.vector(4.0), &value, &gradient, nullptr);
    digest.add(ellipsoid.center, ellipsoid.matrix, thick->matrix, value, gradient);
}

}  // namespace

void digestImplicits() {
    sample("Implicit", 41, 18, addFields);
    sample("ImplEllipsoid", 42, 500, addEllipsoids);
}
