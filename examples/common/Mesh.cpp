#include "examples/common/Mesh.h"

using namespace geomKit;

namespace demo {
namespace {

Vector3 between(const Vector3& a, const Vector3& b, double t) {
    return a + (b - a) * t;
}

Point2 between(const Point2& a, const Point2& b, double t) {
    return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t};
}

}  // namespace

void computeNormals(Mesh& mesh) {
    mesh.normals.assign(mesh.positions.size(), Vector3());
    for (std::size_t i = 0; i + 2 < mesh.facets.size(); i += 3) {
        const auto a = static_cast<std::size_t>(mesh.facets[i]);
        const auto b = static_cast<std::size_t>(mesh.facets[i + 1]);
        const auto c = static_cast<std::size_t>(mesh.facets[i + 2]);
        const Vector3 normal =
            (mesh.positions[b] - mesh.positions[a]) % (mesh.positions[c] - mesh.positions[a]);
        for (const std::size_t v : {a, b, c}) {
            mesh.normals[v] += normal;
        }
    }
    for (Vector3& normal : mesh.normals) {
        normal = normal.normalize();
    }
}

void append(Mesh& mesh, const Mesh& more) {
    const auto first = static_cast<int>(mesh.positions.size());
    const auto add = [](auto& to, const auto& from) {
        to.insert(to.end(), from.begin(), from.end());
    };
    add(mesh.positions, more.positions);
    add(mesh.normals, more.normals);
    add(mesh.uvs, more.uvs);
    add(mesh.curvatures, more.curvatures);
    for (const int vertex : more.facets) {
        mesh.facets.push_back(vertex + first);
    }
}

int appendBetween(Mesh& mesh, const Mesh& from, int a, int b, double t) {
    const auto blend = [a, b, t](auto& to, const auto& data) {
        if (data.empty()) return;
        to.push_back(
            between(data[static_cast<std::size_t>(a)], data[static_cast<std::size_t>(b)], t));
    };
    blend(mesh.positions, from.positions);
    blend(mesh.normals, from.normals);
    blend(mesh.uvs, from.uvs);
    blend(mesh.curvatures, from.curvatures);
    return static_cast<int>(mesh.positions.size()) - 1;
}

}  // namespace demo
