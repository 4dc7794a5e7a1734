#include "examples/meshFunction/groundShadow.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <geomKit/vAlgebra/vectorUtils.h>

using namespace geomKit;

namespace demo {
namespace {

constexpr double kDarkness = 0.5;
/// Vertices up to this share of the model's height count as its foot.
constexpr double kFootHeight = 0.15;

/// The smallest and the largest of some numbers.
struct Range {
    void add(double x) {
        low = std::min(low, x);
        high = std::max(high, x);
    }
    double middle() const { return 0.5 * (low + high); }
    double half() const { return std::max(0.5 * (high - low), 1e-9); }

    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();
};

}  // namespace

void drawGroundShadow(Image& image, const Camera& camera, const Mesh& mesh, const UVector3& up) {
    Vector3 e1;
    Vector3 e2;
    getBasis(up, e1, e2);
    Range height;
    for (const Vector3& p : mesh.positions) {
        height.add(p * up);
    }
    const double ground = height.low;
    const double top = ground + kFootHeight * 2.0 * height.half();
    Range along1;
    Range along2;
    for (const Vector3& p : mesh.positions) {
        if (p * up > top) continue;
        along1.add(p * e1);
        along2.add(p * e2);
    }

    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const auto p = camera.onPlane({x + 0.5, y + 0.5}, up * ground, up);
            if (!p) continue;
            const double r1 = (*p * e1 - along1.middle()) / along1.half();
            const double r2 = (*p * e2 - along2.middle()) / along2.half();
            const double rSq = r1 * r1 + r2 * r2;
            image.blend(x, y, Colour{}, kDarkness * std::exp(-rSq * rSq / 2.5));
        }
    }
}

}  // namespace demo
