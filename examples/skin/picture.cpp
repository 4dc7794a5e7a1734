#include "examples/skin/picture.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <geomKit/debugDraw/gkFuncBinder.h>
#include <geomKit/vAlgebra/vectorUtils.h>

#include "examples/common/Camera.h"
#include "examples/common/DebugSink.h"
#include "examples/common/DepthRaster.h"

using namespace geomKit;

namespace demo {
namespace {

constexpr int kSamplesPerSide = 3;
// By the picture's width: around and between the figures; the tallest figure; a bone.
constexpr double kMargin = 0.03;
constexpr double kTallest = 0.7;
constexpr double kBoneWidth = 0.0022;
// By the radius of the largest figure.
constexpr double kEyeDistance = 6.0;

/// The colour of bones: the mesh does not use it.
constexpr int kBoneColour = 0;

const Vector3 kUp(0.0, 1.0, 0.0);
const UVector3 kTowardsEye(0.45, 0.28, 1.0);
const UVector3 kKeyLight(-0.45, 0.75, 0.6);
const UVector3 kFillLight(0.9, 0.1, 0.35);

/// The box around points of space, or of a picture with z = 0.
struct Box {
    Vector3 low;
    Vector3 high;

    explicit Box(const std::vector<Vector3>& points) : low(points.front()), high(low) {
        for (const Vector3& p : points) {
            for (int k = 0; k < 3; ++k) {
                low[k] = std::min(low[k], p[k]);
                high[k] = std::max(high[k], p[k]);
            }
        }
    }
    Vector3 middle() const { return (low + high) * 0.5; }
    Vector3 size() const { return high - low; }
};

/// One pose, seen by a camera of its own, and its place in the picture.
class Figure {
public:
    Figure(SkinnedMesh shape, double eyeDistance)
        : shape_(std::move(shape)),
          camera_(lookAt(Box(shape_.positions).middle(), eyeDistance)),
          frame_(pixels(shape_.positions, camera_)) {}

    /// How much the camera sees of it, before any zoom.
    Vector3 size() const { return frame_.size(); }
    /// Puts the lower left corner of that frame at a pixel.
    void place(double zoom, double left, double bottom) {
        zoom_ = zoom;
        origin_ = {left - zoom * frame_.low.x, bottom - zoom * frame_.high.y};
    }

    ScreenPoint project(const Vector3& p) const {
        const ScreenPoint at = camera_.project(p);
        return {origin_.x + zoom_ * at.x, origin_.y + zoom_ * at.y, at.depth};
    }
    void drawSurface(const RiggedMesh& mesh, DepthRaster& raster) const;

private:
    static Camera lookAt(const Vector3& centre, double distance) {
        return {centre + kTowardsEye * distance, centre, UVector3(kUp)};
    }
    static Box pixels(const std::vector<Vector3>& points, const Camera& camera) {
        std::vector<Vector3> all;
        for (const Vector3& p : points) {
            const Point2 at = camera.pixel(p);
            all.emplace_back(at.x, at.y, 0.0);
        }
        return Box(all);
    }

