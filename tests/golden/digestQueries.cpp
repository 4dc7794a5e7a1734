#include "geomKit/queries/Bbox.h"
#include "geomKit/queries/LineLineInt.h"
#include "geomKit/queries/LinePlaneInt.h"
#include "geomKit/queries/LineSphereInt.h"
#include "geomKit/queries/LineTriangleInt.h"
#include "geomKit/queries/PlanePlaneInt.h"
#include "geomKit/queries/TriangleWeightsFinder.h"
#include "geomKit/queries/segments2D.h"
#include "tests/golden/Digest.h"

namespace {

constexpr int kSamples = 4000;

void addLines(Digest& digest, const LineLineInt& lines) {
    digest.add(lines.status);
    digest.add(lines.point);
    digest.add(lines.param1);
    digest.add(lines.param2);
}

void digestIntersections() {
    InputSource in(31);
    Digest digest("Intersections");
    for (int i = 0; i < kSamples; ++i) {
        const Vector3 p = in.vector(2.0);
        const UVector3 d = in.vector(1.0);
        const Vector3 a = in.vector(2.0);
        const Vector3 b = in.vector(2.0);
        const Vector3 c = in.vector(2.0);
        const UVector3 n = b;
        const double tol = in.uniform(0.0, 0.5);
        addLines(digest, LineLineInt(p, d, a, n, tol));
        addLines(digest, LineLineInt(p, d, a, d, tol));
        addLines(digest, LineLineInt(p, b, a, c, tol));
        addLines(digest, LineLineInt(p, b, a, b * -0.7, tol));
        const LinePlaneInt plane(p, d, a, n, tol);
        digest.add(plane.status);
        digest.add(plane.point);
        digest.add(plane.param);
        const PlanePlaneInt planes(p, d, a, n, tol);
        digest.add(planes.status);
        digest.add(planes.point);
        digest.add(planes.dir);
        // From lines beside the triangle to lines through its edges and vertices.
        const Vector3 through[] = {a, (b + c) * 0.5, (a + b + c) / 3.0};
        for (const Vector3& q : through) {
            for (const double t : {0.0, 1e-12, tol}) {
                const LineTriangleInt hit(p, UVector3(q - p), a, b, c, t);
                digest.add(hit.status);
                digest.add(hit.point);
                digest.add(hit.param);
                const LineTriangleInt other(p, d, a, b, c, t);
                digest.add(other.status);
                digest.add(other.point);
                digest.add(other.param);
            }
        }
        const LineSphereInt sphere(p, d, a, 1.0 + tol, tol);
        digest.add(sphere.numHits);
        digest.add(sphere.point1);
        digest.add(sphere.point2);
        digest.add(sphere.param1);
        digest.add(sphere.param2);
        digest.add(TriangleWeightsFinder(p, a, b, c).weights);
    }
}

void digestBoxes() {
    InputSource in(32);
    Digest digest("Bbox");
    for (int i = 0; i < kSamples; ++i) {
        std::vector<Vector3> pts(static_cast<std::size_t>(in.index(11)));
        for (Vector3& p : pts)
            p = in.vector(3.0);
        Bbox box(pts);
        const Bbox other({in.vector(2.0)});
        box += other;
        box.update(in.vector(3.0));
        digest.add(box.volume());
        Vector3 low;
        Vector3 high;
        box.boundsInDir(in.vector(1.0), &low, &high);
        digest.add(low);
        digest.add(high);
        const Vector3 corner = in.vector(3.0);
        const Vector3 opposite = in.vector(3.0);
        box.isec(Bbox({corner, opposite}));
        digest.add(box.isValid());
        digest.add(box.minPt);
        digest.add(box.maxPt);
    }
}

void digestSegments() {
    InputSource in(33);
    Digest digest("segments2D");
    const Vector3 rmin(-0.5, -0.7, 0.0);
    const Vector3 rmax(0.8, 0.6, 0.0);
    for (int i = 0; i < kSamples; ++i) {
        const Vector3 a0 = in.vector(1.0);
        const Vector3 a1 = in.vector(1.0);
        Vector3 b0 = in.vector(1.0);
        Vector3 b1 = in.vector(1.0);
        const double tol = in.uniform(0.0, 0.2);
        digest.add(segsIntersect(a0, a1, b0, b1, tol, true));
        digest.add(segsIntersect(a0, a1, b0, b1, tol, false));
        digest.add(segIntersectRect2D(a0, a1, rmin, rmax));
        Vector3 outA;
        Vector3 outB;
        digest.add(segClipRect2D(a0, a1, rmin, rmax, outA, outB));
        digest.add(outA);
        digest.add(outB);
        digest.add(segClipHalfPlane2D(b0, b1, a0, a1));
        digest.add(b0);
        digest.add(b1);
    }
}

}  // namespace

void digestQueries() {
    digestIntersections();
    digestBoxes();
    digestSegments();
}
