/// @file
/// `RiggedMesh`, what the program knows of a character, whatever it came from.
#pragma once

#include <array>
#include <string>
#include <vector>

#include <geomKit/transforms/BaseDisplayData.h>
#include <geomKit/transforms/BoneTransformVector.h>
#include <geomKit/vAlgebra/UVector3.h>
#include <geomKit/vAlgebra/Vector3.h>

#include "examples/common/Colour.h"

namespace demo {

/// A mesh and its skeleton, both at rest in one space: y up, the character looking along z.
struct RiggedMesh {
    /// Where a bone begins. In a pose it is where the bone takes `rest`.
    struct Joint {
        geomKit::Vector3 rest;
        int parent = -1;  ///< bone number of the next joint towards the root; -1 at the root
    };

    geomKit::BaseDisplayData data;           ///< rest positions, and the bones of each vertex
    std::vector<geomKit::UVector3> normals;  ///< rest normals, by vertex number
    std::vector<std::array<int, 3>> triangles;
    std::vector<Colour> colours;  ///< by vertex number
    std::vector<Joint> joints;    ///< by bone number

    int vertexCount() const { return static_cast<int>(data.positions.size()); }
    int influenceCount() const;
};

/// The mesh as a pose leaves it.
struct SkinnedMesh {
    std::vector<geomKit::Vector3> positions;
    std::vector<geomKit::UVector3> normals;
};

/// Every vertex and normal of the mesh, moved by the bones.
SkinnedMesh skin(const RiggedMesh& mesh, const geomKit::BoneTransformVector& pose);

/// True when every coordinate is a finite number.
bool isFinite(const SkinnedMesh& shape);

/// Nanoseconds that one vertex with its normal takes in `pose`: the best of several runs.
double nanosecondsPerVertex(const RiggedMesh& mesh, const geomKit::BoneTransformVector& pose);

/// Writes a Wavefront OBJ file with normals. False when it cannot be written.
bool writeObj(const RiggedMesh& mesh, const SkinnedMesh& shape, const std::string& path);

}  // namespace demo
