/// @file
/// Meshes from model files.
#pragma once

#include <optional>
#include <string>

#include "examples/common/Mesh.h"

namespace demo {

/// All triangles of a model in one mesh, in the coordinates of its scene, polygons cut into
/// triangles; any format that Assimp reads. Without a value and with a message for the user when
/// the file cannot be read, holds no triangle or holds coordinates that are no finite numbers.
std::optional<Mesh> loadMesh(const std::string& path, std::string* error);

}  // namespace demo
