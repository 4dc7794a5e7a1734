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
        const int entries = 3 * (1 + in.index(40));
        std::vector<int> random;
        for (int i = 0; i < entries; ++i)
            random.push_back(in.index(12));
        meshes.emplace_back(testing::PrintToString(random), random);
    }
    for (const auto& [name, facets] : meshes) {
        SCOPED_TRACE(name);
        std::vector<Point> params;
        for (int i = 0; i < 150; ++i)
            params.emplace_back(i, i * i);
        const MeshFunction2D f(params, params, facets, {});
        const LiteralMesh expected(params, params, facets, {});
        ASSERT_EQ(f.boundaryFacets, expected.boundaryFacets);
        ASSERT_EQ(f.boundaries.size(), expected.boundaries.size());
        for (std::size_t k = 0; k < f.boundaries.size(); ++k) {
            const std::vector<Vector3>& points = f.boundaries[k]->points;
            const std::vector<Vector3>& plain = expected.boundaries[k]->points;
            EXPECT_TRUE(std::equal(points.begin(), points.end(), plain.begin(), plain.end()));
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
