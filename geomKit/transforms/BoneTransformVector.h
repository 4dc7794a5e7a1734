/// @file
/// `BoneTransformVector`, the posed skeleton that skins a host's mesh.
#pragma once

#include <vector>

#include "geomKit/export.h"
#include "geomKit/transforms/BoneTransform.h"
#include "geomKit/vAlgebra/UVector3.h"
#include "geomKit/vAlgebra/Vector3.h"
#include "host/BaseDisplayData.h"

/// One `BoneTransform` a bone, by bone number, and linear blend skinning by them.
///
/// A bone number outside `bones` contributes as the identity. A vertex number outside a non-empty
/// `influences`, or with an empty list there, is not skinned. A vertex number outside `positions`
/// is the caller's fault, asserted in debug builds. Weights are used as given.
///
/// The two kinds of members differ on purpose for a vertex with a single influence: the point alone
/// is multiplied by the weight, the point that comes with a normal is not, so that a lone influence
/// counts fully. Weights that sum to 1 make both the same.
///
/// Members only read: any number of threads may call them on one object and one mesh.
class BoneTransformVector {
public:
    std::vector<BoneTransform> bones;

    /// The skinned position of a vertex: the weighted sum of its bones' images of it.
    GEOMKIT_API Vector3 getTransformed(int vertex, const BaseDisplayData* data) const;

    /// The skinned position of a vertex and, in `normalOut`, its skinned unit normal: the cross
    /// product of two tangents moved by the weighted linear parts, so that it stays perpendicular
    /// to the surface under stretch. `normalOut` may be the same object as `normal`.
    ///
    /// Mirroring bones turn the normal inwards. Tangents moved onto each other leave a null normal,
    /// which is `UVector3`'s (x, y, 1). A mesh without influences returns `normal` as it is.
    GEOMKIT_API Vector3 getTransformed(int vertex, const BaseDisplayData* data,
                                       const UVector3& normal, UVector3& normalOut) const;

    /// Skins the vertices first..last-1 into `positionsOut[first..last-1]`, bit for bit as
    /// `getTransformed` does one. Arrays are indexed by vertex number, so that threads on disjoint
    /// ranges share them. Allocates nothing. The output may be the mesh's own positions.
    GEOMKIT_API void transformVertices(int first, int last, const BaseDisplayData* data,
                                       Vector3* positionsOut) const;

    /// The same with normals. `normalsOut` may be the same array as `normals`.
    GEOMKIT_API void transformVertices(int first, int last, const BaseDisplayData* data,
                                       const UVector3* normals, Vector3* positionsOut,
                                       UVector3* normalsOut) const;
};
