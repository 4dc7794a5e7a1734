#include "geomKit/queries/ProximityTester.h"
#include "geomKit/queries/SmoothWeight.h"
#include "geomKit/queries/pointFitting.h"
#include "geomKit/queries/polynomialRoots.h"
#include "tests/golden/Digest.h"

namespace {

constexpr int kSamples = 2000;

void digestRoots() {
    InputSource in(31);
    Digest digest("polynomialRoots");
    for (int i = 0; i < kSamples; ++i) {
        const double a = in.uniform(-2.0, 2.0);
        const double b = in.uniform(-20.0, 20.0);
        const double c = in.uniform(-100.0, 100.0);
        const double d = in.uniform(-300.0, 300.0);
        double roots[3] = {0.0, 0.0, 0.0};
        digest.add(solveCubic(a, b, c, i % 8 == 0 ? 0.0 : d, roots));
        for (const double root : roots)
            digest.add(root);
    }
}

void digestWeights() {
    InputSource in(32);
    Digest digest("SmoothWeight");
    for (int i = 0; i < kSamples; ++i) {
        const double radius = in.uniform(0.0, 2.0);
        const SmoothWeight weight(in.uniform(-0.1, 0.1), radius);
        double values[3];
        weight.evaluate(in.uniform(-1.0, 1.0), &values[0], &values[1], &values[2]);
        for (const double value : values)
            digest.add(value);
    }
}

std::vector<Vector3> cloud(InputSource& in) {
    const Matrix3 frame = in.matrix(1.0);
    std::vector<Vector3> pts(static_cast<std::size_t>(2 + in.index(40)));
    for (Vector3& p : pts)
        p = frame * in.vector(3.0);
    return pts;
}

void digestFits() {
    InputSource in(33);
    Digest digest("pointFitting");
    for (int i = 0; i < kSamples; ++i) {
        const std::vector<Vector3> pts = cloud(in);
        Vector3 center;
        UVector3 axis;
        digest.add(bestFitPlane(pts, &center, &axis));
        digest.add(center);
        digest.add(axis);
        digest.add(bestFitLine(pts, &center, &axis));
        digest.add(axis);
    }
}

void digestProximity() {
    InputSource in(34);
    Digest digest("ProximityTester");
    for (int i = 0; i < 100; ++i) {
        const std::vector<Vector3> pts = cloud(in);
        const ProximityTester tester(pts, in.uniform(0.05, 1.0));
        digest.add(tester.origin);
        digest.add(tester.cellX);
        digest.add(tester.cellY);
        digest.add(tester.cellZ);
        for (const bool flag : tester.occupied)
            digest.add(flag);
        for (int k = 0; k < 100; ++k)
            digest.add(tester.test(in.vector(8.0)));
    }
}

}  // namespace

void digestFitting() {
    digestRoots();
    digestWeights();
    digestFits();
    digestProximity();
}
