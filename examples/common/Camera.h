/// @file
/// A perspective camera that maps points of space to pixels.
#pragma once

#include <optional>
#include <vector>

#include <geomKit/vAlgebra/Vector3.h>

#include "examples/common/draw.h"

namespace demo {

/// A pixel position with the distance along the viewing direction; `depth` <= 0 lies behind the
/// eye and has no picture.
struct ScreenPoint {
    double x = 0.0;
    double y = 0.0;
    double depth = 0.0;
};

class Camera {
public:
    /// Looks from `eye` at `target`, which appears at (0, 0); one unit at depth 1 is one pixel.
    Camera(const geomKit::Vector3& eye, const geomKit::Vector3& target,
           const geomKit::UVector3& up);

    /// Zooms and shifts the picture, without moving the eye, so that the points fill a picture of
    /// `width` x `height` pixels but for `margin` pixels on each side.
    void fit(const std::vector<geomKit::Vector3>& points, double width, double height,
             double margin);

    ScreenPoint project(const geomKit::Vector3& p) const;
    /// The position alone.
    Point2 pixel(const geomKit::Vector3& p) const;

    /// The point of the plane through `o` with normal `n` that appears at `pixel`; nothing when the
    /// plane is not in front of the eye there.
    std::optional<geomKit::Vector3> onPlane(const Point2& pixel, const geomKit::Vector3& o,
                                            const geomKit::UVector3& n) const;

    const geomKit::Vector3& eye() const { return eye_; }

private:
    geomKit::Vector3 eye_;
    geomKit::UVector3 right_;
    geomKit::UVector3 down_;
    geomKit::UVector3 forward_;
    double zoom_ = 1.0;
    Point2 centre_;
};

/// The camera that sees all points from the direction `from` (of the eye, seen from their middle),
/// `distance` bounding radii away, fitted as by `Camera::fit`.
Camera cameraAround(const std::vector<geomKit::Vector3>& points, const geomKit::UVector3& from,
                    const geomKit::UVector3& up, double distance, double width, double height,
                    double margin);

}  // namespace demo
