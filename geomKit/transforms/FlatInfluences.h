/// @file
/// `FlatInfluences`, the bones that move the vertices of a mesh, in one list.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "geomKit/export.h"
#include "geomKit/transforms/BaseDisplayData.h"

namespace geomKit {

/// The influences of all vertices, one vertex after the other, prepared once for a mesh that is
/// skinned in many poses. A mesh with a list for each vertex waits for every list to arrive from
/// memory; here they follow each other.
///
/// Bone numbers and weights are used as given: `BoneTransformVector` says what they mean. Members
/// only read: any number of threads may use one object.
class FlatInfluences {
public:
    using Influence = BaseDisplayData::Influence;

    /// No vertices.
    FlatInfluences() = default;

    /// Those of a mesh.
    GEOMKIT_API explicit FlatInfluences(const BaseDisplayData& data);

    /// Those of `vertexCount` vertices: vertex v has the entries offsets[v] to offsets[v + 1] - 1
    /// of `bones` and `weights`, which hold `entryCount` entries; `offsets` holds vertexCount + 1.
    /// Offsets beyond the entries, or below the offset before, are taken for the nearest that is
    /// neither.
    GEOMKIT_API FlatInfluences(const std::int32_t* bones, const double* weights,
                               std::size_t entryCount, const std::size_t* offsets,
                               std::size_t vertexCount);

    /// Those of a table with `perVertex` entries a vertex. Entries of weight 0 fill the table up:
    /// they are left out, so that a vertex with one other entry has a single influence.
    [[nodiscard]] GEOMKIT_API static FlatInfluences fromTable(const std::int32_t* bones,
                                                              const double* weights,
                                                              std::size_t perVertex,
                                                              std::size_t vertexCount);

    [[nodiscard]] std::size_t vertexCount() const noexcept {
        return offsets_.empty() ? 0 : offsets_.size() - 1;
    }
    /// Vertex v has the entries offsets()[v] to offsets()[v + 1] - 1; no offsets for no vertices.
    [[nodiscard]] const std::vector<Influence>& entries() const noexcept { return entries_; }
    [[nodiscard]] const std::vector<std::size_t>& offsets() const noexcept { return offsets_; }

private:
    void iStart(std::size_t vertexCount, std::size_t entryCount);

    std::vector<Influence> entries_;
    std::vector<std::size_t> offsets_;
};

}  // namespace geomKit
