#include <map>

#include "tests/meshFunc2d/TestMeshes.h"

using namespace geomKit;

namespace {

struct Chain {
    std::vector<int> vertices;
    std::vector<int> facets;
};

/// The documented table of unmatched half-edges, by start and end: to the facet of each.
std::vector<Chain> documentedChains(const std::vector<int>& facets) {
    std::map<std::pair<int, int>, int> table;
    for (std::size_t i = 0; i < facets.size(); ++i) {
        const int a = facets[i];
        const int b = i % 3 == 2 ? facets[i - 2] : facets[i + 1];
        if (table.erase({b, a}) == 0) table[{a, b}] = static_cast<int>(i / 3);
    }
    std::vector<Chain> chains;
    while (!table.empty()) {
        int cur = table.begin()->first.first;
        Chain chain{{cur}, {}};
        for (auto edge = table.begin(); edge != table.end() && edge->first.first == cur;
             edge = table.lower_bound({cur, -1})) {
            cur = edge->first.second;
            chain.vertices.push_back(cur);
            chain.facets.push_back(edge->second);
            table.erase(edge);
        }
        chains.push_back(chain);
    }
    return chains;
}

TEST(MeshFunction2DBoundaries, AreTheUnmatchedHalfEdgesInChains) {
    InputSource in(8);
    std::vector<std::vector<int>> meshes = {
        {0, 1, 2},                    // one facet
        {0, 1, 2, 2, 1, 3},           // a consistent pair
        {0, 1, 2, 1, 2, 3},           // the shared edge runs the same way in both
        {0, 1, 2, 0, 1, 3, 1, 0, 4},  // three facets at an edge
        {0, 1, 2, 2, 3, 4},           // bow tie
        {0, 1, 2, 2, 1, 0},           // two sides of one facet: closed
        {0, 0, 1, 2, 2, 2},           // repeated corners
        {0, 1, 2, 3, 4, 5},           // two components
        gridMesh("holes", 12, 1.0, 0.0, [](int i, int j) { return i % 3 != 1 || j % 3 != 1; })
            .facets,
    };
    for (int round = 0; round < 300; ++round) {
        const int entries = 3 * (1 + in.index(40));
        std::vector<int> random;
        for (int i = 0; i < entries; ++i)
            random.push_back(in.index(12));
        meshes.push_back(random);
    }
    for (const std::vector<int>& facets : meshes) {
        std::vector<Point> params;
        for (int i = 0; i < 150; ++i)
            params.emplace_back(i, i * i);
        const MeshFunction2D f(params, params, facets, {});
        const std::vector<Chain> expected = documentedChains(facets);
        ASSERT_EQ(f.boundaries.size(), expected.size()) << testing::PrintToString(facets);
        for (std::size_t k = 0; k < expected.size(); ++k) {
            ASSERT_EQ(f.boundaryFacets[k], expected[k].facets);
            std::vector<int> vertices;
            for (const Vector3& p : f.boundaries[k]->points) {
                vertices.push_back(static_cast<int>(p.x));
            }
            ASSERT_EQ(vertices, expected[k].vertices);
        }
    }
}

TEST(MeshFunction2DBoundaries, FollowTheFlagAndTheFacets) {
    MeshFunction2D f = gridMesh("grid", 3, 1.0, 0.0).function();
    f.boundaries.clear();
    f.extrapolateFlag = false;
    f.initEvaluatorHelper();
    EXPECT_TRUE(f.boundaries.empty());
    EXPECT_TRUE(f.evaluate({0.3, 0.4}, nullptr, nullptr));
    f.extrapolateFlag = true;
    f.initEvaluatorHelper();
    ASSERT_EQ(f.boundaries.size(), 1u);
    EXPECT_EQ(f.boundaries[0]->points.size(), 9u) << "the loop repeats its first point";
    f.params.clear();
    f.initEvaluatorHelper();
    EXPECT_EQ(f.boundaries.size(), 1u) << "left as they were";
    EXPECT_FALSE(f.extrapolate({2.0, 2.0}, nullptr, nullptr));
}

}  // namespace
