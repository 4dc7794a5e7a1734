#include "examples/skin/readRig.h"

#include <algorithm>
#include <limits>
#include <unordered_map>

#include <geomKit/vAlgebra/vectorUtils.h>

#include "examples/common/colourMaps.h"
#include "examples/skin/nodeFrames.h"

using namespace geomKit;

namespace demo {
namespace {

/// When two meshes have maps from rest to the same node that differ by less than this, the node is
/// one bone.
constexpr double kSameBone = 1e-4;

/// How many colours of the palette tell bones apart. The first is for the skeleton.
constexpr int kBoneColours = 7;
/// The number of a bone without a node in the scene. It stays at rest.
constexpr int kNoBone = -1;

Vector3 toVector3(const aiVector3D& v) {
    return {static_cast<double>(v.x), static_cast<double>(v.y), static_cast<double>(v.z)};
}

int depth(const aiNode& node) {
    int count = 0;
    for (const aiNode* above = node.mParent; above != nullptr; above = above->mParent)
        ++count;
    return count;
}

/// A face with three corners that exist.
bool isTriangle(const aiFace& face, const aiMesh& part) {
    return face.mNumIndices == 3 &&
           std::all_of(face.mIndices, face.mIndices + 3,
                       [&](unsigned corner) { return corner < part.mNumVertices; });
}

class RigReader {
public:
    RigReader(const aiScene& scene, RiggedMesh* mesh, std::vector<RigBone>* bones)
        : scene_(scene), mesh_(*mesh), bones_(*bones) {}

    void addMeshesBelow(const aiNode& node);
    void linkJoints();
    void paint();

private:
    void addMesh(const aiMesh& part, const aiNode& node);
    Matrix placeOf(const aiMesh& part, const aiNode& node) const;
    void addInfluences(const aiMesh& part, const aiNode& node, const Matrix& place,
                       std::size_t first);
    int boneNumber(const aiNode& node, const Matrix& fromRest);

