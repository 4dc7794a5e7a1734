// The examples of docs/queries.md.
#include <vector>

#include "geomKit/queries/LineLineInt.h"
#include "geomKit/queries/LinePlaneInt.h"
#include "geomKit/queries/LineTriangleInt.h"
#include "geomKit/queries/PolylineProjector.h"

using namespace geomKit;

namespace {

Vector3 marked;

void mark(const Vector3& p) {
    marked = p;
}

bool planes() {
    const Vector3 eye(1, 2, 5);
    const UVector3 direction(0, 0, -1);
    const Vector3 planePoint(7, 7, 2);
    const UVector3 planeNormal(0, 0, 1);
    const LinePlaneInt cut(eye, direction, planePoint, planeNormal, 1e-9);
    if (cut.status == LinePlaneInt::kHit) mark(cut.point);
    return marked == Vector3(1, 2, 2);
}

bool parallels() {
    const UVector3 d1(1, 2, 3);
    const UVector3 d2 = d1;
    const Vector3 p1;
    const Vector3 p2 = p1 + d1 * 4.0;
    const LineLineInt lines(p1, Vector3(d1), p2, Vector3(d2), 1e-9);
    return lines.status == LineLineInt::kCoincident;
}

bool triangles() {
    const Vector3 eye(0.75, 0.5, 5);
    const UVector3 direction(0, 0, -1);
    const std::vector<Vector3> vertices = {{0, 0, 0}, {1, 0, 1}, {1, 1, 1}, {0, 1, 0}};
    const std::vector<int> facets = {0, 2, 3, 0, 1, 2};
    const LineTriangleHit first = LineTriangleInt::nearest(
        eye, direction, 0.0, 0.0, vertices.data(), vertices.size(), facets.data(), 2);
    if (first) mark(first.point);  // in triangle 1
    return first.triangle == 1 && marked == Vector3(0.75, 0.5, 0.75);
}

bool polylines() {
    const PolylineProjector path({{0, 0, 0}, {2, 0, 0}, {2, 2, 0}});
    const PolylineProjection foot = path.nearest({3, 0.5, 0});
    const bool isQuarter = foot.segment == 1 && foot.param == 0.25;  // at (2, 0.5, 0)
    return isQuarter && foot.point == Vector3(2, 0.5, 0);
}

}  // namespace

int main() {
    return planes() && parallels() && triangles() && polylines() ? 0 : 1;
}
