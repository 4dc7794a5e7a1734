/// @file
/// The Utah teapot as triangles.
#pragma once

#include <optional>
#include <string>

#include "examples/common/Mesh.h"

namespace demo {

/// The patches of a file cut into about `stepsPerUnit` steps for each unit of texture coordinates.
/// The handle and the spout reach into the body: what lies inside is cut away. Without a value and
/// with a message for the user when the file cannot be read.
std::optional<Mesh> loadTeapot(const std::string& path, double stepsPerUnit, std::string* error);

}  // namespace demo
