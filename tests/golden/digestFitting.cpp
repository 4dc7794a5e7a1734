#include "geomKit/queries/ProximityTester.h"
#include "geomKit/queries/SmoothWeight.h"
#include "geomKit/queries/pointFitting.h"
#include "geomKit/queries/polynomialRoots.h"
#include "tests/golden/Digest.h"

namespace {

void addRoots(Digest& digest, InputSource& in, int i) {
    const double a = in.uniform(-2.0, 2.0);
    const double b = in.uniform(-20.0, 20.0);
    const double c = in.uniform(-100.0, 100.0);
    const double d = in.uniform(-300.0, 300.0);
    double roots[3] = {0.0, 0.0, 0.0};
    digest.add(solveCubic(a, b, c, i % 8 == 0 ? 0.0 : d, roots), roots);
}

void addWeights(Digest& digest, InputSource& in, int /*i*/) {
    const double radius = in.uniform(0.0, 2.0);
    const SmoothWeight weight(in.uniform(-0.1, 0.1), radius);
    double values[3];
    weight.evaluate(in.uniform(-1.0, 1.0), &values[0], &values[1], &values[2]);
    digest.add(values);
}

std::vector<Vector3> cloud(InputSource& in) {
    const Matrix3 frame = in.matrix(1.0);
    std::vector<Vector3> pts(static_cast<std::size_t>(2 + in.index(40)));
    for (Vector3& p : pts)
        p = frame * in.vector(3.0);
    return pts;
}

void addFits(Digest& digest, InputSource& in, int /*i*/) {
    const std::vector<Vector3> pts = cloud(in);
    Vector3 center;
    UVector3 axis;
    digest.add(bestFitPlane(pts, &center, &axis), center, axis);
    digest.add(bestFitLine(pts, &center, &axis), axis);
}

void addProximity(Digest& digest, InputSource& in, int /*i*/) {
    const std::vector<Vector3> pts = cloud(in);
    const ProximityTester tester(pts, in.uniform(0.05, 1.0));
    digest.add(tester.origin, tester.cellX, tester.cellY, tester.cellZ, tester.occupied);
    for (int k = 0; k < 100; ++k)
        digest.add(tester.test(in.vector(8.0)));
}

}  // namespace

void digestFitting() {
    sample("polynomialRoots", 31, 2000, addRoots);
    sample("SmoothWeight", 32, 2000, addWeights);
    sample("pointFitting", 33, 2000, addFits);
    sample("ProximityTester", 34, 100, addProximity);
}
