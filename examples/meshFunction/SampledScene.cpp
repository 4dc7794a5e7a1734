#include "examples/meshFunction/SampledScene.h"

namespace demo {

SampledScene::SampledScene(const std::vector<ScreenPoint>& at, const std::vector<int>& facets,
                           int width, int height)
    : at_(at),
      facets_(facets),
      columns_(width * kSamples),
      rows_(height * kSamples),
      fronts_(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_)),
      visible_(facets.size() / 3, false) {
    for (int f = 0; f < facetCount(); ++f) {
        forEachSampleOf(f, [&](std::size_t sample, double depth) {
            Front& front = fronts_[sample];
            if (front.facet < 0 || depth < front.depth) front = {depth, f};
        });
    }
    for (const Front& front : fronts_) {
        if (front.facet >= 0) visible_[static_cast<std::size_t>(front.facet)] = true;
    }
}

double SampledScene::meanDepth(int facet) const {
    return (corner(facet, 0).depth + corner(facet, 1).depth + corner(facet, 2).depth) / 3.0;
}

}  // namespace demo
