#include "examples/gallery/Sheet.h"

#include <cmath>

#include "examples/gallery/strokes.h"

using namespace geomKit;

namespace gallery {
namespace {

constexpr double kSheetWidth = 600.0;
constexpr double kMargin = 16.0;
constexpr double kGap = 12.0;
constexpr double kTitleHeight = 42.0;
constexpr double kTitleBaseline = 28.0;
constexpr double kLineHeight = 18.0;
constexpr double kDegree = 3.141592653589793 / 180.0;

}  // namespace

View View::map(const Vector3& centre, double width) {
    View view;
    view.centre = centre;
    view.width = width;
    return view;
}

View View::graph(const Vector3& low, const Vector3& high) {
    View view = map((low + high) * 0.5, high.x - low.x);
    view.height = high.y - low.y;
    return view;
}

View View::orbit(double azimuth, double elevation, const Vector3& centre, double width) {
    const double az = azimuth * kDegree;
    const double el = elevation * kDegree;
    const Vector3 right(-std::sin(az), std::cos(az), 0.0);
    const Vector3 towards(std::cos(el) * std::cos(az), std::cos(el) * std::sin(az), std::sin(el));
    View view = map(centre, width);
    view.frame = Matrix3(right, towards % right, towards).transpose();
    return view;
}

Sheet::Sheet(const std::string& title, int columns, int rows, double panelHeight, int captionLines)
    : columns_(columns),
      panelWidth_((kSheetWidth - 2.0 * kMargin - (columns - 1) * kGap) / columns),
      panelHeight_(panelHeight),
      rowHeight_(panelHeight + captionLines * kLineHeight + kGap),
      sink_(kSheetWidth, kTitleHeight + rows * rowHeight_, title) {
    sink_.projection = [this](const Vector3& p) { return project(p); };
    sink_.text({kMargin, kTitleBaseline}, title, Role::kTitle, Anchor::kStart);
}

Pixel Sheet::project(const Vector3& p) const {
    const double scaleX = panelWidth_ / view_.width;
    const double scaleY = view_.height > 0.0 ? panelHeight_ / view_.height : scaleX;
    const Vector3 q = view_.frame * (p - view_.centre);
    return {corner_.x + 0.5 * panelWidth_ + q.x * scaleX,
            corner_.y + 0.5 * panelHeight_ - q.y * scaleY};
}

void Sheet::panel(const View& view) {
    const int column = panelCount_ % columns_;
    const int row = panelCount_ / columns_;
    corner_ = {kMargin + column * (panelWidth_ + kGap), kTitleHeight + row * rowHeight_};
    view_ = view;
    ++panelCount_;
    captionCount_ = 0;
    sink_.panel(corner_, panelWidth_, panelHeight_);
}

void Sheet::caption(std::string_view words) {
    ++captionCount_;
    sink_.text({corner_.x + 2.0, corner_.y + panelHeight_ + captionCount_ * kLineHeight}, words,
               Role::kCaption, Anchor::kStart);
}

void Sheet::label(const Vector3& at, std::string_view words, double dx, double dy, Anchor anchor) {
    const Pixel p = project(at);
    sink_.text({p.x + dx, p.y + dy}, words, Role::kLabel, anchor);
}

void Sheet::graph(const Vector3& low, const Vector3& high, double stepX, double stepY) {
    // Pixels for the labels of the ticks.
    constexpr double kLeft = 32.0;
    constexpr double kBelow = 24.0;
    const Vector3 size = high - low;
    panel(View::graph({low.x - size.x * kLeft / (panelWidth_ - kLeft),
                       low.y - size.y * kBelow / (panelHeight_ - kBelow), 0.0},
                      high));
    line(low, {high.x, low.y, 0.0}, kGrey, kThin);
    line(low, {low.x, high.y, 0.0}, kGrey, kThin);
    line({low.x, 0.0, 0.0}, {high.x, 0.0, 0.0}, kGrey, kThin);
    // Ticks keep clear of the corners.
    constexpr double kClear = 0.04;
    const auto decimals = [](double step) { return step == std::floor(step) ? 0 : 1; };
    const auto isShown = [](double v, double from, double to) {
        const double rim = (to - from) * kClear;
        return v > from + rim && v < to - rim;
    };
    for (double v = std::ceil(low.x / stepX) * stepX; v <= high.x; v += stepX) {
        if (!isShown(v, low.x, high.x)) continue;
        line({v, low.y - 0.015 * size.y, 0.0}, {v, low.y, 0.0}, kGrey, kThin);
        label({v, low.y, 0.0}, number(v, decimals(stepX)), 0.0, 15.0, Anchor::kMiddle);
    }
    for (double v = std::ceil(low.y / stepY) * stepY; v <= high.y; v += stepY) {
        if (!isShown(v, low.y, high.y)) continue;
        line({low.x - 0.012 * size.x, v, 0.0}, {low.x, v, 0.0}, kGrey, kThin);
        label({low.x, v, 0.0}, number(v, decimals(stepY)), -6.0, 4.5, Anchor::kEnd);
    }
}

}  // namespace gallery
