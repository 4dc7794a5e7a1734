/// @file
/// A tube of bones, for a look at the bone maps without a file.
#pragma once

#include "examples/skin/RiggedMesh.h"

namespace demo {

/// A striped tube along y with five bones. The last joint ends the last bone and moves with it.
RiggedMesh tubeMesh();

/// The chain of bones, each swung in the plane of the picture, twisted and stretched against its
/// predecessor: angles in radians, lengths by those at rest.
geomKit::BoneTransformVector tubePose(double swing, double twist, double stretch);

}  // namespace demo
