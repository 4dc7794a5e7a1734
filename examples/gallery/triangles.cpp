/// @file
/// Lines with triangles and spheres, and the weights of a triangle's vertices.
#include <algorithm>
#include <cmath>
#include <string>

#include <geomKit/queries/LineSphereInt.h>
#include <geomKit/queries/LineTriangleInt.h>
#include <geomKit/queries/TriangleWeightsFinder.h>
#include <geomKit/vAlgebra/vectorUtils.h>

#include "examples/gallery/Sheet.h"
#include "examples/gallery/contours.h"
#include "examples/gallery/pictures.h"
#include "examples/gallery/strokes.h"

using namespace geomKit;

namespace gallery {
namespace {

constexpr double kTol = 1e-9;
constexpr const char* kNames[] = {"kHit", "kMiss", "kInPlane", "kParallel", "kDegenerate"};

struct Triangle {
    Vector3 a, b, c;
};

void lineTriangle(Sheet& sheet, const Triangle& t, const Vector3& p, const UVector3& d,
                  double length, const char* remark) {
    const LineTriangleInt query(p, d, t.a, t.b, t.c, kTol);
    const View view = View::orbit(-70.0, 26.0, {0.0, 0.05, 0.1}, 3.9);
    sheet.panel(view);

    // A line that passes outside of this sphere is a miss without further tests.
    const Vector3 centroid = (t.a + t.b + t.c) / 3.0;
    const double radius = std::max({dist(centroid, t.a), dist(centroid, t.b), dist(centroid, t.c)});
    const Vector3 right = view.frame.transpose() * Vector3(radius, 0.0, 0.0);
    const Vector3 up = view.frame.transpose() * Vector3(0.0, radius, 0.0);
    path(ring(centroid, right, up), kGrey, kDashes);

    path({t.a, t.b, t.c}, kBlue, kArea);
    path({t.a, t.b, t.c, t.a}, kBlue);
    const bool inFront = query.param > 0.0;
    line(p, inFront ? query.point : p + d * length, kOrange);
    if (inFront) line(query.point, p + d * length, kOrange, kDashes);
    arrow(p, d * 0.7, kOrange);
    dot(p, kOrange);
    if (inFront) dot(query.point, query.status == LineTriangleInt::kHit ? kGreen : kRed);
    sheet.caption("status " + std::to_string(query.status) + ": " + kNames[query.status]);
    sheet.caption(remark);
}

void lineSphere(Sheet& sheet, double height, double tol) {
    const LineSphereInt query({-1.9, 0.0, height}, {1.0, 0.0, 0.0}, {0.0, 0.0, 0.0}, 1.0, tol);
    // Seen along y, so that the lines and the outline of the sphere are in true size.
    sheet.panel(View::orbit(-90.0, 0.0, {0.0, 0.0, 0.1}, 4.2));
    const Vector3 x(1.0, 0.0, 0.0);
    const Vector3 z(0.0, 0.0, 1.0);
    path(ring({}, x, z), kBlue, kArea);
    if (tol > 0.0) {
        path(ring({}, x * std::sqrt(1.0 - tol), z * std::sqrt(1.0 - tol)), kBlue, kDashes);
        path(ring({}, x * std::sqrt(1.0 + tol), z * std::sqrt(1.0 + tol)), kBlue, kDashes);
    } else {
        path(ring({}, x, z), kBlue);
    }
    line({-1.9, 0.0, height}, {1.9, 0.0, height}, kOrange);
    arrow({-1.9, 0.0, height}, x * 0.6, kOrange);
    dot({-1.9, 0.0, height}, kOrange);
    if (query.numHits > 0) {
        dot(query.point1, kRed);
        dot(query.point2, kRed);
    }
    sheet.caption("numHits = " + std::to_string(query.numHits) + ", tol = " + number(tol, 1));
    const std::string params = number(query.param1, 2) + ", " + number(query.param2, 2);
    sheet.caption(query.numHits > 0 ? "params " + params : "the fields are 0");
}

void weightLines(Sheet& sheet) {
    const Triangle t{{-1.0, -0.75, 0.0}, {1.15, -0.5, 0.0}, {-0.1, 1.15, 0.0}};
    sheet.panel(View::map({0.05, 0.15, 0.0}, 3.3));
    path({t.a, t.b, t.c}, kBlue, kArea);
    const Vector3 low(-1.55, -1.05, 0.0);
    const Vector3 high(1.65, 1.35, 0.0);
    const int colours[] = {kBlue, kOrange, kGreen};
    for (int corner = 0; corner < 3; ++corner) {
        const auto weight = [&](const Vector3& p) {
            const Vector3 w = TriangleWeightsFinder(p, t.a, t.b, t.c).weights;
            return corner == 0 ? w.x : corner == 1 ? w.y : w.z;
        };
        for (int step = 0; step < 4; ++step) {
            for (const auto& curve : contours(weight, low, high, 24, 18, 0.25 * step)) {
                path(curve, colours[corner], step == 0 ? kLine : kThin);
            }
        }
    }
    for (const Vector3& p : {Vector3(0.0, 0.05, 0.0), Vector3(0.85, 0.55, 0.0)}) {
        const Vector3 w = TriangleWeightsFinder(p, t.a, t.b, t.c).weights;
        dot(p, kRed);
        sheet.label(p, number(w.x, 2) + ", " + number(w.y, 2) + ", " + number(w.z, 2), 0.0, -9.0,
                    Anchor::kMiddle);
    }
    sheet.label(t.a, "a", -4.0, 16.0, Anchor::kEnd);
    sheet.label(t.b, "b", 6.0, 16.0);
    sheet.label(t.c, "c", 10.0, 2.0);
    sheet.caption("Weights at two points, with lines of");
    sheet.caption("equal weight: 0 (thick), 0.25, 0.5, 0.75.");
}

void weightDirection(Sheet& sheet) {
    const Triangle t{{-0.9, -0.8, 0.0}, {0.9, -0.6, 0.0}, {0.0, 0.9, 1.25}};
    const Vector3 p(0.1, -0.2, 1.5);
    sheet.panel(View::orbit(-22.0, 12.0, {0.0, 0.0, 0.7}, 3.2));
    path({t.a, t.b, t.c}, kBlue, kArea);
    path({t.a, t.b, t.c, t.a}, kBlue);
    const Vector3 w = TriangleWeightsFinder(p, t.a, t.b, t.c).weights;
    const Vector3 blend = t.a * w.x + t.b * w.y + t.c * w.z;
    const UVector3 normal((t.b - t.a) % (t.c - t.a));
    const Vector3 foot = projectOnPlane(p, t.a, normal);
    arrow(p, blend - p, kRed);
    arrow(p, foot - p, kGrey);
    dot(p, kOrange);
    dot(blend, kRed);
    dot(foot, kGrey);
    sheet.label(p, "p");
    sheet.label(blend, "blend", -8.0, 14.0, Anchor::kEnd);
    sheet.label(foot, "projectOnPlane", 9.0, 2.0);
    sheet.caption("A point off the plane comes to it along");
    sheet.caption("the axis nearest to its normal, here z.");
}

}  // namespace

std::string triangles() {
    Sheet sheet("LineTriangleInt: where a line passes a triangle", 3, 2, 138.0, 2);
    const Triangle t{{-0.9, -0.7, 0.0}, {1.0, -0.55, 0.0}, {-0.1, 1.1, 0.25}};
    const UVector3 normal((t.b - t.a) % (t.c - t.a));
    const UVector3 inside((t.b + t.c) * 0.5 - t.a);
    lineTriangle(sheet, t, {-0.6, -0.5, 1.1}, {0.5, 0.4, -1.0}, 1.8, "the point is inside");
    lineTriangle(sheet, t, {0.1, 0.2, 1.1}, {0.55, 0.25, -1.0}, 1.8, "it is beside an edge");
    lineTriangle(sheet, t, {-1.55, -0.6, 1.5}, {1.0, 0.1, 0.13}, 2.9, "the sphere is passed");
    lineTriangle(sheet, t, t.a - inside * 0.7, inside, 3.1, "parallel, distance 0");
    lineTriangle(sheet, t, t.a - inside * 0.7 + normal * 0.5, inside, 3.1,
                 "parallel, distance 0.5");
    lineTriangle(sheet, {t.a, t.b, (t.a + t.b * 2.0) / 3.0}, {-0.5, -0.9, 0.9}, {0.4, 0.2, -0.8},
                 1.8, "collinear vertices");
    return sheet.document();
}

std::string spheres() {
    Sheet sheet("LineSphereInt: where a line meets a sphere", 3, 1, 138.0, 2);
    lineSphere(sheet, 0.55, 0.0);
    lineSphere(sheet, 1.05, 0.2);
    lineSphere(sheet, 1.05, 0.0);
    return sheet.document();
}

std::string weights() {
    Sheet sheet("TriangleWeightsFinder: the weights of three vertices", 2, 1, 210.0, 2);
    weightLines(sheet);
    weightDirection(sheet);
    return sheet.document();
}

}  // namespace gallery
