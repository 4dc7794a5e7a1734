/// @file
/// A soft shadow below a model.
#pragma once

#include "examples/common/Camera.h"
#include "examples/common/Image.h"
#include "examples/common/Mesh.h"

namespace demo {

/// Darkens the ground on which the mesh stands around the place where it touches it: an ellipse
/// without an edge, as under an even sky.
void drawGroundShadow(Image& image, const Camera& camera, const Mesh& mesh,
                      const geomKit::UVector3& up);

}  // namespace demo
