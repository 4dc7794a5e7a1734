/// @file
/// From an Assimp scene to the mesh that the library skins.
#pragma once

#include <vector>

#include <assimp/scene.h>
#include <geomKit/transforms/Matrix.h>

#include "examples/skin/RiggedMesh.h"

namespace demo {

/// A bone's map takes a point from rest to the bone's own frame, then to where a pose puts that
/// frame.
struct RigBone {
    const aiNode* node = nullptr;
    geomKit::Matrix fromRest;
};

/// Appends all meshes of the scene, in the space of its root, and their bones by bone number. A
/// mesh lies as the bone nearest the root places it, one without bones as its node does; the latter
/// hangs on its node as on a bone.
void readRig(const aiScene& scene, RiggedMesh* mesh, std::vector<RigBone>* bones);

}  // namespace demo
