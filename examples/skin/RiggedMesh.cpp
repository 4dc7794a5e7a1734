#include "examples/skin/RiggedMesh.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <fstream>
#include <limits>
#include <locale>

using namespace geomKit;

namespace demo {

int RiggedMesh::influenceCount() const {
    std::size_t count = 0;
    for (const auto& ofVertex : data.influences)
        count += ofVertex.size();
    return static_cast<int>(count);
}

SkinnedMesh skin(const RiggedMesh& mesh, const BoneTransformVector& pose) {
    SkinnedMesh shape{mesh.data.positions, mesh.normals};
    pose.transformVertices(&mesh.data, mesh.normals.data(), 0, mesh.normals.size(),
                           shape.positions.data(), shape.normals.data());
    return shape;
}

bool isFinite(const SkinnedMesh& shape) {
    const auto finite = [](const Vector3& v) {
        return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
    };
    return std::all_of(shape.positions.begin(), shape.positions.end(), finite) &&
           std::all_of(shape.normals.begin(), shape.normals.end(), finite);
}

double nanosecondsPerVertex(const RiggedMesh& mesh, const BoneTransformVector& pose) {
    using Clock = std::chrono::steady_clock;
    constexpr auto kTimeLimit = std::chrono::milliseconds(50);

    SkinnedMesh shape{mesh.data.positions, mesh.normals};
    double best = std::numeric_limits<double>::infinity();
    const Clock::time_point start = Clock::now();
    Clock::time_point from = start;
    while (from - start < kTimeLimit) {
        pose.transformVertices(&mesh.data, mesh.normals.data(), 0, mesh.normals.size(),
                               shape.positions.data(), shape.normals.data());
        const Clock::time_point to = Clock::now();
        best = std::min(best, std::chrono::duration<double, std::nano>(to - from).count());
        from = to;
    }
    return best / mesh.vertexCount();
}

bool writeObj(const RiggedMesh& mesh, const SkinnedMesh& shape, const std::string& path) {
    std::ofstream file(path);
    file.imbue(std::locale::classic());
    file.precision(9);
    for (const Vector3& p : shape.positions)
        file << "v " << p.x << ' ' << p.y << ' ' << p.z << '\n';
    for (const UVector3& n : shape.normals)
        file << "vn " << n.x << ' ' << n.y << ' ' << n.z << '\n';
    for (const auto& triangle : mesh.triangles) {
        file << 'f';
        for (const int v : triangle)
            file << ' ' << v + 1 << "//" << v + 1;
        file << '\n';
    }
    file.close();
    return file.good();
}

}  // namespace demo
