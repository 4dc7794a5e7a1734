/// @file
/// Functions of one variable, and the nearest point on a polyline.
#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include <geomKit/queries/PolylineProjector.h>
#include <geomKit/queries/SmoothWeight.h>
#include <geomKit/queries/polynomialRoots.h>

#include "examples/gallery/Sheet.h"
#include "examples/gallery/pictures.h"
#include "examples/gallery/strokes.h"

using namespace geomKit;

namespace gallery {
namespace {

/// The part of a function's graph that lies between two corners, which it may leave and enter.
void plot(const std::function<double(double)>& f, const Vector3& low, const Vector3& high,
          int colour) {
    constexpr int kSteps = 160;
    std::vector<Vector3> run;
    for (int i = 0; i <= kSteps; ++i) {
        const double x = low.x + (high.x - low.x) * i / kSteps;
        const double y = f(x);
        const bool inside = low.y <= y && y <= high.y;
        if (inside) run.emplace_back(x, y, 0.0);
        if (!inside || i == kSteps) {
            path(run, colour);
            run.clear();
        }
    }
}

void cubicGraph(Sheet& sheet, const double (&k)[4], double reach) {
    const auto f = [&](double x) { return ((k[0] * x + k[1]) * x + k[2]) * x + k[3]; };
    const Vector3 low(-2.4, -reach, 0.0);
    const Vector3 high(3.6, reach, 0.0);
    sheet.graph(low, high, 1.0, reach / 2.0);
    plot(f, low, high, kBlue);
    double found[3];
    const int count = solveCubic(k[0], k[1], k[2], k[3], found);
    std::string listed;
    for (int i = 0; i < count; ++i) {
        dot({found[i], f(found[i]), 0.0}, kRed);
        listed += (i == 0 ? ": " : ", ") + number(found[i], 4);
    }
    std::string call = "solveCubic(";
    for (int i = 0; i < 4; ++i)
        call += (i == 0 ? "" : ", ") + number(k[i], k[i] == std::floor(k[i]) ? 0 : 1);
    sheet.caption(call + ")");
    sheet.caption("answers " + std::to_string(count) + listed);
}

}  // namespace

std::string falloff() {
    Sheet sheet("SmoothWeight(2, 1): a falloff and its derivatives", 3, 1, 150.0, 2);
    const SmoothWeight weight(2.0, 1.0);
    struct Graph {
        const char* name;
        double low, high, step;
        int colour;
    };
    const Graph graphs[] = {{"w", -0.25, 1.2, 0.5, kBlue},
                            {"dw", -2.4, 2.4, 1.0, kOrange},
                            {"d2w", -7.4, 6.2, 2.0, kGreen}};
    for (const Graph& graph : graphs) {
        const auto f = [&](double x) {
            double w[3];
            weight.evaluate(x, &w[0], &w[1], &w[2]);
            return w[&graph - graphs];
        };
        const Vector3 low(0.5, graph.low, 0.0);
        const Vector3 high(3.35, graph.high, 0.0);
        sheet.graph(low, high, 1.0, graph.step);
        plot(f, low, high, graph.colour);
        for (const double x : {2.0, 2.5})
            dot({x, f(x), 0.0}, graph.colour);
        const std::string name = graph.name;
        sheet.caption(name + "(2) = " + number(f(2.0), 4));
        sheet.caption(name + "(2.5) = " + number(f(2.5), 4));
    }
    return sheet.document();
}

std::string roots() {
    Sheet sheet("solveCubic: real roots, ascending", 2, 2, 140.0, 2);
    cubicGraph(sheet, {1.0, -2.0, -2.5, 3.0}, 8.0);
    cubicGraph(sheet, {1.0, -2.0, 2.0, 2.0}, 8.0);
    cubicGraph(sheet, {1.0, -3.0, 0.0, 4.0}, 8.0);
    cubicGraph(sheet, {0.0, 1.0, -1.0, -2.0}, 4.0);
    return sheet.document();
}

std::string polyline() {
    Sheet sheet("PolylineProjector: the nearest point on a polyline", 1, 1, 250.0, 2);
    const std::vector<Vector3> points = {{-2.7, -0.6, 0.0}, {-2.3, 0.3, 0.0},  {-1.6, 0.75, 0.0},
                                         {-0.9, 0.45, 0.0}, {-0.8, -0.3, 0.0}, {-0.25, -0.85, 0.0},
                                         {0.6, -0.75, 0.0}, {0.9, 0.0, 0.0},   {0.55, 0.7, 0.0},
                                         {1.2, 1.0, 0.0},   {2.1, 0.7, 0.0},   {2.35, -0.2, 0.0},
                                         {2.0, -0.8, 0.0}};
    PolylineProjector projector(points);
    sheet.panel(View::map({0.0, 0.03, 0.0}, 6.4));
    double greatest = 0.0;
    constexpr int kQueries = 150;
    for (int i = 0; i < kQueries; ++i) {
        const Vector3 x(3.0 * scatter(2 * i), 1.2 * scatter(2 * i + 1), 0.0);
        const PolylineProjection nearest = projector.nearest(x);
        const int colours[] = {kBlue, kOrange, kGreen, kViolet};
        line(x, nearest.point, colours[nearest.segment % 4], kThin);
        path({x}, colours[nearest.segment % 4], kDots);
        greatest = std::max(greatest, (x - nearest.point).length());
    }
    path(points, kInk, kBold);
    for (const Vector3& x : {Vector3(-1.75, -0.35, 0.0), Vector3(0.08, 0.12, 0.0)}) {
        projector.project(x);
        line(x, projector.point, kRed);
        dot(x, kRed);
        dot(projector.point, kRed);
        sheet.label(x,
                    "segment " + std::to_string(projector.segment) + ", param " +
                        number(projector.param, 2),
                    0.0, 17.0, Anchor::kMiddle);
    }
    sheet.caption(std::to_string(kQueries) +
                  " queries with their nearest points, coloured by the "
                  "segment that owns them.");
    sheet.caption("Farthest: " + number(greatest, 2) + " from a polyline of length " +
                  number(projector.arcLength.back(), 2) + ".");
    return sheet.document();
}

}  // namespace gallery
