#include "examples/common/loadMesh.h"

#include <cmath>

#include <assimp/Importer.hpp>
#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

namespace demo {
namespace {

constexpr unsigned kSteps = aiProcess_Triangulate | aiProcess_SortByPType |
                            aiProcess_PreTransformVertices | aiProcess_JoinIdenticalVertices |
                            aiProcess_ValidateDataStructure;

Vector3 toVector3(const aiVector3D& v) {
    return {static_cast<double>(v.x), static_cast<double>(v.y), static_cast<double>(v.z)};
}

bool isFinite(const Vector3& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

/// Appends one part; false when a coordinate is not finite.
bool append(const aiMesh& part, Mesh& mesh) {
    const auto first = static_cast<int>(mesh.positions.size());
    for (unsigned i = 0; i < part.mNumVertices; ++i) {
        mesh.positions.push_back(toVector3(part.mVertices[i]));
        if (!isFinite(mesh.positions.back())) return false;
        if (!part.HasTextureCoords(0)) continue;
        const Vector3 uv = toVector3(part.mTextureCoords[0][i]);
        if (!isFinite(uv)) return false;
        mesh.uvs.push_back({uv.x, uv.y});
    }
    for (unsigned i = 0; i < part.mNumFaces; ++i) {
        const aiFace& face = part.mFaces[i];
        if (face.mNumIndices != 3) continue;
        bool valid = true;
        for (unsigned k = 0; k < 3; ++k) {
            valid = valid && face.mIndices[k] < part.mNumVertices;
        }
        if (!valid) continue;
        for (unsigned k = 0; k < 3; ++k) {
            mesh.facets.push_back(first + static_cast<int>(face.mIndices[k]));
        }
    }
    return true;
}

}  // namespace

std::optional<Mesh> loadMesh(const std::string& path, std::string* error) {
    const auto fail = [&](const std::string& reason) {
        if (error != nullptr) *error = path + ": " + reason;
        return std::nullopt;
    };

    Assimp::Importer importer;
    importer.SetPropertyInteger(AI_CONFIG_PP_SBP_REMOVE,
                                aiPrimitiveType_POINT | aiPrimitiveType_LINE);
    const aiScene* scene = importer.ReadFile(path, kSteps);
    if (scene == nullptr) return fail(importer.GetErrorString());

    Mesh mesh;
    for (unsigned i = 0; i < scene->mNumMeshes; ++i) {
        if (!append(*scene->mMeshes[i], mesh)) {
            return fail("a coordinate is infinite or not a number");
        }
    }
    if (mesh.facets.empty()) return fail("the model holds no triangles");
    if (mesh.uvs.size() != mesh.positions.size()) mesh.uvs.clear();
    computeNormals(mesh);
    return mesh;
}

}  // namespace demo
