// The examples of docs/mesh-function.md.
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "geomKit/geomKit.h"

using namespace geomKit;

namespace {

int pointsDrawn = 0;

void countPoint(const Vector3&, int) {}

void countPoints(const std::vector<Vector3>& points, int, int) {
    pointsDrawn += static_cast<int>(points.size());
}

}  // namespace

int main() {
    // A square of 100 pixels whose texture runs from 0 to 1.
    using Point = MeshFunction2D::Point;
    const std::vector<Point> pixels = {{0, 0}, {100, 0}, {100, 100}, {0, 100}};
    const std::vector<Point> uvs = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    const std::vector<int> facets = {0, 1, 2, 0, 2, 3};
    const std::vector<float> cosines = {0.5F, 0.5F, 0.5F, 0.5F};

    int painted = 0;
    int continued = 0;
    const auto paint = [&](int, int, Point, float) { ++painted; };
    const auto paintPale = [&](int, int, Point) { ++continued; };
    constexpr int width = 120;
    constexpr int height = 100;

    const MeshFunction2D picture(pixels, uvs, facets, cosines);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const Point centre(x + 0.5, y + 0.5);
            Point uv;
            float cosine = 0.0F;
            if (picture.evaluate(centre, &uv, &cosine)) {
                paint(x, y, uv, cosine);
            } else if (picture.extrapolate(centre, &uv, nullptr)) {
                paintPale(x, y, uv);
            }
        }
    }

    std::size_t covered = 0;
    std::vector<Point> centres;
    std::vector<Point> answers(width);
    const auto found = std::make_unique<bool[]>(width);
    for (int y = 0; y < height; ++y) {
        centres.clear();
        for (int x = 0; x < width; ++x)
            centres.emplace_back(x + 0.5, y + 0.5);
        covered += picture.evaluate(centres.data(), width, answers.data(), nullptr, found.get());
    }

    gkFuncBinder::registerDrawPoint(&countPoint);
    gkFuncBinder::registerDrawPoints(&countPoints);
    int colour = 0;
    for (const auto& boundary : picture.boundaries) {
        gkFuncBinder::drawPoints(boundary->points, colour, 1);
        ++colour;
    }

    std::string warning;
    const auto warn = [&](const std::string& text) { warning = text; };
    const MeshFunction2D thin({{0, 0}, {1, 0}, {1, 1e-9}, {1, 1}}, uvs, {0, 1, 2, 0, 2, 3}, {});
    const MeshFunction2DCheck check = thin.check();
    if (!check) warn(check.text());  // facet 0 is too small to answer: ...
    if (warning != "facet 0 is too small to answer: its determinant is below 1e-8") return 1;

    std::vector<MeshFunction2D> frames;
    frames.push_back(std::move(*picture.clone()));
    for (Point& uv : frames.back().values)
        uv.v = 1.0 - uv.v;
    frames.back().initEvaluatorHelper();
    Point flipped;
    if (!frames[0].evaluate({50, 25}, &flipped, nullptr) || flipped.v != 0.75) return 1;

    const bool isRowRight = covered == 100 * 100 && found[99] && !found[100];
    return painted == 100 * 100 && continued == 20 * 100 && isRowRight && pointsDrawn == 5 ? 0 : 1;
}
