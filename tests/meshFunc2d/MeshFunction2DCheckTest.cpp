#include "tests/meshFunc2d/TestMeshes.h"

using namespace geomKit;

namespace {

TEST(MeshFunction2DCheck, NamesTheFirstFault) {
    MeshFunction2D mesh = gridMesh("pair", 2, 1.0, 0.0).function();
    const auto expect = [&mesh](const char* text) {
        EXPECT_EQ(mesh.check().text(), text);
        EXPECT_EQ(static_cast<bool>(mesh.check()), mesh.check().text() == "no fault");
    };
    mesh.normaldots.clear();
    expect("no fault");
    mesh.facets.insert(mesh.facets.end(), {0, 1, 1});
    expect("facet 2 is too small to answer: its determinant is below 1e-8");
    mesh.facets.insert(mesh.facets.end(), {0, 2, 0});
    expect("facet 2 is too small to answer: its determinant is below 1e-8, as in 1 more");
    mesh.values[1].u = HUGE_VAL;
    expect("values[1] is not finite");
    mesh.params[2].v = NAN;
    expect("params[2] is not finite");
    mesh.facets[5] = -1;
    expect("facets[5] is not the index of a vertex");
    mesh.facets[4] = 4;
    expect("facets[4] is not the index of a vertex");
    mesh.facets.push_back(0);
    expect("the triple at facets[12] is not whole");
    mesh.values.pop_back();
    expect("params and values differ in length from [3] on");
}

// Facets on both sides of the bound: those that check counts are those that never answer.
TEST(MeshFunction2DCheck, CountsTheFacetsThatNeverAnswer) {
    for (const int columns : {8192, 6104, 6103}) {
        TestMesh mesh;
        const Point du(1.0 / columns, 0.0), dv(0.0, 1.0 / 16384.0);
        for (int i = 0; i < 100; ++i) {
            const Point p(0.01 * i, 0.005 * i);
            mesh.addTriangle(p, p + du, p + dv);
        }
        const MeshFunction2D f = mesh.function();
        std::size_t silent = 0;
        for (std::size_t i = 0; i < mesh.params.size(); i += 3)
            silent += f.evaluate(mesh.params[i] + (du + dv) / 3.0, nullptr, nullptr) ? 0 : 1;
        EXPECT_EQ(f.check().count, silent) << columns;
        EXPECT_EQ(silent, columns > 6103 ? 100u : 0u) << columns;
    }
}

}  // namespace
