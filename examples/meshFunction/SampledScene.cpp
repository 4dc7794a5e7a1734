#include "examples/meshFunction/SampledScene.h"

#include <algorithm>

namespace demo {

SampledScene::SampledScene(const std::vector<ScreenPoint>& at, const std::vector<int>& facets,
                           int width, int height)
    : at_(at),
      facets_(facets),
      columns_(width * kSamples),
      rows_(height * kSamples),
      fronts_(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_)),
      visible_(facets.size() / 3, false),
      inside_(facets.size() / 3, false) {
    for (int f = 0; f < facetCount(); ++f) {
        forEachSampleOf(f, [&](std::size_t sample, double depth) {
            Front& front = fronts_[sample];
            if (front.facet < 0 || depth < front.depth) front = {depth, f};
        });
    }
    for (int y = 0; y < rows_; ++y) {
        for (int x = 0; x < columns_; ++x) {
            const int facet = front(x, y).facet;
            if (facet < 0) continue;
            visible_[static_cast<std::size_t>(facet)] = true;
            if (!isAtOutline(x, y)) inside_[static_cast<std::size_t>(facet)] = true;
        }
    }
}

bool SampledScene::isAtOutline(int x, int y) const {
    for (int j = std::max(y - kSamples, 0); j <= std::min(y + kSamples, rows_ - 1); ++j) {
        for (int i = std::max(x - kSamples, 0); i <= std::min(x + kSamples, columns_ - 1); ++i) {
            if (front(i, j).facet < 0) return true;
        }
    }
    return false;
}

double SampledScene::meanDepth(int facet) const {
    return (corner(facet, 0).depth + corner(facet, 1).depth + corner(facet, 2).depth) / 3.0;
}

}  // namespace demo
