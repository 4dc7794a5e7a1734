/// @file
/// `BaseDisplayData`, the mesh that a host hands over to be skinned.
#pragma once

#include <cstdint>
#include <vector>

#include "geomKit/vAlgebra/Vector3.h"

namespace geomKit {

/// A host's mesh, as far as skinning reads it. The library never changes one.
class BaseDisplayData {
public:
    /// One bone that moves a vertex.
    struct Influence {
        /// Index of the bone; a negative one stands for no bone.
        std::int32_t bone;
        /// Used as given: the weights of a vertex are neither normalised nor checked.
        double weight;
    };

    /// Rest positions, by vertex number.
    std::vector<Vector3> positions;
    /// The influences of each vertex, by vertex number; entirely empty when the mesh is not
    /// skinned.
    std::vector<std::vector<Influence>> influences;
};

}  // namespace geomKit
