/// @file
/// What is known of sets of points: the line and the plane nearest to them, and what is near them.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include <geomKit/queries/ProximityTester.h>
#include <geomKit/queries/pointFitting.h>
#include <geomKit/vAlgebra/vectorUtils.h>

#include "examples/gallery/Sheet.h"
#include "examples/gallery/pictures.h"
#include "examples/gallery/strokes.h"

using namespace geomKit;

namespace gallery {
namespace {

std::vector<Vector3> cloud(int count, const Vector3& e1, const Vector3& e2, const Vector3& e3) {
    std::vector<Vector3> points;
    points.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        points.push_back(e1 * scatter(3 * i) + e2 * scatter(3 * i + 1) + e3 * scatter(3 * i + 2) +
                         Vector3(0.0, 0.0, 0.8));
    }
    return points;
}

/// The points with their distances to the feet; returns the root of the mean squared distance.
template <class Foot>
double drawResiduals(const std::vector<Vector3>& points, Foot foot) {
    double sum = 0.0;
    for (const Vector3& p : points) {
        line(p, foot(p), kGrey, kThin);
        sum += distSq(p, foot(p));
    }
    path(points, kBlue, kDots);
    return std::sqrt(sum / static_cast<double>(points.size()));
}

void fitLine(Sheet& sheet) {
    const std::vector<Vector3> points =
        cloud(40, {1.2, 0.7, 0.5}, {-0.15, 0.35, -0.1}, {0.0, 0.05, 0.35});
    Vector3 centre;
    UVector3 dir;
    bestFitLine(points, &centre, &dir);
    sheet.panel(View::orbit(-60.0, 24.0, {0.0, 0.0, 0.55}, 4.1));
    floorGrid(1);
    const double rms =
        drawResiduals(points, [&](const Vector3& p) { return projectOnLine(p, centre, dir); });
    line(centre - dir * 1.7, centre + dir * 1.7, kOrange);
    arrow(centre, dir, kOrange);
    dot(centre, kOrange);
    sheet.caption("bestFitLine: " + std::to_string(points.size()) + " points at " + number(rms, 3) +
                  " (rms)");
}

void fitPlane(Sheet& sheet) {
    const std::vector<Vector3> points =
        cloud(60, {1.15, -0.1, 0.35}, {0.1, 1.0, 0.3}, {-0.1, -0.1, 0.3});
    Vector3 centre;
    UVector3 normal;
    bestFitPlane(points, &centre, &normal);
    sheet.panel(View::orbit(-60.0, 16.0, {0.0, 0.0, 0.65}, 4.1));
    floorGrid(1);
    path(square(centre, normal, 1.15), kOrange, kArea);
    const double rms =
        drawResiduals(points, [&](const Vector3& p) { return projectOnPlane(p, centre, normal); });
    arrow(centre, normal * (normal.z < 0.0 ? -0.8 : 0.8), kOrange);
    dot(centre, kOrange);
    sheet.caption("bestFitPlane: " + std::to_string(points.size()) + " points at " +
                  number(rms, 3) + " (rms)");
}

/// The distance from a place to the nearest point of a set.
double distanceToSet(const Vector3& p, const std::vector<Vector3>& points) {
    double nearest = distSq(p, points.front());
    for (const Vector3& q : points)
        nearest = std::min(nearest, distSq(p, q));
    return std::sqrt(nearest);
}

}  // namespace

std::string fits() {
    Sheet sheet("The line and the plane nearest to some points", 2, 1, 190.0, 1);
    fitLine(sheet);
    fitPlane(sheet);
    return sheet.document();
}

std::string proximity() {
    constexpr double kRadius = 0.25;
    std::vector<Vector3> points;
    for (int i = 0; i < 34; ++i) {
        const double t = 0.16 * i;
        points.emplace_back(0.42 * t - 1.15 + 0.05 * scatter(i),
                            0.95 * std::sin(1.25 * t) * (1.1 - 0.08 * t) + 0.05 * scatter(i + 90),
                            0.0);
    }
    const ProximityTester tester(points, kRadius);
    Sheet sheet("ProximityTester: what may be near a set", 1, 1, 300.0, 2);
    sheet.panel(View::map({0.0, 0.05, 0.0}, 5.6));

    // A flat set has one layer of cells of its own, between two of border.
    const auto corner = [&](int i, int j) {
        return tester.origin + Vector3(i * tester.cellX, j * tester.cellY, tester.cellZ);
    };
    int marked = 0;
    for (int j = 0; j < tester.ny; ++j) {
        for (int i = 0; i < tester.nx; ++i) {
            bool holdsPoint = false;
            for (const Vector3& p : points) {
                const Vector3 v = p - corner(i, j);
                holdsPoint |= v.x >= 0.0 && v.x < tester.cellX && v.y >= 0.0 && v.y < tester.cellY;
            }
            if (!tester.test(corner(i, j) + Vector3(tester.cellX, tester.cellY, 0.0) * 0.5)) {
                continue;
            }
            ++marked;
            path(rectangle(corner(i, j), corner(i + 1, j + 1)), kBlue, kArea);
            if (holdsPoint) path(rectangle(corner(i, j), corner(i + 1, j + 1)), kBlue, kArea);
        }
    }
    for (int i = 0; i <= tester.nx; ++i)
        line(corner(i, 0), corner(i, tester.ny), kPale, kThin);
    for (int j = 0; j <= tester.ny; ++j)
        line(corner(0, j), corner(tester.nx, j), kPale, kThin);

    int near = 0;
    int falseAlarms = 0;
    constexpr int kQueries = 70;
    for (int i = 0; i < kQueries; ++i) {
        const Vector3 x(2.6 * scatter(2 * i + 7), 1.3 * scatter(2 * i + 8) + 0.05, 0.0);
        const bool within = distanceToSet(x, points) < kRadius;
        const bool answer = tester.test(x);
        if (within) ++near;
        if (answer && !within) ++falseAlarms;
        dot(x, !answer ? kGrey : within ? kGreen : kOrange);
    }
    path(points, kInk, kDots);
    for (const std::size_t i : {0U, 12U, 33U}) {
        path(ring(points[i], {kRadius, 0.0, 0.0}, {0.0, kRadius, 0.0}), kInk, kThin);
    }
    sheet.caption("Cells that hold points (dark), widened by one (pale): " +
                  std::to_string(marked) + " of " + std::to_string(tester.nx) + " x " +
                  std::to_string(tester.ny) + ". Of " + std::to_string(kQueries) + " queries");
    sheet.caption(std::to_string(near) + " are within the radius (green), " +
                  std::to_string(falseAlarms) +
                  " pass for near (orange); false (grey) is certain.");
    return sheet.document();
}

}  // namespace gallery
