/// @file
/// A model of bicubic patches: reading it from its file and cutting it into triangles.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "examples/common/Mesh.h"
#include "examples/meshFunction/BezierPatch.h"

namespace demo {

/// A patch with its place in the texture.
struct TexturedPatch {
    BezierPatch surface;
    /// Patches of one chart are joined where their texture coordinates agree.
    std::string chart;
    /// Texture coordinates at (u, v) = (0, 0) and (1, 1).
    Point2 uv0;
    Point2 uv1;
};

/// The file format is told in the head of examples/data/teapot.txt. Without a value and with a
/// message for the user when the file cannot be read or a line is wrong.
std::optional<std::vector<TexturedPatch>> loadPatches(const std::string& path, std::string* error);

/// Cuts every patch into a grid of about `stepsPerUnit` steps for each unit of texture
/// coordinates, two triangles a cell. Normals and curvatures come from the patches' derivatives.
Mesh tessellate(const std::vector<TexturedPatch>& patches, double stepsPerUnit);

}  // namespace demo
