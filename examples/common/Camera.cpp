#include "examples/common/Camera.h"

#include <algorithm>
#include <cmath>

#include <geomKit/vAlgebra/vectorUtils.h>

using namespace geomKit;

namespace demo {

Camera::Camera(const Vector3& eye, const Vector3& target, const UVector3& up)
    : eye_(eye), forward_(target - eye) {
    right_ = (forward_ % up).normalize();
    down_ = (forward_ % right_).normalize();
}

void Camera::fit(const std::vector<Vector3>& points, double width, double height, double margin) {
    if (points.empty()) return;
    zoom_ = 1.0;
    centre_ = Point2();
    Point2 low = pixel(points.front());
    Point2 high = low;
    for (const Vector3& p : points) {
        const Point2 q = pixel(p);
        low = {std::min(low.x, q.x), std::min(low.y, q.y)};
        high = {std::max(high.x, q.x), std::max(high.y, q.y)};
    }
    const double x = high.x - low.x;
    const double y = high.y - low.y;
    if (x > 0.0 || y > 0.0) {
        zoom_ = std::min((width - 2.0 * margin) / std::max(x, 1e-12),
                         (height - 2.0 * margin) / std::max(y, 1e-12));
    }
    centre_ = {0.5 * (width - (low.x + high.x) * zoom_), 0.5 * (height - (low.y + high.y) * zoom_)};
}

ScreenPoint Camera::project(const Vector3& p) const {
    const Vector3 d = p - eye_;
    const double depth = d * forward_;
    const double scale = zoom_ / depth;
    return {centre_.x + d * right_ * scale, centre_.y + d * down_ * scale, depth};
}

Point2 Camera::pixel(const Vector3& p) const {
    const ScreenPoint s = project(p);
    return {s.x, s.y};
}

std::optional<Vector3> Camera::onPlane(const Point2& pixel, const Vector3& o,
                                       const UVector3& n) const {
    const Vector3 ray = forward_ + right_ * ((pixel.x - centre_.x) / zoom_) +
                        down_ * ((pixel.y - centre_.y) / zoom_);
    const double distance = ((o - eye_) * n) / (ray * n);
    if (!(distance > 0.0) || std::isinf(distance)) return std::nullopt;
    return eye_ + ray * distance;
}

Camera cameraAround(const std::vector<Vector3>& points, const UVector3& from, const UVector3& up,
                    double distance, double width, double height, double margin) {
    Vector3 low = points.empty() ? Vector3() : points.front();
    Vector3 high = low;
    for (const Vector3& p : points) {
        for (int k = 0; k < 3; ++k) {
            low[k] = std::min(low[k], p[k]);
            high[k] = std::max(high[k], p[k]);
        }
    }
    const Vector3 middle = (low + high) * 0.5;
    const double radius = std::max(0.5 * dist(low, high), 1e-6);
    Camera camera(middle + from * (distance * radius), middle, up);
    camera.fit(points, width, height, margin);
    return camera;
}

}  // namespace demo