    SkinnedMesh shape_;
    Camera camera_;
    Box frame_;
    double zoom_ = 1.0;
    Point2 origin_;
};

/// A matte surface under a sky, a key and a fill light, with a faint shine and a lit rim.
Colour shade(const Colour& surface, const Vector3& normal, const Vector3& toEye) {
    const double sky = 0.30 + 0.16 * normal.y;
    const double key = std::max(0.0, normal * kKeyLight);
    const double fill = std::max(0.0, normal * kFillLight);
    const UVector3 half(kKeyLight + toEye);
    const double shine = 0.08 * std::pow(std::max(0.0, normal * half), 30.0);
    const double rim = 0.12 * std::pow(1.0 - std::clamp(normal * toEye, 0.0, 1.0), 3.0);
    const Colour matte = scaled(surface, sky + 0.70 * key + 0.14 * fill);
    const auto light = static_cast<float>(shine + rim);
    return {std::min(1.0F, matte.r + light), std::min(1.0F, matte.g + light),
            std::min(1.0F, matte.b + light), 1.0F};
}

void Figure::drawSurface(const RiggedMesh& mesh, DepthRaster& raster) const {
    for (const auto& triangle : mesh.triangles) {
        const auto index = [&](int k) {
            return static_cast<std::size_t>(triangle[static_cast<std::size_t>(k)]);
        };
        const Vector3& a = shape_.positions[index(0)];
        const Vector3 outside = (shape_.positions[index(1)] - a) % (shape_.positions[index(2)] - a);
        // Seen from inside, as an open tube is, the surface is lit on that side.
        const double side = outside * (camera_.eye() - a) < 0.0 ? -1.0 : 1.0;
        const auto corner = [&](int k) {
            const Vector3& p = shape_.positions[index(k)];
            const UVector3 toEye(camera_.eye() - p);
            const Vector3 normal = shape_.normals[index(k)] * side;
            return DepthRaster::Vertex{project(p), shade(mesh.colours[index(k)], normal, toEye)};
        };
        raster.triangle(corner(0), corner(1), corner(2));
    }
}

/// Spreads the figures over the width, all standing at one height; the height of the picture.
int arrange(std::vector<Figure>& figures, int width) {
    double widths = 0.0;
    double tallest = 0.0;
    for (const Figure& figure : figures) {
        widths += figure.size().x;
        tallest = std::max(tallest, figure.size().y);
    }
    const double margin = kMargin * width;
    const auto gaps = static_cast<double>(figures.size() + 1);
    double zoom = std::min((width - gaps * margin) / widths, kTallest * width / tallest);
    if (!std::isfinite(zoom)) zoom = 1.0;

    const double gap = (width - zoom * widths) / gaps;
    const double height = std::min(kTallest * width, zoom * tallest) + 2.0 * margin;
    double left = gap;
    for (Figure& figure : figures) {
        figure.place(zoom, left, height - margin);
        left += zoom * figure.size().x + gap;
    }
    return static_cast<int>(height);
}

/// What a host calls while it looks at its skeleton; it knows nothing of images.
void drawBones(const RiggedMesh& mesh, const BoneTransformVector& pose) {
    std::vector<Vector3> joints;
    for (std::size_t k = 0; k < mesh.joints.size(); ++k)
        joints.push_back(pose.bones[k].transformPoint(mesh.joints[k].rest));
    for (std::size_t k = 0; k < joints.size(); ++k) {
        if (mesh.joints[k].parent >= 0) {
            const Vector3& from = joints[static_cast<std::size_t>(mesh.joints[k].parent)];
            gkFuncBinder::drawVector(from, joints[k] - from, kBoneColour, 1.0);
        }
        gkFuncBinder::drawPoint(joints[k], kBoneColour);
    }
}

}  // namespace

Image drawPoses(const RiggedMesh& mesh, const std::vector<BoneTransformVector>& poses, int width) {
    std::vector<SkinnedMesh> shapes;
    double radius = 0.0;
    for (const BoneTransformVector& pose : poses) {
        shapes.push_back(skin(mesh, pose));
        radius = std::max(radius, 0.5 * Box(shapes.back().positions).size().length());
    }
    std::vector<Figure> figures;
    figures.reserve(shapes.size());
    for (SkinnedMesh& shape : shapes)
        figures.emplace_back(std::move(shape), kEyeDistance * radius);
    const int height = arrange(figures, width);

    DepthRaster raster(width, height, kSamplesPerSide);
    for (const Figure& figure : figures)
        figure.drawSurface(mesh, raster);
    Image image = vignette(width, height, hexColour(0xF6F7F9), hexColour(0xD3DAE2));
    raster.drawInto(image);

    for (std::size_t i = 0; i < poses.size(); ++i) {
        DebugSink sink(image, [&](const Vector3& p) {
            const ScreenPoint at = figures[i].project(p);
            return Point2{at.x, at.y};
        });
        sink.lineWidth = kBoneWidth * width;
        sink.dotRadius = 1.5 * sink.lineWidth;
        sink.arrowHead = 4.0 * sink.lineWidth;
        drawBones(mesh, poses[i]);
    }
    return image;
}

}  // namespace demo
