#include "examples/common/loadMesh.h"

#include <cmath>
#include <new>

#include <assimp/Importer.hpp>
#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include "examples/common/ImportGuard.h"

using namespace geomKit;

namespace demo {
namespace {

/// What the model says of normals, colours and bones is dropped: it would split vertices that
/// belong together. Edges sharper than the crease angle stay sharp.
constexpr unsigned kSteps = aiProcess_ValidateDataStructure | aiProcess_RemoveComponent |
                            aiProcess_Triangulate | aiProcess_SortByPType |
                            aiProcess_PreTransformVertices | aiProcess_GenSmoothNormals |
                            aiProcess_JoinIdenticalVertices;
constexpr int kDropped = aiComponent_NORMALS | aiComponent_TANGENTS_AND_BITANGENTS |
                         aiComponent_COLORS | aiComponent_BONEWEIGHTS | aiComponent_ANIMATIONS;
/// Exit status of the program when the importer takes it down.
constexpr int kBadFile = 2;
constexpr float kCreaseDegrees = 50.0F;

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
        mesh.normals.push_back(part.HasNormals() ? toVector3(part.mNormals[i]) : Vector3());
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
    importer.SetPropertyInteger(AI_CONFIG_PP_RVC_FLAGS, kDropped);
    importer.SetPropertyFloat(AI_CONFIG_PP_GSN_MAX_SMOOTHING_ANGLE, kCreaseDegrees);
    const aiScene* scene = nullptr;
    try {
        const ImportGuard guard((path + ": damaged; its importer got lost in it").c_str(),
                                kBadFile);
        scene = importer.ReadFile(path, kSteps);
    } catch (const std::bad_alloc&) {
        return fail("the model needs too much memory");
    }
    if (scene == nullptr) return fail(importer.GetErrorString());

    Mesh mesh;
    for (unsigned i = 0; i < scene->mNumMeshes; ++i) {
        if (!append(*scene->mMeshes[i], mesh)) {
            return fail("a coordinate is infinite or not a number");
        }
    }
    if (mesh.facets.empty()) return fail("the model holds no triangles");
    if (mesh.uvs.size() != mesh.positions.size()) mesh.uvs.clear();
    return mesh;
}

}  // namespace demo
