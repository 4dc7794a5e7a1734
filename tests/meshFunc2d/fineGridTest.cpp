#include "geomKit/meshFunc2d/fineGrid/FineGrid.h"
#include "tests/meshFunc2d/TestMeshes.h"

using namespace geomKit;
using detail::FineCell;

namespace {

constexpr Point kCentre(10.5, 10.5);

/// Facets one upon the other round the centre of a cell, where all of them meet.
TestMesh pile(int facets, int vertices) {
    InputSource in(4);
    TestMesh mesh;
    // The cells are those between these.
    mesh.addVertex({0.0, 0.0});
    mesh.addVertex({20.0, 20.0});
    for (int i = 0; i < vertices; ++i) {
        const double angle = 2.0 * std::acos(-1.0) * i / vertices;
        const double radius = in.uniform(0.35, 0.45);
        const int v = mesh.addVertex(kCentre + Point(std::cos(angle), std::sin(angle)) * radius);
        mesh.values[static_cast<std::size_t>(v)] = {in.uniform(-1.0, 1.0), in.uniform(-1.0, 1.0)};
    }
    for (int f = 0; f < facets; ++f) {
        const int second = f + vertices / 3;
        const int third = f + 2 * (vertices / 3) + f / vertices;
        mesh.addFacet(2 + f % vertices, 2 + second % vertices, 2 + third % vertices);
    }
    return mesh;
}

TEST(FineGrid, EveryKindOfFineCellAnswersAsThePlainListDoes) {
    const struct {
        const char* what;
        int facets;
        int vertices;
        FineCell::Kind kind;
    } cases[] = {
        {"no facet", 0, 1, FineCell::Kind::Empty},
        {"one facet", 1, 3, FineCell::Kind::Packed},
        {"as many vertices as fit", 5, 15, FineCell::Kind::Packed},
        {"as many facets and vertices as fit", 16, 15, FineCell::Kind::Packed},
        {"one facet too many", 17, 15, FineCell::Kind::Listed},
        {"one vertex too many", 16, 16, FineCell::Kind::Listed},
        {"hundreds of facets", 300, 60, FineCell::Kind::Listed},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const TestMesh mesh = pile(c.facets, c.vertices);
        const MeshFunction2D f = mesh.function();
        const detail::FineGrid grid({f.boxMin, f.cellScale, f.cellCounts}, f.cells, mesh.params,
                                    mesh.facets);
        EXPECT_EQ(grid.partAt(kCentre).fineCell->kind, c.kind);
        InputSource in(5);
        std::vector<Point> points = {kCentre};
        while (points.size() < 2000)
            points.push_back(kCentre + Point(in.uniform(-0.6, 0.6), in.uniform(-0.6, 0.6)));
        EXPECT_EQ(expectPlainAnswers(mesh, f, points) > 0, c.facets > 0);
    }
}

TEST(FineGrid, ReadsNoVertexThatIsGone) {
    TestMesh mesh = pile(17, 15);
    for (const bool listed : {true, false}) {
        if (!listed) mesh.facets.resize(3);
        MeshFunction2D f = mesh.function();
        EXPECT_TRUE(f.evaluate(kCentre, nullptr, nullptr));
        f.facets.clear();
        EXPECT_TRUE(f.evaluate(kCentre, nullptr, nullptr)) << "the vertices are there";
        f.values = std::vector<Point>(3);
        EXPECT_FALSE(f.evaluate(kCentre, nullptr, nullptr));
        f.values = mesh.values;
        f.params = std::vector<Point>(3);
        bool found = true;
        EXPECT_EQ(f.evaluate(&kCentre, 1, nullptr, nullptr, &found), 0u);
        EXPECT_FALSE(found);
    }
}

}  // namespace
