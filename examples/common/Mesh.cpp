#include "examples/common/Mesh.h"

namespace demo {

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

}  // namespace demo
