#include "examples/meshFunction/View.h"

#include <algorithm>
#include <utility>

#include "examples/meshFunction/cutMesh.h"
#include "examples/meshFunction/frontToBack.h"

using namespace geomKit;

namespace demo {
namespace {

std::vector<ScreenPoint> projected(const Mesh& mesh, const Camera& camera) {
    std::vector<ScreenPoint> at;
    at.reserve(mesh.positions.size());
    for (const Vector3& position : mesh.positions) {
        at.push_back(camera.project(position));
    }
    return at;
}

std::vector<double> cosines(const Mesh& mesh, const Camera& camera) {
    std::vector<double> result(mesh.positions.size());
    for (std::size_t i = 0; i < result.size(); ++i) {
        result[i] = mesh.normals[i].normalize() * (camera.eye() - mesh.positions[i]).normalize();
    }
    return result;
}

/// True when the corners run clockwise to the viewer, the vertical axis of pictures pointing down,
/// and for a facet without area: it never answers, but at a pole it joins its neighbours.
bool showsFront(const std::vector<ScreenPoint>& at, const int* corners) {
    constexpr double kNoArea = 1e-8;
    const ScreenPoint& a = at[static_cast<std::size_t>(corners[0])];
    const ScreenPoint& b = at[static_cast<std::size_t>(corners[1])];
    const ScreenPoint& c = at[static_cast<std::size_t>(corners[2])];
    return (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y) < kNoArea;
}

Mesh turnedOver(Mesh mesh) {
    for (std::size_t i = 0; i + 2 < mesh.facets.size(); i += 3) {
        std::swap(mesh.facets[i + 1], mesh.facets[i + 2]);
    }
    for (Vector3& normal : mesh.normals) {
        normal = -normal;
    }
    return mesh;
}

/// The facets of `mesh` that show their front, all or the visible ones, cut where they graze the
/// outline. `scene` holds the same facets, perhaps turned over.
Mesh frontOf(Mesh mesh, const Camera& camera, const SampledScene& scene, bool visibleOnly,
             double grazingCosine) {
    const std::vector<ScreenPoint> at = projected(mesh, camera);
    std::vector<double> side = cosines(mesh, camera);
    for (double& s : side) {
        s -= grazingCosine;
    }
    const std::vector<int> all = std::exchange(mesh.facets, {});
    for (int f = 0; f < scene.facetCount(); ++f) {
        const int* corners = &all[3 * static_cast<std::size_t>(f)];
        if (!showsFront(at, corners) || (visibleOnly && !scene.isVisible(f))) continue;
        mesh.facets.insert(mesh.facets.end(), corners, corners + 3);
        if (!scene.isVisibleInside(f)) continue;
        for (int k = 0; k < 3; ++k) {
            double& s = side[static_cast<std::size_t>(corners[k])];
            s = std::max(grazingCosine, s);
        }
    }
    return cutMesh(mesh, side);
}

}  // namespace

View viewMesh(const Mesh& mesh, const Camera& camera, int width, int height, double grazingCosine) {
    const std::vector<ScreenPoint> at = projected(mesh, camera);
    const SampledScene scene(at, mesh.facets, width, height);
    View view;
    view.mesh = frontOf(mesh, camera, scene, false, grazingCosine);
    append(view.mesh, frontOf(turnedOver(mesh), camera, scene, true, grazingCosine));
    view.at = projected(view.mesh, camera);
    for (const double cosine : cosines(view.mesh, camera)) {
        view.cosines.push_back(static_cast<float>(cosine));
    }

    std::vector<int> ordered;
    ordered.reserve(view.mesh.facets.size());
    for (const int facet : frontToBack({view.at, view.mesh.facets, width, height})) {
        const int* corners = &view.mesh.facets[3 * static_cast<std::size_t>(facet)];
        ordered.insert(ordered.end(), corners, corners + 3);
    }
    view.mesh.facets = std::move(ordered);
    return view;
}

}  // namespace demo
