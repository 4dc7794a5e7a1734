/// @file
/// Projected facets and the sample points of a picture that they cover.
#pragma once

#include <vector>

#include "examples/common/Camera.h"
#include "examples/common/rasterize.h"

namespace demo {

/// Facets as index triples into projected vertices; both are borrowed.
class SampledScene {
public:
    /// Samples per pixel side: those of the finished picture, so that no facet shows between them.
    static constexpr int kSamples = 3;

    /// The nearest facet at a sample; `facet` is -1 where there is none.
    struct Front {
        double depth = 0.0;
        int facet = -1;
    };

    SampledScene(const std::vector<ScreenPoint>& at, const std::vector<int>& facets, int width,
                 int height);

    int facetCount() const { return static_cast<int>(facets_.size() / 3); }
    const std::vector<Front>& fronts() const { return fronts_; }
    /// True for a facet that is in front at some sample.
    bool isVisible(int facet) const { return visible_[static_cast<std::size_t>(facet)]; }
    /// True for a sample that has background within a pixel.
    bool isAtOutline(int x, int y) const;
    /// True for a facet that is in front at some sample that is not at the outline.
    bool isVisibleInside(int facet) const { return inside_[static_cast<std::size_t>(facet)]; }
    double meanDepth(int facet) const;

    /// Calls visit(sample number) for every sample at which something is in front of the facet.
    template <typename Visit>
    void forEachHiddenSample(int facet, const Visit& visit) const;

private:
    /// Calls visit(sample number, depth) for every sample of the facet.
    template <typename Visit>
    void forEachSampleOf(int facet, const Visit& visit) const;

    const Front& front(int x, int y) const {
        return fronts_[static_cast<std::size_t>(y) * static_cast<std::size_t>(columns_) +
                       static_cast<std::size_t>(x)];
    }
    const ScreenPoint& corner(int facet, int k) const {
        const auto entry = static_cast<std::size_t>(3 * facet + k);
        return at_[static_cast<std::size_t>(facets_[entry])];
    }

    const std::vector<ScreenPoint>& at_;
    const std::vector<int>& facets_;
    int columns_;
    int rows_;
    std::vector<Front> fronts_;
    std::vector<bool> visible_;
    std::vector<bool> inside_;
};

template <typename Visit>
void SampledScene::forEachSampleOf(int facet, const Visit& visit) const {
    const ScreenPoint& a = corner(facet, 0);
    const ScreenPoint& b = corner(facet, 1);
    const ScreenPoint& c = corner(facet, 2);
    const auto sample = [](const ScreenPoint& p) { return toSamples({p.x, p.y}, kSamples); };
    forEachSample(sample(a), sample(b), sample(c), columns_, rows_,
                  [&](int x, int y, double wa, double wb, double wc) {
                      visit(static_cast<std::size_t>(y) * static_cast<std::size_t>(columns_) +
                                static_cast<std::size_t>(x),
                            1.0 / (wa / a.depth + wb / b.depth + wc / c.depth));
                  });
}

template <typename Visit>
void SampledScene::forEachHiddenSample(int facet, const Visit& visit) const {
    // Facets that meet at an edge have the same depth there, apart from rounding. Neither hides the
    // other.
    constexpr double kClearlyFarther = 1.0 + 1e-9;
    forEachSampleOf(facet, [&](std::size_t sample, double depth) {
        if (depth > fronts_[sample].depth * kClearlyFarther) visit(sample);
    });
}

}  // namespace demo
