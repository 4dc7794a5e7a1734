/// @file
/// A radial-basis field through the outline of a guitar body.
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include <geomKit/implicits/Implicit.h>

#include "examples/gallery/Sheet.h"
#include "examples/gallery/contours.h"
#include "examples/gallery/pictures.h"
#include "examples/gallery/strokes.h"

using namespace geomKit;

namespace gallery {
namespace {

using Samples = std::vector<std::pair<Vector3, double>>;

constexpr double kUnit = 24.0;   ///< Centimetres; brings the outline to about unit size.
constexpr double kLayer = 0.12;  ///< Height of the two layers of samples over and under z = 0.
constexpr double kOffset = 0.07;

/// A classical guitar, in centimetres: half its width at distances from its lower end.
constexpr double kProfile[][2] = {
    {0.0, 0.0},   {5.0, 0.4},   {10.0, 1.9},  {14.6, 5.0},  {17.6, 9.4},  {18.4, 14.0},
    {17.6, 18.4}, {15.3, 22.5}, {12.9, 26.0}, {11.8, 29.4}, {12.2, 32.6}, {13.3, 36.0},
    {13.9, 39.4}, {13.1, 42.9}, {10.5, 45.8}, {6.8, 47.5},  {3.2, 48.2},  {0.0, 48.3}};

std::vector<Vector3> bodyOutline() {
    const auto at = [](double x, double y) { return Vector3(x, y - kUnit, 0.0) / kUnit; };
    std::vector<Vector3> points;
    for (const auto& [x, y] : kProfile)
        points.push_back(at(x, y));
    // The other half, back down, without the two points on the axis.
    for (std::size_t i = points.size() - 2; i > 0; --i)
        points.push_back(at(-kProfile[i][0], kProfile[i][1]));
    return points;
}

std::vector<Vector3> soundHole() {
    std::vector<Vector3> points =
        ring({0.0, 7.4 / kUnit, 0.0}, {0.0, 4.3 / kUnit, 0.0}, {4.3 / kUnit, 0.0, 0.0}, 12);
    points.pop_back();
    return points;
}

/// Value 0 on a closed outline that runs with the wood on its left, and the distance on either side
/// of it: negative in the wood. In two layers: samples of one plane have no field.
void addOutline(const std::vector<Vector3>& points, Samples* samples) {
    const std::size_t count = points.size();
    for (std::size_t i = 0; i < count; ++i) {
        const Vector3 along = points[(i + 1) % count] - points[(i + count - 1) % count];
        const Vector3 out = UVector3(along.y, -along.x, 0.0) * kOffset;
        for (const double z : {-kLayer, kLayer}) {
            const Vector3 p = points[i] + Vector3(0.0, 0.0, z);
            samples->emplace_back(p, 0.0);
            samples->emplace_back(p + out, kOffset);
            samples->emplace_back(p - out, -kOffset);
        }
    }
}

}  // namespace

std::string outline() {
    Samples samples;
    addOutline(bodyOutline(), &samples);
    addOutline(soundHole(), &samples);
    const Implicit field(samples);

    Sheet sheet("Implicit: a radial-basis field around an outline", 2, 1, 372.0, 2);
    const View view = View::map({0.0, 0.0, 0.0}, 1.95);
    sheet.panel(view);
    for (const auto& [p, value] : samples) {
        if (p.z < 0.0) path({p}, value < 0.0 ? kBlue : value > 0.0 ? kOrange : kInk, kDots);
    }
    sheet.caption(std::to_string(samples.size()) + " samples in two layers: 0 on the");
    sheet.caption("outline, -" + number(kOffset, 2) + " inside, " + number(kOffset, 2) +
                  " outside");

    sheet.panel(view);
    constexpr int kCellsX = 72;
    constexpr int kCellsY = 96;
    const Vector3 low(-0.95, -1.26, 0.0);
    const Vector3 high(0.95, 1.26, 0.0);
    const std::vector<Vector3> corners = gridCorners(low, high, kCellsX, kCellsY);
    std::vector<double> values(corners.size());
    field.evaluate(corners.data(), corners.size(), values.data());
    const auto levels = [&](double level) {
        return contours(values, low, high, kCellsX, kCellsY, level);
    };
    for (int step = 1; step <= 4; ++step) {
        for (const auto& curve : levels(0.07 * step))
            path(curve, kRamp + 5 + step - 1, kThin);
        for (const auto& curve : levels(-0.07 * step))
            path(curve, kRamp + 3 - (step - 1), kThin);
    }
    for (const auto& curve : levels(0.0)) {
        path(curve, kInk, kBold);
        for (std::size_t i = 0; i < curve.size(); i += 9) {
            const Vector3 g = field.getGradient(curve[i]);
            arrow(curve[i], g * 0.1, kRed);
        }
    }
    sheet.caption("zero contour, levels 0.07 apart;");
    sheet.caption(field.maxResidual(samples) < 1e-9 ? "no sample missed by more than 1e-9"
                                                    : "samples missed by more than 1e-9");
    return sheet.document();
}

}  // namespace gallery
