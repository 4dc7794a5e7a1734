#include <fstream>

#include "tests/meshFunc2d/TestMeshes.h"
#include "tests/tags/documents.h"

using namespace geomKit;

namespace {

TEST(MeshFunction2DS, FormOfTheDocument) {
    const MeshFunction2D function({{0.1, -2.5}}, {{1e-20, 1.0 / 3.0}}, {}, {0.1f});
    std::ostringstream expected;
    expected << std::ifstream(GEOMKIT_TEST_FOLDER "/onePoint.xml").rdbuf();
    EXPECT_EQ(saved(function), expected.str());
}

TEST(MeshFunction2DS, WhatLoadsBackSavesAlikeAndAnswers) {
    const auto empty = loadedAs<MeshFunction2D>(saved(MeshFunction2D(true)));
    EXPECT_FALSE(empty->extrapolate({0, 0}, nullptr, nullptr));
    const std::tuple<int, double, bool> cases[] = {
        {2, 1.0, true}, {3, 1.0, false}, {30, 0.03, true}, {224, 2e8, true}};
    for (const auto& [side, size, flag] : cases) {
        TestMesh mesh = gridMesh("grid", side, size, 0.3);
        for (Point& value : mesh.values)
            value = value * (1.0 / 3.0);
        MeshFunction2D original = mesh.function();
        original.extrapolateFlag = flag;
        const std::string text = saved(original);
        const auto loaded = loadedAs<MeshFunction2D>(text);
        ASSERT_EQ(saved(*loaded), text);
        ASSERT_EQ(loaded->values.size(), original.values.size());
        ASSERT_TRUE(loaded->facets == original.facets);
        ASSERT_TRUE(loaded->normaldots == original.normaldots);
        EXPECT_EQ(loaded->boundaries.size(), flag ? 1u : 0u);
        EXPECT_TRUE(loaded->check()) << loaded->check().text();
        EXPECT_TRUE(loaded->evaluate(loaded->params[0], nullptr, nullptr)) << "no index was built";
    }
}

TEST(MeshFunction2DS, ThreadsSaveAndLoadAtOnce) {
    const MeshFunction2D mesh = gridMesh("grid", 10, 1.0, 0.3).function();
    const std::string text = saved(mesh);
    std::string results[4];
    inThreads(4, [&](int i) { results[i] = saved(*loadedAs<MeshFunction2D>(saved(mesh))); });
    for (const std::string& result : results)
        EXPECT_EQ(result, text);
}

}  // namespace
