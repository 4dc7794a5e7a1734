/// @file
/// An ellipsoid around points, before and after it is thickened.
#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include <geomKit/implicits/ImplEllipsoid.h>
#include <geomKit/vAlgebra/vectorUtils.h>

#include "examples/gallery/Sheet.h"
#include "examples/gallery/pictures.h"
#include "examples/gallery/strokes.h"

using namespace geomKit;

namespace gallery {
namespace {

/// The ellipse in which the plane of two directions through the centre cuts the surface. The field
/// grows in proportion to the distance from the centre, so that one value finds the surface.
std::vector<Vector3> section(const ImplEllipsoid& ellipsoid, const Vector3& e1, const Vector3& e2) {
    std::vector<Vector3> points = ring(ellipsoid.center, e1, e2);
    for (Vector3& p : points) {
        double value = 1.0;
        ellipsoid.evaluate(p, &value, nullptr, nullptr);
        p = ellipsoid.center + (p - ellipsoid.center) / value;
    }
    return points;
}

/// The ellipsoid's outline as seen, and its principal sections: dashed where they are behind.
void drawEllipsoid(const ImplEllipsoid& ellipsoid, const UVector3* axes, const View& view,
                   int colour) {
    // The outline are the points d off the centre whose normal, matrix d, is perpendicular to the
    // view.
    Vector3 e1;
    Vector3 e2;
    getBasis((ellipsoid.matrix * view.towardsViewer()).normalize(), e1, e2);
    const std::vector<Vector3> rim = section(ellipsoid, e1, e2);
    path(rim, colour, kArea);
    path(rim, colour);
    for (int axis = 0; axis < 3; ++axis) {
        std::vector<Vector3> run;
        bool front = true;
        for (const Vector3& p : section(ellipsoid, axes[axis], axes[(axis + 1) % 3])) {
            Vector3 gradient;
            ellipsoid.evaluate(p, nullptr, &gradient, nullptr);
            run.push_back(p);
            const bool inFront = gradient * view.towardsViewer() >= 0.0;
            if (inFront == front) continue;
            path(run, colour, front ? kThin : kDashes);
            run = {p};
            front = inFront;
        }
        path(run, colour, front ? kThin : kDashes);
    }
}

void drawEllipsoidPanel(Sheet& sheet, const std::vector<Vector3>& points, double distance) {
    ImplEllipsoid fitted(points);
    const std::unique_ptr<const ImplEllipsoid> thick(fitted.thicken(distance));
    double eigs[3];
    UVector3 axes[3] = {{0.0, 0.0, 1.0}, {0.0, 0.0, 1.0}, {0.0, 0.0, 1.0}};
    thick->matrix.getEigensystem(eigs, axes);

    const View view = View::orbit(-55.0, 20.0, fitted.center, 4.3);
    sheet.panel(view);
    if (distance > 0.0) drawEllipsoid(fitted, axes, view, kBlue);
    drawEllipsoid(*thick, axes, view, distance > 0.0 ? kOrange : kBlue);
    path(points, kInk, kDots);
    double farthest = 0.0;
    for (const Vector3& p : points) {
        double value = 0.0;
        thick->evaluate(p, &value, nullptr, nullptr);
        farthest = std::max(farthest, value);
    }
    std::string lengths;
    for (int i = 2; i >= 0; --i) {
        const Vector3 axis = axes[i] * (1.0 / std::sqrt(eigs[i]));
        arrow(fitted.center, axis * (axis * view.towardsViewer() < 0.0 ? -1.0 : 1.0), kRed);
        lengths += (i == 2 ? "" : ", ") + number(axis.length(), 2);
    }
    sheet.caption((distance > 0.0 ? "thicken(" + number(distance, 2) + "): " : "Fit: ") +
                  "semi-axes " + lengths);
    sheet.caption("largest value at a point: " + number(farthest, 3));
}

}  // namespace

std::string ellipsoid() {
    constexpr int kPoints = 70;
    std::vector<Vector3> points;
    points.reserve(kPoints);
    for (int i = 0; i < kPoints; ++i) {
        points.push_back(Vector3(0.8, 0.15, 0.2) * scatter(3 * i) +
                         Vector3(-0.15, 0.6, 0.1) * scatter(3 * i + 1) +
                         Vector3(0.0, -0.1, 0.5) * scatter(3 * i + 2));
    }
    Sheet sheet("ImplEllipsoid: around points, and thicker", 2, 1, 200.0, 2);
    drawEllipsoidPanel(sheet, points, 0.0);
    drawEllipsoidPanel(sheet, points, 0.3);
    return sheet.document();
}

}  // namespace gallery
