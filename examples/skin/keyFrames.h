/// @file
/// Node transforms between the keys of an animation.
#pragma once

#include <assimp/anim.h>
#include <assimp/scene.h>

namespace demo {

/// Ticks of the animation in a second.
double ticksPerSecond(const aiAnimation& clip);

/// The transform of `node` in its parent's frame at a time in ticks. Positions and scales run
/// linearly between their keys, rotations along the shorter arc; before the first and after the
/// last key these hold. What the channel has no keys for stays as in the node.
aiMatrix4x4 frameAt(const aiNode& node, const aiNodeAnim& channel, double ticks);

}  // namespace demo
