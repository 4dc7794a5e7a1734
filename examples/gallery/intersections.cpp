/// @file
/// Lines with lines, lines with planes, planes with planes.
#include <string>

#include <geomKit/queries/LineLineInt.h>
#include <geomKit/queries/LinePlaneInt.h>
#include <geomKit/queries/PlanePlaneInt.h>

#include "examples/gallery/Sheet.h"
#include "examples/gallery/pictures.h"
#include "examples/gallery/strokes.h"

using namespace geomKit;

namespace gallery {
namespace {

constexpr double kTol = 1e-9;
constexpr const char* kLineNames[] = {"kMeet", "kParallel", "kCoincident", "kSkew"};
constexpr const char* kLinePlaneNames[] = {"kHit", "kParallel", "kInPlane"};
constexpr const char* kPlaneNames[] = {"kMeet", "kParallel", "kCoincident"};

std::string status(int value, const char* const* names) {
    return "status " + std::to_string(value) + ": " + names[value];
}

/// A line around its point, which is marked, with its direction.
void drawLine(const Vector3& p, const Vector3& d, double back, double ahead, int colour) {
    line(p - d * back, p + d * ahead, colour);
    arrow(p, d, colour);
    dot(p, colour);
}

/// What a line above the floor throws on it.
void drawShadow(const Vector3& p, const Vector3& d, double back, double ahead) {
    const auto onFloor = [](const Vector3& v) { return Vector3(v.x, v.y, 0.0); };
    line(onFloor(p - d * back), onFloor(p + d * ahead), kPale, kBold);
}

void linePair(Sheet& sheet, const Vector3& p1, const Vector3& d1, const Vector3& p2,
              const Vector3& d2) {
    sheet.panel(View::orbit(-62.0, 28.0, {0.0, 0.0, 0.55}, 6.0));
    floorGrid(2);
    const LineLineInt query(p1, d1, p2, d2, kTol);
    const bool coincident = query.status == LineLineInt::kCoincident;
    drawShadow(p1, d1, 0.5, 2.9);
    if (!coincident) drawShadow(p2, d2, 0.5, 2.7);
    drawLine(p1, d1, 0.5, 2.9, kBlue);
    if (coincident) line(p2, p2 + d2 * 1.6, kOrange, kDashes);
    drawLine(p2, d2, coincident ? 0.0 : 0.5, coincident ? 1.0 : 2.7, kOrange);

    const Vector3 near1 = p1 + d1 * query.param1;
    const Vector3 near2 = p2 + d2 * query.param2;
    line(near1, near2, kRed, kDashes);
    dot(near1, kRed);
    dot(near2, kRed);
    sheet.label(p1, "p1", -6.0, -9.0, Anchor::kEnd);
    sheet.label(p2, "p2", 9.0, 14.0);
    sheet.caption(status(query.status, kLineNames));
    sheet.caption("param1 = " + number(query.param1, 2) + ", param2 = " + number(query.param2, 2) +
                  ", gap " + number((near2 - near1).length(), 2));
}

void linePlane(Sheet& sheet, const Vector3& p, const UVector3& d) {
    const Vector3 q(0.85, 0.6, 0.0);
    const UVector3 n(0.0, 0.0, 1.0);
    const LinePlaneInt query(p, d, q, n, kTol);
    sheet.panel(View::orbit(-62.0, 24.0, {0.0, 0.0, 0.2}, 3.6));
    path(rectangle({-1.3, -1.3, 0.0}, {1.3, 1.3, 0.0}), kBlue, kArea);
    arrow(q, n * 0.8, kBlue);
    const bool hit = query.status == LinePlaneInt::kHit;
    line(p, hit ? query.point : p + d * 2.0, kOrange);
    if (hit) line(query.point, query.point + d * 0.8, kOrange, kDashes);
    arrow(p, d * 0.9, kOrange);
    dot(p, kOrange);
    if (hit) {
        dot(query.point, kRed);
        sheet.label(query.point, "point", 9.0, 4.0);
    }
    sheet.label(p, "p", -7.0, -7.0, Anchor::kEnd);
    sheet.label(q + n * 0.8, "n", 7.0, 6.0);
    sheet.caption("LinePlaneInt");
    sheet.caption(status(query.status, kLinePlaneNames));
    sheet.caption("param = " + number(query.param, 2));
}

void planePair(Sheet& sheet, const Vector3& p2, const UVector3& nB, const char* remark) {
    const Vector3 p1(0.0, 0.0, 0.0);
    const UVector3 nA(0.0, 0.0, 1.0);
    const PlanePlaneInt query(p1, nA, p2, nB, kTol);
    sheet.panel(View::orbit(-62.0, 24.0, {0.0, 0.0, 0.25}, 3.9));
    const bool coincident = query.status == PlanePlaneInt::kCoincident;
    path(square(p1, nA, 1.15), kBlue, kArea);
    path(square(p2, nB, coincident ? 0.8 : 1.15), kOrange, kArea);
    if (query.status == PlanePlaneInt::kMeet) {
        line(query.point - query.dir * 1.15, query.point + query.dir * 1.15, kRed, kBold);
        line(p1, query.point, kGrey, kDashes);
        dot(query.point, kRed);
        sheet.label(query.point, "point", 8.0, 16.0);
    }
    arrow(p1, nA * 0.7, kBlue);
    arrow(p2, nB * 0.7, kOrange);
    dot(p1, kBlue);
    dot(p2, kOrange);
    sheet.caption("PlanePlaneInt");
    sheet.caption(status(query.status, kPlaneNames));
    sheet.caption(remark);
}

}  // namespace

std::string lines() {
    Sheet sheet("LineLineInt: where two lines meet, or come closest", 2, 2, 172.0, 2);
    const Vector3 p1(-1.5, -0.9, 0.5);
    const Vector3 d1(1.0, 0.4, 0.2);
    const Vector3 d2(0.1, -1.0, 0.15);
    linePair(sheet, p1, d1, p1 + d1 * 1.4 - d2 * 1.2, d2);
    linePair(sheet, p1, d1, {-0.2, 1.2, 1.35}, {0.2, -1.0, 0.0});
    linePair(sheet, p1, d1, {-1.65, 0.3, 0.6}, d1);
    linePair(sheet, p1, d1, p1 + d1 * 1.3, d1);
    return sheet.document();
}

std::string planes() {
    Sheet sheet("Lines and planes, planes and planes", 3, 2, 128.0, 3);
    linePlane(sheet, {-0.9, -0.5, 1.2}, {0.6, 0.45, -0.8});
    linePlane(sheet, {-1.2, -0.4, 0.8}, {1.0, 0.2, 0.0});
    linePlane(sheet, {-1.2, -0.3, 0.0}, {1.0, 0.2, 0.0});
    planePair(sheet, {0.5, 0.1, 0.3}, {-0.8, 0.25, 0.6}, "dir = nA x nB");
    planePair(sheet, {0.1, 0.1, 0.75}, {0.0, 0.0, 1.0}, "0.75 apart along nA");
    planePair(sheet, {0.35, 0.2, 0.0}, {0.0, 0.0, -1.0}, "opposite normals");
    return sheet.document();
}

}  // namespace gallery
