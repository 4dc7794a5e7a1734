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
    using Kind = FineCell::Kind;
    const auto expect = [](const char* name, int facets, int vertices, Kind kind) {
        SCOPED_TRACE(name);
        const TestMesh mesh = pile(facets, vertices);
        const MeshFunction2D f = mesh.function();
        const detail::FineGrid grid({f.boxMin, f.cellScale, f.cellCounts}, f.cells, mesh.params,
                                    mesh.facets);
        EXPECT_EQ(grid.partAt(kCentre).fineCell->kind, kind);
        InputSource in(5);
        std::vector<Point> points = {kCentre};
        while (points.size() < 2000)
            points.push_back(kCentre + Point(in.uniform(-0.6, 0.6), in.uniform(-0.6, 0.6)));
        EXPECT_EQ(expectPlainAnswers(mesh, f, points) > 0, facets > 0);
    };
    expect("no facet", 0, 1, Kind::Empty);
    expect("one facet", 1, 3, Kind::Packed);
    expect("as many vertices as fit", 5, 15, Kind::Packed);
    expect("as many facets and vertices as fit", 16, 15, Kind::Packed);
    expect("one facet too many", 17, 15, Kind::Listed);
    expect("one vertex too many", 16, 16, Kind::Listed);
    expect("hundreds of facets", 300, 60, Kind::Listed);
}

}  // namespace
