#include "examples/meshFunction/frontToBack.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <queue>
#include <utility>

namespace demo {
namespace {

/// A facet and one that it hides in part.
using Pair = std::pair<int, int>;

std::size_t at(int facet) {
    return static_cast<std::size_t>(facet);
}

/// The pairs of visible facets, sorted, each once; where two facets hide each other at different
/// samples, the pair that more samples show.
std::vector<Pair> hidingPairs(const SampledScene& scene) {
    std::vector<Pair> seen;
    for (int f = 0; f < scene.facetCount(); ++f) {
        if (!scene.isVisible(f)) continue;
        scene.forEachHiddenSample(
            f, [&](std::size_t sample) { seen.emplace_back(scene.fronts()[sample].facet, f); });
    }
    std::sort(seen.begin(), seen.end());

    const auto count = [&seen](const Pair& pair) {
        const auto range = std::equal_range(seen.begin(), seen.end(), pair);
        return range.second - range.first;
    };
    std::vector<Pair> pairs;
    for (auto it = seen.begin(); it != seen.end(); it = std::upper_bound(it, seen.end(), *it)) {
        const Pair reverse(it->second, it->first);
        const auto lead = count(*it) - count(reverse);
        if (lead > 0 || (lead == 0 && *it < reverse)) pairs.push_back(*it);
    }
    return pairs;
}

/// All facets: the visible before the hidden, the near before the far.
std::vector<int> sortedByDepth(const SampledScene& scene) {
    std::vector<int> facets(at(scene.facetCount()));
    std::iota(facets.begin(), facets.end(), 0);
    std::sort(facets.begin(), facets.end(), [&scene](int a, int b) {
        if (scene.isVisible(a) != scene.isVisible(b)) return scene.isVisible(a);
        const double da = scene.meanDepth(a);
        const double db = scene.meanDepth(b);
        return da != db ? da < db : a < b;
    });
    return facets;
}

}  // namespace

std::vector<int> frontToBack(const SampledScene& scene) {
    const std::vector<Pair> pairs = hidingPairs(scene);
    const std::vector<int> byDepth = sortedByDepth(scene);
    std::vector<int> rank(byDepth.size());
    for (std::size_t i = 0; i < byDepth.size(); ++i) {
        rank[at(byDepth[i])] = static_cast<int>(i);
    }
    std::vector<int> hiders(byDepth.size(), 0);
    for (const Pair& pair : pairs) {
        ++hiders[at(pair.second)];
    }

    // A topological order; of the facets that nothing hides any more, the nearest goes next.
    std::priority_queue<int, std::vector<int>, std::greater<>> freeRanks;
    for (const int facet : byDepth) {
        if (hiders[at(facet)] == 0) freeRanks.push(rank[at(facet)]);
    }
    std::vector<int> order;
    std::vector<bool> isPlaced(byDepth.size(), false);
    const auto place = [&](int facet) {
        if (isPlaced[at(facet)]) return;
        isPlaced[at(facet)] = true;
        order.push_back(facet);
        for (auto it = std::lower_bound(pairs.begin(), pairs.end(), Pair(facet, 0));
             it != pairs.end() && it->first == facet; ++it) {
            if (--hiders[at(it->second)] == 0) freeRanks.push(rank[at(it->second)]);
        }
    };
    for (const int nearest : byDepth) {
        while (!freeRanks.empty()) {
            const int facet = byDepth[at(freeRanks.top())];
            freeRanks.pop();
            place(facet);
        }
        place(nearest);
    }
    return order;
}

}  // namespace demo
