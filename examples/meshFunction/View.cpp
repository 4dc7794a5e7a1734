#include "examples/meshFunction/View.h"

#include <algorithm>
#include <utility>

#include "examples/meshFunction/cutMesh.h"
#include "examples/meshFunction/frontToBack.h"

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

/// The part of the mesh that shows its front.
Mesh frontOf(const Mesh& mesh, const Camera& camera, double grazingCosine) {
    std::vector<double> side = cosines(mesh, camera);
    for (double& s : side) {
        s -= grazingCosine;
    }
    return cutMesh(mesh, side);
}

/// The facets that show their back and are seen in the picture of the whole mesh, turned over.
Mesh visibleBackOf(Mesh mesh, const Camera& camera, int width, int height) {
    const std::vector<ScreenPoint> at = projected(mesh, camera);
    const std::vector<double> cosine = cosines(mesh, camera);
    const SampledScene scene(at, mesh.facets, width, height);
    const std::vector<int> all = std::exchange(mesh.facets, {});
    for (int f = 0; f < static_cast<int>(all.size() / 3); ++f) {
        const int* corners = &all[3 * static_cast<std::size_t>(f)];
        const auto showsBack = [&](int v) { return cosine[static_cast<std::size_t>(v)] < 0.0; };
        if (!scene.isVisible(f) || !std::all_of(corners, corners + 3, showsBack)) continue;
        mesh.facets.insert(mesh.facets.end(), {corners[0], corners[2], corners[1]});
    }
    for (Vector3& normal : mesh.normals) {
        normal = -normal;
    }
    return mesh;
}

/// True when the corners run clockwise to the viewer, the vertical axis of pictures pointing down.
/// Next to the cut a facet may be turned away although the surface at its corners is not.
bool showsFront(const std::vector<ScreenPoint>& at, const int* corners) {
    const ScreenPoint& a = at[static_cast<std::size_t>(corners[0])];
    const ScreenPoint& b = at[static_cast<std::size_t>(corners[1])];
    const ScreenPoint& c = at[static_cast<std::size_t>(corners[2])];
    return (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y) < 0.0;
}

}  // namespace

View viewMesh(const Mesh& mesh, const Camera& camera, int width, int height, double grazingCosine) {
    View view;
    view.mesh = frontOf(mesh, camera, grazingCosine);
    append(view.mesh, frontOf(visibleBackOf(mesh, camera, width, height), camera, grazingCosine));
    view.at = projected(view.mesh, camera);
    for (const double cosine : cosines(view.mesh, camera)) {
        view.cosines.push_back(static_cast<float>(cosine));
    }

    std::vector<int> ordered;
    ordered.reserve(view.mesh.facets.size());
    for (const int facet : frontToBack({view.at, view.mesh.facets, width, height})) {
        const int* corners = &view.mesh.facets[3 * static_cast<std::size_t>(facet)];
        if (showsFront(view.at, corners)) ordered.insert(ordered.end(), corners, corners + 3);
    }
    view.mesh.facets = std::move(ordered);
    return view;
}

}  // namespace demo
