#include "geomKit/transforms/FlatInfluences.h"

#include <algorithm>

namespace geomKit {

FlatInfluences::FlatInfluences(const BaseDisplayData& data) {
    std::size_t entries = 0;
    for (const auto& list : data.influences)
        entries += list.size();
    iStart(data.influences.size(), entries);
    for (const auto& list : data.influences) {
        entries_.insert(entries_.end(), list.begin(), list.end());
        offsets_.push_back(entries_.size());
    }
}

FlatInfluences::FlatInfluences(const std::int32_t* bones, const double* weights,
                               std::size_t entryCount, const std::size_t* offsets,
                               std::size_t vertexCount) {
    iStart(vertexCount, entryCount);
    std::size_t last = vertexCount == 0 ? 0 : (std::min)(offsets[0], entryCount);
    for (std::size_t v = 0; v < vertexCount; ++v) {
        const std::size_t first = last;
        last = (std::max)(first, (std::min)(offsets[v + 1], entryCount));
        for (std::size_t i = first; i < last; ++i)
            entries_.push_back({bones[i], weights[i]});
        offsets_.push_back(entries_.size());
    }
}

FlatInfluences FlatInfluences::fromTable(const std::int32_t* bones, const double* weights,
                                         std::size_t perVertex, std::size_t vertexCount) {
    FlatInfluences result;
    result.iStart(vertexCount, vertexCount * perVertex);
    for (std::size_t v = 0; v < vertexCount; ++v) {
        for (std::size_t i = v * perVertex; i < (v + 1) * perVertex; ++i) {
            if (weights[i] != 0.0) result.entries_.push_back({bones[i], weights[i]});
        }
        result.offsets_.push_back(result.entries_.size());
    }
    return result;
}

void FlatInfluences::iStart(std::size_t vertexCount, std::size_t entryCount) {
    entries_.reserve(entryCount);
    offsets_.reserve(vertexCount + 1);
    offsets_.push_back(0);
}

}  // namespace geomKit