    const aiScene& scene_;
    RiggedMesh& mesh_;
    std::vector<RigBone>& bones_;
};

void RigReader::addMeshesBelow(const aiNode& node) {
    for (unsigned i = 0; i < node.mNumMeshes; ++i)
        addMesh(*scene_.mMeshes[node.mMeshes[i]], node);
    for (unsigned i = 0; i < node.mNumChildren; ++i)
        addMeshesBelow(*node.mChildren[i]);
}

void RigReader::addMesh(const aiMesh& part, const aiNode& node) {
    if (!part.HasFaces() || !part.HasNormals()) return;
    const Matrix placeMatrix = placeOf(part, node);
    const BoneTransform place = toBoneTransform(placeMatrix);
    const std::size_t first = mesh_.data.positions.size();
    for (unsigned i = 0; i < part.mNumVertices; ++i) {
        mesh_.data.positions.push_back(place.transformPoint(toVector3(part.mVertices[i])));
        // Tangents, not normals, keep their meaning under any linear map.
        Vector3 u;
        Vector3 v;
        getBasis(toVector3(part.mNormals[i]).normalize(), u, v);
        mesh_.normals.emplace_back(place.transformDirection(u) % place.transformDirection(v));
    }
    for (unsigned i = 0; i < part.mNumFaces; ++i) {
        const aiFace& face = part.mFaces[i];
        if (!isTriangle(face, part)) continue;
        const auto corner = [&](int k) { return static_cast<int>(first + face.mIndices[k]); };
        mesh_.triangles.push_back({corner(0), corner(1), corner(2)});
    }
    addInfluences(part, node, placeMatrix, first);
}

Matrix RigReader::placeOf(const aiMesh& part, const aiNode& node) const {
    Matrix place = restFrame(node);
    int fewest = std::numeric_limits<int>::max();
    for (unsigned i = 0; i < part.mNumBones; ++i) {
        const aiNode* const boneNode = scene_.mRootNode->FindNode(part.mBones[i]->mName);
        if (boneNode == nullptr || depth(*boneNode) >= fewest) continue;
        fewest = depth(*boneNode);
        place = restFrame(*boneNode) * toMatrix(part.mBones[i]->mOffsetMatrix);
    }
    return place;
}

void RigReader::addInfluences(const aiMesh& part, const aiNode& node, const Matrix& place,
                              std::size_t first) {
    auto& influences = mesh_.data.influences;
    influences.resize(mesh_.data.positions.size());
    const Matrix toMesh = place.inverse();
    if (!part.HasBones()) {
        const int bone = boneNumber(node, toMesh);
        for (std::size_t v = first; v < influences.size(); ++v)
            influences[v] = {{bone, 1.0}};
        return;
    }
    for (unsigned i = 0; i < part.mNumBones; ++i) {
        const aiBone& source = *part.mBones[i];
        const aiNode* boneNode = scene_.mRootNode->FindNode(source.mName);
        const int bone = boneNode == nullptr
                             ? kNoBone
                             : boneNumber(*boneNode, toMatrix(source.mOffsetMatrix) * toMesh);
        for (unsigned k = 0; k < source.mNumWeights; ++k) {
            const aiVertexWeight& w = source.mWeights[k];
            if (!(w.mWeight > 0.0F) || w.mVertexId >= part.mNumVertices) continue;
            influences[first + w.mVertexId].push_back({bone, static_cast<double>(w.mWeight)});
        }
    }
    // Files round their weights; the library uses them as given, so a sum of 0.98 would shrink the
    // character.
    for (std::size_t v = first; v < influences.size(); ++v) {
        double sum = 0.0;
        for (const auto& influence : influences[v])
            sum += influence.weight;
        for (auto& influence : influences[v])
            influence.weight /= sum;
    }
}

int RigReader::boneNumber(const aiNode& node, const Matrix& fromRest) {
    for (std::size_t k = 0; k < bones_.size(); ++k) {
        if (bones_[k].node == &node && bones_[k].fromRest.distTo(fromRest) <= kSameBone) {
            return static_cast<int>(k);
        }
    }
    bones_.push_back({&node, fromRest});
    const BoneTransform fromBone = toBoneTransform(fromRest.inverse());
    mesh_.joints.push_back({fromBone.translation, -1});
    return static_cast<int>(bones_.size()) - 1;
}

void RigReader::linkJoints() {
    std::unordered_map<const aiNode*, int> boneOf;
    for (std::size_t k = 0; k < bones_.size(); ++k)
        boneOf.emplace(bones_[k].node, static_cast<int>(k));
    for (std::size_t k = 0; k < bones_.size(); ++k) {
        const aiNode* above = bones_[k].node->mParent;
        while (above != nullptr && boneOf.count(above) == 0)
            above = above->mParent;
        if (above != nullptr) mesh_.joints[k].parent = boneOf.at(above);
    }
}

void RigReader::paint() {
    const Colour noBone = hexColour(0xB8B8B8);
    for (const auto& ofVertex : mesh_.data.influences) {
        Colour sum = ofVertex.empty() ? noBone : Colour();
        for (const auto& influence : ofVertex) {
            // The palette's first colour is for the bones themselves.
            const Colour ofBone =
                influence.bone < 0 ? noBone : paletteColour(1 + influence.bone % kBoneColours);
            const Colour c = scaled(ofBone, influence.weight);
            sum = {sum.r + c.r, sum.g + c.g, sum.b + c.b};
        }
        mesh_.colours.push_back(mix(sum, hexColour(0xFFFFFF), 0.3));
    }
}

}  // namespace

void readRig(const aiScene& scene, RiggedMesh* mesh, std::vector<RigBone>* bones) {
    RigReader reader(scene, mesh, bones);
    reader.addMeshesBelow(*scene.mRootNode);
    reader.linkJoints();
    reader.paint();
}

}  // namespace demo
