/// @file
/// `RigFile`, a rigged character and its animations, read by Assimp.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "examples/skin/RiggedMesh.h"
#include "examples/skin/readRig.h"

namespace Assimp {
class Importer;
}

namespace demo {

class RigFile {
public:
    RigFile();
    ~RigFile();

    /// False, with a message for the user, when the file cannot be read, has no bones or holds
    /// coordinates that are not finite numbers.
    bool load(const std::string& path, std::string* error);

    const RiggedMesh& mesh() const { return mesh_; }

    /// The first animation of that name, or without a name the first that moves the bones among
    /// each other; null if there is none.
    const aiAnimation* findClip(const std::string& name) const;
    /// The names of all animations, for the user to choose from.
    std::string clipNames() const;
    /// The time, in seconds, at which the bones are farthest from rest.
    double strongestTime(const aiAnimation& clip) const;

    /// The pose at a time in seconds; before the first and after the last key these hold.
    geomKit::BoneTransformVector pose(const aiAnimation& clip, double seconds) const;
    /// Every joint turned in the plane of the picture, the longest chain by `angle` radians in all.
    geomKit::BoneTransformVector bend(double angle) const;

private:
    template <class LocalFrame>
    geomKit::BoneTransformVector poseBy(const LocalFrame& localFrame) const;

    std::unique_ptr<Assimp::Importer> importer_;
    const aiScene* scene_ = nullptr;  // the importer's
    std::vector<RigBone> bones_;
    RiggedMesh mesh_;
};

}  // namespace demo
