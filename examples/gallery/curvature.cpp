/// @file
/// The curvature of a curve and of a surface.
#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include <geomKit/vAlgebra/vectorUtils.h>

#include "examples/gallery/Sheet.h"
#include "examples/gallery/pictures.h"
#include "examples/gallery/strokes.h"

using namespace geomKit;

namespace gallery {
namespace {

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

struct Patch {
    std::vector<Vector3> corners;
    double depth;  ///< Towards the viewer, in steps: equal but for rounding is equal.
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

/// The colour of a Gaussian curvature: orange for a dome, blue for a saddle.
int curvatureColour(double gauss) {
    constexpr int kMiddle = kRampSize / 2;
    constexpr double kGreatest = 1.0 / (kTube * (kRing - kTube));
    constexpr double kGain = 1.3;
    const double shade = kGain * std::copysign(std::sqrt(std::abs(gauss) / kGreatest), gauss);
    return kRamp + kMiddle + static_cast<int>(std::lround(kMiddle * std::clamp(shade, -1.0, 1.0)));
}

/// The patches that face the viewer, the farthest first.
std::vector<Patch> torusPatches(const Vector3& towardsViewer) {
    constexpr int kAround = 44;
    constexpr int kAcross = 20;
    constexpr double kDepthSteps = 1e6;
    std::vector<Patch> patches;
    for (int i = 0; i < kAround; ++i) {
        for (int j = 0; j < kAcross; ++j) {
            const auto angle = [](double k, int count) { return kFullTurn * k / count; };
            const auto at = [&](double di, double dj) {
                return torusPoint(angle(i + di, kAround), angle(j + dj, kAcross));
            };
            const std::vector<Vector3> corners = {at(0, 0), at(1, 0), at(1, 1), at(0, 1)};
            const Vector3 normal = (corners[2] - corners[0]) % (corners[3] - corners[1]);
            if (normal * towardsViewer <= 0.0) continue;
            double least = 0.0;
            double greatest = 0.0;
            torusCurvatures(angle(i + 0.5, kAround), angle(j + 0.5, kAcross), &least, &greatest);
            patches.push_back({corners, std::round(at(0.5, 0.5) * towardsViewer * kDepthSteps),
                               curvatureColour(least * greatest)});
        }
    }
    std::stable_sort(patches.begin(), patches.end(),
                     [](const Patch& a, const Patch& b) { return a.depth < b.depth; });
    return patches;
}

void torus(Sheet& sheet) {
    const View view = View::orbit(-60.0, 42.0, {0.0, 0.0, 0.0}, 4.2);
    sheet.panel(view);
    for (const Patch& patch : torusPatches(view.towardsViewer()))
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

std::string curvature() {
    Sheet sheet("Curvature of a curve and of a surface", 2, 1, 230.0, 2);
    curvatureComb(sheet);
    torus(sheet);
    return sheet.document();
}

}  // namespace gallery
