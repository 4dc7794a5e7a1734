#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>

#include <geomKit/vAlgebra/vectorUtils.h>

#include "examples/meshFunction/PatchModel.h"

using namespace geomKit;

namespace demo {
namespace {

/// Steps aside from a place where the derivatives vanish, as at the poles of the teapot's lid.
constexpr double kPoleStep = 1e-3;

/// Adds vertices, one for each place of a chart.
class VertexPool {
public:
    explicit VertexPool(Mesh& mesh) : mesh_(mesh) {}

    int vertexAt(const TexturedPatch& patch, double u, double v) {
        const Point2 uv{patch.uv0.x + (patch.uv1.x - patch.uv0.x) * u,
                        patch.uv0.y + (patch.uv1.y - patch.uv0.y) * v};
        const auto key =
            std::make_tuple(patch.chart, std::llround(uv.x * kGrid), std::llround(uv.y * kGrid));
        const auto [place, isNew] =
            indices_.try_emplace(key, static_cast<int>(mesh_.positions.size()));
        if (isNew) add(patch.surface, u, v, uv);
        return place->second;
    }

private:
    /// Texture coordinates closer than about 1e-6 are the same place.
    static constexpr double kGrid = 1 << 20;

    void add(const BezierPatch& surface, double u, double v, const Point2& uv) {
        const Vector3 position = surface.at(u, v).position;
        SurfacePoint frame = surface.at(u, v);
        Point2 curvature;
        if (!principalCurvatures(frame.d1.data(), frame.d2.data(), &curvature.x, &curvature.y)) {
            frame = surface.at(u + (0.5 - u) * kPoleStep, v + (0.5 - v) * kPoleStep);
            principalCurvatures(frame.d1.data(), frame.d2.data(), &curvature.x, &curvature.y);
        }
        mesh_.positions.push_back(position);
        mesh_.normals.push_back((frame.d1[0] % frame.d1[1]).normalize());
        mesh_.uvs.push_back(uv);
        mesh_.curvatures.push_back(curvature);
    }

    Mesh& mesh_;
    std::map<std::tuple<std::string, long long, long long>, int> indices_;
};

int stepCount(double length, double stepsPerUnit) {
    return std::max(2, static_cast<int>(std::lround(std::abs(length) * stepsPerUnit)));
}

}  // namespace

Mesh tessellate(const std::vector<TexturedPatch>& patches, double stepsPerUnit) {
    Mesh mesh;
    VertexPool pool(mesh);
    for (const TexturedPatch& patch : patches) {
        const int columns = stepCount(patch.uv1.x - patch.uv0.x, stepsPerUnit);
        const int rows = stepCount(patch.uv1.y - patch.uv0.y, stepsPerUnit);
        const auto corner = [&](int i, int j) {
            return pool.vertexAt(patch, static_cast<double>(i) / columns,
                                 static_cast<double>(j) / rows);
        };
        for (int j = 0; j < rows; ++j) {
            for (int i = 0; i < columns; ++i) {
                const int a = corner(i, j);
                const int b = corner(i + 1, j);
                const int c = corner(i + 1, j + 1);
                const int d = corner(i, j + 1);
                mesh.facets.insert(mesh.facets.end(), {a, b, c, a, c, d});
            }
        }
    }
    return mesh;
}

}  // namespace demo
