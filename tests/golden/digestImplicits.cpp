#include <memory>

#include "geomKit/implicits/ImplEllipsoid.h"
#include "geomKit/implicits/Implicit.h"
#include "tests/golden/Digest.h"

namespace {

void digestFields() {
    InputSource in(41);
    Digest digest("Implicit");
    for (const std::size_t count : {0u, 3u, 4u, 30u, 100u, 300u}) {
        // In general position, in a plane, and on a grid with repeated points.
        for (int kind = 0; kind < 3; ++kind) {
            std::vector<std::pair<Vector3, double>> samples(count);
            for (auto& [point, value] : samples) {
                point = in.vector(1.0);
                value = in.uniform(-1.0, 1.0);
                if (kind == 1) point.z = 0.0;
                if (kind == 2)
                    point = Vector3(std::floor(4.0 * point.x), point.y > 0.0, value > 0.0);
            }
            const Implicit field(samples);
            for (const double weight : field.weights)
                digest.add(weight);
            digest.add(field.offset);
            digest.add(field.linear);
            digest.add(field.metZeroPivot());
            digest.add(field.maxResidual(samples));
            Vector3 points[20];
            for (Vector3& p : points)
                p = in.vector(2.0);
            double values[20];
            field.evaluate(points, values, 20);
            field.getGradient(points, points, 20);
            for (int i = 0; i < 20; ++i) {
                digest.add(values[i]);
                digest.add(points[i]);
            }
        }
    }
}

void digestEllipsoids() {
    InputSource in(42);
    Digest digest("ImplEllipsoid");
    for (int i = 0; i < 500; ++i) {
        std::vector<Vector3> points;
        for (int n = in.index(30); n >= 0; --n)
            points.push_back(in.vector(3.0));
        ImplEllipsoid ellipsoid(points);
        const std::unique_ptr<ImplEllipsoid> thick(ellipsoid.thicken(in.uniform(-1.0, 1.0)));
        digest.add(ellipsoid.center);
        digest.add(ellipsoid.matrix);
        digest.add(thick->matrix);
        double value = 0.0;
        Vector3 gradient;
        ellipsoid.evaluate(in.vector(4.0), &value, &gradient, nullptr);
        digest.add(value);
        digest.add(gradient);
    }
}

}  // namespace

void digestImplicits() {
    digestFields();
    digestEllipsoids();
}
