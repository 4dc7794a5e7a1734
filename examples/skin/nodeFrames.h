/// @file
/// The frames of Assimp's nodes as the library's matrices and bone maps.
#pragma once

#include <assimp/scene.h>
#include <geomKit/transforms/BoneTransform.h>
#include <geomKit/transforms/Matrix.h>

namespace demo {

geomKit::Matrix toMatrix(const aiMatrix4x4& m);
/// The affine part.
geomKit::BoneTransform toBoneTransform(const geomKit::Matrix& m);

/// From a node's frame to the root's, `localFrame(node)` leading from a node's to its parent's.
/// Goes by the parents: some files list the children of a bone elsewhere.
template <class LocalFrame>
geomKit::Matrix frameBy(const LocalFrame& localFrame, const aiNode& node) {
    geomKit::Matrix frame = localFrame(node);
    for (const aiNode* above = node.mParent; above != nullptr; above = above->mParent)
        frame = localFrame(*above) * frame;
    return frame;
}

/// The frame of a node at rest.
geomKit::Matrix restFrame(const aiNode& node);

}  // namespace demo
