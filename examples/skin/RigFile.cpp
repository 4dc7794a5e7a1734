#include "examples/skin/RigFile.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

#include <assimp/Importer.hpp>
#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <geomKit/vAlgebra/vectorUtils.h>

#include "examples/common/ImportGuard.h"
#include "examples/skin/keyFrames.h"
#include "examples/skin/nodeFrames.h"

using namespace geomKit;

namespace demo {
namespace {

/// The exit status for files that cannot be read.
constexpr int kBadFile = 2;

constexpr unsigned kSteps = aiProcess_ValidateDataStructure | aiProcess_Triangulate |
                            aiProcess_SortByPType | aiProcess_GenSmoothNormals;

/// How many times of an animation are tried for the one to show.
constexpr int kTrials = 32;
/// An animation that deforms less than this shows the rest pose.
constexpr double kStill = 1e-3;

/// How far the bones are from rest: by their turn and stretch, and by the way of their joints among
/// each other in units of the skeleton's size.
double strength(const RiggedMesh& mesh, const BoneTransformVector& pose) {
    double turn = 0.0;
    double way = 0.0;
    double size = 0.0;
    for (std::size_t k = 0; k < pose.bones.size(); ++k) {
        const BoneTransform& bone = pose.bones[k];
        for (int j = 0; j < 3; ++j)
            turn += dist(bone.linear.column(j), Matrix3().column(j));
        const Vector3 rest = mesh.joints[k].rest - mesh.joints[0].rest;
        way += dist(bone.transformPoint(mesh.joints[k].rest) -
                        pose.bones[0].transformPoint(mesh.joints[0].rest),
                    rest);
        size = std::max(size, rest.length());
    }
    return size > 0.0 ? turn + way / size : turn;
}

}  // namespace

RigFile::RigFile() : importer_(std::make_unique<Assimp::Importer>()) {}
RigFile::~RigFile() = default;

bool RigFile::load(const std::string& path, std::string* error) {
    const ImportGuard guard((path + ": damaged; its importer fell over it").c_str(), kBadFile);
    importer_->SetPropertyInteger(AI_CONFIG_PP_SBP_REMOVE,
                                  aiPrimitiveType_POINT | aiPrimitiveType_LINE);
    scene_ = importer_->ReadFile(path, kSteps);
    if (scene_ == nullptr) {
        *error = path + ": " + importer_->GetErrorString();
        return false;
    }
    const auto hasBones = [](const aiMesh* part) { return part->HasBones(); };
    if (std::none_of(scene_->mMeshes, scene_->mMeshes + scene_->mNumMeshes, hasBones)) {
        *error = path + ": no mesh has bones";
        return false;
    }
    readRig(*scene_, &mesh_, &bones_);
    if (mesh_.triangles.empty() || bones_.empty()) {
        *error = path + ": no triangle has bones";
        return false;
    }
    if (!isFinite({mesh_.data.positions, mesh_.normals})) {
        *error = path + ": coordinates that are not finite numbers";
        return false;
    }
    return true;
}

const aiAnimation* RigFile::findClip(const std::string& name) const {
    for (unsigned i = 0; i < scene_->mNumAnimations; ++i) {
        const aiAnimation& clip = *scene_->mAnimations[i];
        if (name.empty() ? strength(mesh_, pose(clip, strongestTime(clip))) > kStill
                         : name == clip.mName.C_Str()) {
            return &clip;
        }
    }
    return nullptr;
}

std::string RigFile::clipNames() const {
    std::string names;
    for (unsigned i = 0; i < scene_->mNumAnimations; ++i) {
        if (i > 0) names += ", ";
        names += scene_->mAnimations[i]->mName.C_Str();
    }
    return names;
}

double RigFile::strongestTime(const aiAnimation& clip) const {
    const double length = clip.mDuration / ticksPerSecond(clip);
    double best = 0.0;
    double most = -1.0;
    for (int i = 0; i <= kTrials; ++i) {
        const double time = length * i / kTrials;
        const double now = strength(mesh_, pose(clip, time));
        if (now > most) {
            most = now;
            best = time;
        }
    }
    return best;
}

template <class LocalFrame>
BoneTransformVector RigFile::poseBy(const LocalFrame& localFrame) const {
    BoneTransformVector pose;
    for (const RigBone& bone : bones_)
        pose.bones.push_back(toBoneTransform(frameBy(localFrame, *bone.node) * bone.fromRest));
    return pose;
}

BoneTransformVector RigFile::pose(const aiAnimation& clip, double seconds) const {
    std::unordered_map<std::string, const aiNodeAnim*> channels;
    for (unsigned i = 0; i < clip.mNumChannels; ++i)
        channels.emplace(clip.mChannels[i]->mNodeName.C_Str(), clip.mChannels[i]);

    const double ticks = seconds * ticksPerSecond(clip);
    return poseBy([&](const aiNode& node) {
        const auto channel = channels.find(node.mName.C_Str());
        return toMatrix(channel == channels.end() ? node.mTransformation
                                                  : frameAt(node, *channel->second, ticks));
    });
}

BoneTransformVector RigFile::bend(double angle) const {
    std::vector<int> depths;
    for (const RiggedMesh::Joint& joint : mesh_.joints) {
        int depth = 1;
        for (int above = joint.parent; above >= 0;
             above = mesh_.joints[static_cast<std::size_t>(above)].parent) {
            ++depth;
        }
        depths.push_back(depth);
    }
    const double share = angle / *std::max_element(depths.begin(), depths.end());

    return poseBy([&](const aiNode& node) {
        const bool isBone = std::any_of(bones_.begin(), bones_.end(),
                                        [&](const RigBone& bone) { return bone.node == &node; });
        const Matrix local = toMatrix(node.mTransformation);
        if (!isBone) return local;
        const Matrix3 toNode(restFrame(node).inverse());
        return local * Matrix::rotationMatrix(toNode * Vector3(0.0, 0.0, 1.0), share);
    });
}

}  // namespace demo
