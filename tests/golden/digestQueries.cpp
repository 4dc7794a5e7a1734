#include "tests/golden/Digest.h"

using namespace geomKit;

namespace {

void addIntersections(Digest& digest, InputSource& in, int /*i*/) {
    const Vector3 p = in.vector(2.0);
    const UVector3 d = in.vector(1.0);
    const auto [a, b, c] = in.vectors<3>(2.0);
    const UVector3 n = b;
    const double tol = in.uniform(0.0, 0.5);
    for (const LineLineInt& lines :
         {LineLineInt(p, d, a, n, tol), LineLineInt(p, d, a, d, tol), LineLineInt(p, b, a, c, tol),
          LineLineInt(p, b, a, b * -0.7, tol)})
        digest.add(lines.status, lines.point, lines.param1, lines.param2);
    const LinePlaneInt plane(p, d, a, n, tol);
    digest.add(plane.status, plane.point, plane.param);
    const PlanePlaneInt planes(p, d, a, n, tol);
    digest.add(planes.status, planes.point, planes.dir);
    // From lines beside the triangle to lines through its edges and vertices.
    for (const Vector3& q : {a, (b + c) * 0.5, (a + b + c) / 3.0}) {
        for (const double t : {0.0, 1e-12, tol}) {
            for (const UVector3& dir : {UVector3(q - p), d}) {
                const LineTriangleInt hit(p, dir, a, b, c, t);
                digest.add(hit.status, hit.point, hit.param);
            }
        }
    }
    const LineSphereInt sphere(p, d, a, 1.0 + tol, tol);
    digest.add(sphere.numHits, sphere.point1, sphere.point2, sphere.param1, sphere.param2);
    digest.add(TriangleWeightsFinder(p, a, b, c).weights);
}

void addBoxes(Digest& digest, InputSource& in, int /*i*/) {
    std::vector<Vector3> pts(static_cast<std::size_t>(in.index(11)));
    for (Vector3& p : pts)
        p = in.vector(3.0);
    Bbox box(pts);
    box += Bbox({in.vector(2.0)});
    box.update(in.vector(3.0));
    Vector3 low, high;
    box.boundsInDir(in.vector(1.0), &low, &high);
    digest.add(box.volume(), low, high);
    box.isec(Bbox({in.vector(3.0), in.vector(3.0)}));
    digest.add(box.isValid(), box.minPt, box.maxPt);
}

void addSegments(Digest& digest, InputSource& in, int /*i*/) {
    const Vector3 rmin(-0.5, -0.7, 0.0), rmax(0.8, 0.6, 0.0);
    const auto [a0, a1] = in.vectors<2>(1.0);
    auto [b0, b1] = in.vectors<2>(1.0);
    const double tol = in.uniform(0.0, 0.2);
    digest.add(segsIntersect(a0, a1, b0, b1, tol, true), segsIntersect(a0, a1, b0, b1, tol, false));
    Vector3 outA, outB;
    digest.add(segIntersectRect2D(a0, a1, rmin, rmax));
    digest.add(segClipRect2D(a0, a1, rmin, rmax, outA, outB), outA, outB);
    digest.add(segClipHalfPlane2D(b0, b1, a0, a1), b0, b1);
}

void addRoots(Digest& digest, InputSource& in, int i) {
    const double a = in.uniform(-2.0, 2.0), b = in.uniform(-20.0, 20.0);
    const double c = in.uniform(-100.0, 100.0), d = in.uniform(-300.0, 300.0);
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

void digestQueries() {
    sample("Intersections", 31, 4000, addIntersections);
    sample("Bbox", 32, 4000, addBoxes);
    sample("segments2D", 33, 4000, addSegments);
    sample("polynomialRoots", 31, 2000, addRoots);
    sample("SmoothWeight", 32, 2000, addWeights);
    sample("pointFitting", 33, 2000, addFits);
    sample("ProximityTester", 34, 100, addProximity);
}
