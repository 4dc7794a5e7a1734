#include <functional>

#include "tests/meshFunc2d/TestMeshes.h"

using namespace geomKit;

namespace {

TEST(MeshFunction2DCheck, NamesTheFirstFault) {
    MeshFunction2D mesh = gridMesh("pair", 2, 1.0, 0.0).function();
    const struct {
        std::function<void()> spoil;
        const char* text;
    } faults[] = {
        {[&] { mesh.normaldots.clear(); }, "no fault"},
        {[&] {
             mesh.facets.insert(mesh.facets.end(), {0, 1, 1});
         },
         "facet 2 is too small to answer: its determinant is below 1e-8"},
        {[&] {
             mesh.facets.insert(mesh.facets.end(), {0, 2, 0});
         },
         "facet 2 is too small to answer: its determinant is below 1e-8, as in 1 more"},
        {[&] { mesh.values[1].u = HUGE_VAL; }, "values[1] is not finite"},
        {[&] { mesh.params[2].v = NAN; }, "params[2] is not finite"},
        {[&] { mesh.facets[5] = -1; }, "facets[5] is not the index of a vertex"},
        {[&] { mesh.facets[4] = 4; }, "facets[4] is not the index of a vertex"},
        {[&] { mesh.facets.push_back(0); }, "the triple at facets[12] is not whole"},
        {[&] { mesh.values.pop_back(); }, "params and values differ in length from [3] on"},
    };
    for (const auto& fault : faults) {
        fault.spoil();
        EXPECT_EQ(mesh.check().text(), fault.text);
        EXPECT_EQ(static_cast<bool>(mesh.check()), mesh.check().text() == "no fault");
    }
}

// Facets on both sides of the bound: those that check counts are those that never answer.
TEST(MeshFunction2DCheck, CountsTheFacetsThatNeverAnswer) {
    for (const int columns : {8192, 6104, 6103}) {
        SCOPED_TRACE(columns);
        TestMesh mesh;
        const double du = 1.0 / columns;
        const double dv = 1.0 / 16384.0;
        for (int i = 0; i < 100; ++i) {
            const Point p(0.01 * i, 0.005 * i);
            mesh.addTriangle(p, p + Point(du, 0.0), p + Point(0.0, dv));
        }
        const MeshFunction2D f = mesh.function();
        std::size_t silent = 0;
        for (std::size_t i = 0; i < mesh.params.size(); i += 3) {
            const Point centre = (mesh.params[i] + mesh.params[i + 1] + mesh.params[i + 2]) / 3.0;
            silent += f.evaluate(centre, nullptr, nullptr) ? 0 : 1;
        }
        EXPECT_EQ(f.check().count, silent);
        EXPECT_EQ(silent, columns > 6103 ? 100u : 0u);
    }
}

}  // namespace
