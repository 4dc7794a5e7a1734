/// @file
/// Boxes, and segments cut by half-planes and rectangles.
#include <cstddef>
#include <string>
#include <vector>

#include <geomKit/queries/Bbox.h>
#include <geomKit/queries/segments2D.h>

#include "examples/gallery/Sheet.h"
#include "examples/gallery/pictures.h"
#include "examples/gallery/strokes.h"

using namespace geomKit;

namespace gallery {
namespace {

void cornersAlongDirection(Sheet& sheet) {
    std::vector<Vector3> points;
    for (int i = 0; i < 60; ++i) {
        const double u = scatter(3 * i);
        points.emplace_back(u, 0.75 * scatter(3 * i + 1) * (1.1 - u * u),
                            0.55 * u + 0.3 * scatter(3 * i + 2));
    }
    const Bbox box(points);
    const UVector3 dir(0.9, 0.1, -0.2);
    Vector3 low;
    Vector3 high;
    box.boundsInDir(dir, &low, &high);

    sheet.panel(View::orbit(-58.0, 22.0, {0.0, 0.0, 0.0}, 3.7));
    boxEdges(box.minPt, box.maxPt, kBlue, kThin);
    path(points, kBlue, kDots);
    const Vector3 middle = (box.minPt + box.maxPt) * 0.5;
    for (const Vector3& corner : {low, high}) {
        const Vector3 foot = middle + dir * ((corner - middle) * dir);
        line(foot, corner, kRed, kDashes);
        line(middle, foot, kOrange);
    }
    arrow(middle, dir * ((high - middle) * dir), kOrange);
    dot(low, kRed);
    dot(high, kRed);
    sheet.label(low, "low", -4.0, 18.0, Anchor::kEnd);
    sheet.label(high, "high", 4.0, -10.0);
    sheet.caption("boundsInDir: low at " + number(low * dir, 2) + ", high at " +
                  number(high * dir, 2));
    sheet.caption("along the arrow; a box of 60 points");
}

void sharedPart(Sheet& sheet) {
    const Bbox a({{-1.3, -0.8, 0.0}, {0.35, 0.45, 1.0}});
    const Bbox b({{-0.45, -0.25, 0.0}, {1.2, 0.85, 1.0}});
    const Bbox sum = a + b;
    Bbox shared = a;
    shared.isec(b);
    sheet.panel(View::map({-0.05, 0.03, 0.0}, 3.3));
    path(rectangle(sum.minPt, sum.maxPt), kGrey, kArea);
    path(rectangle(a.minPt, a.maxPt), kBlue, kArea);
    path(rectangle(b.minPt, b.maxPt), kOrange, kArea);
    path(rectangle(shared.minPt, shared.maxPt), kRed, kArea);
    for (const Vector3& p : {Vector3(-0.05, 0.1, 0.5), Vector3(0.9, -0.5, 0.5)}) {
        const bool in = shared.filter(p);
        dot(p, in ? kGreen : kRed);
        sheet.label(p, in ? "in" : "out");
    }
    sheet.label({-1.3, -0.8, 0.0}, "a", 6.0, -6.0);
    sheet.label({1.2, 0.85, 0.0}, "b", -6.0, 16.0, Anchor::kEnd);
    sheet.label({-1.3, 0.85, 0.0}, "a + b", 6.0, 16.0);
    sheet.caption("volumes: a " + number(a.volume(), 2) + ", b " + number(b.volume(), 2) +
                  ", a + b " + number(sum.volume(), 2));
    sheet.caption("a.isec(b) " + number(shared.volume(), 2) + "; filter tells in from out");
}

constexpr int kSegments = 11;
constexpr double kHalfWidth = 1.5;
constexpr double kHalfHeight = 1.22;

/// One of some segments strewn over a panel.
void segment(int index, Vector3* a, Vector3* b) {
    *a = {1.3 * scatter(4 * index), scatter(4 * index + 1), 0.0};
    *b = {1.3 * scatter(4 * index + 2), scatter(4 * index + 3), 0.0};
}

void halfPlane(Sheet& sheet) {
    const Vector3 q(0.1, -0.1, 0.0);
    const UVector3 n(0.35, 1.0, 0.0);
    sheet.panel(View::map({}, 2.0 * kHalfWidth));
    // The clipped edges of the panel are the outline of the part that the half-plane keeps.
    const std::vector<Vector3> rim =
        rectangle({-kHalfWidth, -kHalfHeight, 0.0}, {kHalfWidth, kHalfHeight, 0.0});
    std::vector<Vector3> side;
    for (std::size_t i = 0; i < rim.size(); ++i) {
        Vector3 a = rim[i];
        Vector3 b = rim[(i + 1) % rim.size()];
        if (segClipHalfPlane2D(a, b, q, n)) side.insert(side.end(), {a, b});
    }
    path(side, kBlue, kArea);
    int kept = 0;
    for (int i = 0; i < kSegments; ++i) {
        Vector3 a;
        Vector3 b;
        segment(i, &a, &b);
        line(a, b, kGrey, kThin);
        if (!segClipHalfPlane2D(a, b, q, n)) continue;
        line(a, b, kOrange);
        ++kept;
    }
    arrow(q, n * 0.5, kBlue);
    dot(q, kBlue);
    sheet.caption("segClipHalfPlane2D");
    sheet.caption(std::to_string(kept) + " of " + std::to_string(kSegments) + " reach into it");
}

void clipToRectangle(Sheet& sheet) {
    const Vector3 low(-0.75, -0.5, 0.0);
    const Vector3 high(0.65, 0.6, 0.0);
    sheet.panel(View::map({}, 2.0 * kHalfWidth));
    path(rectangle(low, high), kBlue, kArea);
    int kept = 0;
    for (int i = 0; i < kSegments; ++i) {
        Vector3 a;
        Vector3 b;
        segment(i, &a, &b);
        line(a, b, kGrey, kThin);
        Vector3 clippedA;
        Vector3 clippedB;
        if (!segClipRect2D(a, b, low, high, clippedA, clippedB)) continue;
        line(clippedA, clippedB, kOrange);
        ++kept;
    }
    sheet.caption("segClipRect2D");
    sheet.caption(std::to_string(kept) + " of " + std::to_string(kSegments) + " meet it");
}

void crossings(Sheet& sheet) {
    const Vector3 a0(-1.25, -0.35, 0.0);
    const Vector3 a1(1.25, 0.3, 0.0);
    sheet.panel(View::map({}, 2.0 * kHalfWidth));
    int count = 0;
    for (int i = 0; i < 12; ++i) {
        // With these numbers no end lies near another segment, so that a reader can count.
        const int k = 283 + i;
        const Vector3 b0(-1.15 + 0.21 * i, 0.45 + 0.4 * scatter(k), 0.0);
        const Vector3 b1 = b0 + Vector3(0.2 * scatter(k + 20), -0.75 + 0.45 * scatter(k + 40), 0.0);
        const bool crosses = segsIntersect(a0, a1, b0, b1, 1e-9, true);
        line(b0, b1, crosses ? kOrange : kGrey, crosses ? kLine : kThin);
        if (crosses) ++count;
    }
    line(a0, a1, kBlue, kBold);
    sheet.caption("segsIntersect");
    sheet.caption(std::to_string(count) + " of 12 cross the blue");
}

}  // namespace

std::string boxes() {
    Sheet sheet("Bbox: boxes, and their extreme corners", 2, 1, 190.0, 2);
    cornersAlongDirection(sheet);
    sharedPart(sheet);
    return sheet.document();
}

std::string clipping() {
    Sheet sheet("Segments in the plane: cut, or crossing", 3, 1, 148.0, 2);
    halfPlane(sheet);
    clipToRectangle(sheet);
    crossings(sheet);
    return sheet.document();
}

}  // namespace gallery
