/// @file
/// Ellipsoids around points, and the curvature of curves and surfaces.
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

namespace gallery {
namespace {

constexpr double kFullTurn = 6.283185307179586;

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
    // Seen from the side are the points d off the centre with (matrix d) * view = 0.
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

/// A curve with needles as long as it is curved, away from the side it turns to.
void curvatureComb(Sheet& sheet) {
    sheet.panel(View::map({0.0, 0.0, 0.0}, 4.4));
    std::vector<Vector3> curve;
    std::vector<Vector3> comb;
    double greatest = 0.0;
    constexpr int kSteps = 120;
    for (int i = 0; i <= kSteps; ++i) {
        const double t = kFullTurn * (i % kSteps) / kSteps;
        const double r = 1.05 + 0.28 * std::cos(3.0 * t);
        const double dr = -0.84 * std::sin(3.0 * t);
        const double d2r = -2.52 * std::cos(3.0 * t);
        const Vector3 e(std::cos(t), std::sin(t), 0.0);
        const Vector3 f(-e.y, e.x, 0.0);
        const Vector3 d1 = e * dr + f * r;
        const Vector3 d2 = e * (d2r - r) + f * (2.0 * dr);
        const double curvature = calcCurvature(d1, d2);
        const Vector3 bend = d2 - d1 * ((d1 * d2) / (d1 * d1));
        curve.push_back(e * r);
        comb.push_back(e * r - bend.normalize() * (0.12 * curvature));
        if (i < kSteps) line(curve.back(), comb.back(), kOrange, kThin);
        greatest = std::max(greatest, curvature);
    }
    path(comb, kOrange, kThin);
    path(curve, kBlue, kBold);
    sheet.caption("calcCurvature along a curve, as needles;");
    sheet.caption("at most " + number(greatest, 3));
}

/// Depths that are equal but for rounding become equal, and leave the order as it is.
constexpr double kDepthSteps = 1e6;

struct Patch {
    std::vector<Vector3> corners;
    double depth;
    int colour;
};

constexpr double kRing = 1.25;
constexpr double kTube = 0.55;

Vector3 torusPoint(double u, double v) {
    const double r = kRing + kTube * std::cos(v);
    return {r * std::cos(u), r * std::sin(u), kTube * std::sin(v)};
}

void torusCurvatures(double u, double v, double* least, double* greatest) {
    const double r = kRing + kTube * std::cos(v);
    const Vector3 out(std::cos(u), std::sin(u), 0.0);
    const Vector3 round(-out.y, out.x, 0.0);
    const Vector3 up(0.0, 0.0, 1.0);
    Vector3 d1[] = {round * r, out * (-kTube * std::sin(v)) + up * (kTube * std::cos(v))};
    Vector3 d2[] = {out * -r, round * (-kTube * std::sin(v)),
                    out * (-kTube * std::cos(v)) - up * (kTube * std::sin(v))};
    principalCurvatures(d1, d2, least, greatest);
}

/// A torus by its Gaussian curvature: orange where it is a dome, blue where it is a saddle.
void torus(Sheet& sheet) {
    constexpr int kAround = 44;
    constexpr int kAcross = 20;
    const View view = View::orbit(-60.0, 42.0, {0.0, 0.0, 0.0}, 4.2);
    std::vector<Patch> patches;
    for (int i = 0; i < kAround; ++i) {
        for (int j = 0; j < kAcross; ++j) {
            const auto at = [&](double di, double dj) {
                return torusPoint(kFullTurn * (i + di) / kAround, kFullTurn * (j + dj) / kAcross);
            };
            const std::vector<Vector3> corners = {at(0, 0), at(1, 0), at(1, 1), at(0, 1)};
            const Vector3 normal = (corners[2] - corners[0]) % (corners[3] - corners[1]);
            if (normal * view.towardsViewer() <= 0.0) continue;
            double least = 0.0;
            double greatest = 0.0;
            torusCurvatures(kFullTurn * (i + 0.5) / kAround, kFullTurn * (j + 0.5) / kAcross,
                            &least, &greatest);
            const double gauss = least * greatest * kTube * (kRing - kTube);
            const double shade = std::copysign(1.3 * std::sqrt(std::abs(gauss)), gauss);
            const int step =
                static_cast<int>(std::lround((kRampSize / 2) * std::clamp(shade, -1.0, 1.0)));
            patches.push_back({corners,
                               std::round(at(0.5, 0.5) * view.towardsViewer() * kDepthSteps),
                               kRamp + kRampSize / 2 + step});
        }
    }
    std::stable_sort(patches.begin(), patches.end(),
                     [](const Patch& a, const Patch& b) { return a.depth < b.depth; });
    sheet.panel(view);
    for (const Patch& patch : patches)
        path(patch.corners, patch.colour, kSolid);

    double outer[2];
    double inner[2];
    torusCurvatures(0.0, 0.0, &outer[0], &outer[1]);
    torusCurvatures(0.0, 0.5 * kFullTurn, &inner[0], &inner[1]);
    sheet.caption("principalCurvatures: outside " + number(outer[0], 2) + ", " +
                  number(outer[1], 2));
    sheet.caption("(a dome), inside " + number(inner[0], 2) + ", " + number(inner[1], 2) +
                  " (a saddle)");
}

}  // namespace

std::string ellipsoid() {
    std::vector<Vector3> points;
    for (int i = 0; i < 70; ++i) {
        points.push_back(Vector3(0.8, 0.15, 0.2) * scatter(3 * i) +
                         Vector3(-0.15, 0.6, 0.1) * scatter(3 * i + 1) +
                         Vector3(0.0, -0.1, 0.5) * scatter(3 * i + 2));
    }
    Sheet sheet("ImplEllipsoid: around points, and thicker", 2, 1, 200.0, 2);
    drawEllipsoidPanel(sheet, points, 0.0);
    drawEllipsoidPanel(sheet, points, 0.3);
    return sheet.document();
}

std::string curvature() {
    Sheet sheet("Curvature of a curve and of a surface", 2, 1, 230.0, 2);
    curvatureComb(sheet);
    torus(sheet);
    return sheet.document();
}

}  // namespace gallery
