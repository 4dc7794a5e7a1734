#include <algorithm>

#include "tests/meshFunc2d/TestMeshes.h"

using namespace geomKit;

namespace {

TEST(MeshFunction2DBoundaries, AreTheUnmatchedHalfEdgesInChains) {
    InputSource in(8);
    std::vector<std::pair<std::string, std::vector<int>>> meshes = {
        {"one facet", {0, 1, 2}},
        {"a consistent pair", {0, 1, 2, 2, 1, 3}},
        {"the shared edge runs the same way in both", {0, 1, 2, 1, 2, 3}},
        {"three facets at an edge", {0, 1, 2, 0, 1, 3, 1, 0, 4}},
        {"bow tie", {0, 1, 2, 2, 3, 4}},
        {"two sides of one facet: closed", {0, 1, 2, 2, 1, 0}},
        {"repeated corners", {0, 0, 1, 2, 2, 2}},
        {"two components", {0, 1, 2, 3, 4, 5}},
        {"holes",
         gridMesh("", 12, 1.0, 0.0, [](int i, int j) { return i % 3 != 1 || j % 3 != 1; }).facets},
    };
    for (int round = 0; round < 300; ++round) {
        std::vector<int> random(static_cast<std::size_t>(3 * (1 + in.index(40))));
        for (int& vertex : random)
            vertex = in.index(12);
        meshes.emplace_back(testing::PrintToString(random), random);
    }
    std::vector<Point> params;
    for (int i = 0; i < 150; ++i)
        params.emplace_back(i, i * i);
    for (const auto& [name, facets] : meshes) {
        SCOPED_TRACE(name);
        const MeshFunction2D f(params, params, facets, {});
        const LiteralMesh expected(params, params, facets, {});
        ASSERT_EQ(f.boundaryFacets, expected.boundaryFacets);
        ASSERT_EQ(f.boundaries.size(), expected.boundaries.size());
        for (std::size_t k = 0; k < f.boundaries.size(); ++k)
            EXPECT_TRUE(sameBits(f.boundaries[k]->points, expected.boundaries[k]->points));
    }
}

}  // namespace
