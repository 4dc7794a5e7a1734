/// @file
/// Pictures of skinned meshes, their bones drawn by the library's debug hooks.
#pragma once

#include <vector>

#include "examples/common/Image.h"
#include "examples/skin/RiggedMesh.h"

namespace demo {

/// The poses side by side, `width` pixels in all, in one scale and seen from one direction, each in
/// the middle of its panel.
Image drawPoses(const RiggedMesh& mesh, const std::vector<geomKit::BoneTransformVector>& poses,
                int width);

}  // namespace demo
