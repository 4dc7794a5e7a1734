// Mesh functions that are moved, copied, edited without `initEvaluatorHelper`, or out of memory.
#include <climits>
#include <functional>

#include "tests/failingMemory.h"
#include "tests/meshFunc2d/TestMeshes.h"

using namespace geomKit;

namespace {

/// A mesh with holes, a cell of more facets than a fine cell holds, and gaps in its grid.
TestMesh meshWithEverything() {
    TestMesh mesh =
        gridMesh("holes", 12, 11.0, 0.3, [](int i, int j) { return i % 4 != 1 || j % 3 != 1; });
    for (int i = 0; i < 40; ++i)
        mesh.addTriangle({20.0, 20.0}, {21.0, 20.0 + 0.01 * i}, {20.0, 21.0});
    return mesh;
}

/// In and around the mesh.
std::vector<Point> points() {
    std::vector<Point> points = {{kNaN, 0.0}, {0.0, kInfinity}, {1e300, -1e300}};
    for (int i = 0; i < 400; ++i)
        points.emplace_back(-3.0 + 1.3 * (i % 20), -3.0 + 1.3 * (i / 20));
    return points;
}

/// Of all queries, at all points; the array forms must agree with the others.
std::vector<Answer> answers(const MeshFunction2D& f) {
    std::vector<Answer> answers;
    const std::vector<Point> at = points();
    std::vector<Point> values(at.size());
    std::vector<float> floats(at.size());
    const auto found = std::make_unique<bool[]>(at.size());
    std::fill_n(found.get(), at.size(), true);
    const auto add = [&](const char* query, std::size_t i, const Answer& one) {
        EXPECT_EQ(one, (Answer{found[i], values[i], floats[i]})) << query << at[i];
        answers.push_back(one);
    };
    f.evaluate(at.data(), at.size(), values.data(), floats.data(), found.get());
    for (std::size_t i = 0; i < at.size(); ++i)
        add("evaluate ", i, evaluated(f, at[i]));
    values.assign(at.size(), Point());
    floats.assign(at.size(), 0.0F);
    f.extrapolate(at.data(), at.size(), values.data(), floats.data(), found.get());
    for (std::size_t i = 0; i < at.size(); ++i)
        add("extrapolate ", i, extrapolated(f, at[i]));
    for (const Point& p : at) {
        answers.push_back(answer(
            [&](Point* value, float* number) { return f.extrapolateOld(p, value, number); }));
    }
    return answers;
}

void expectNoMesh(const MeshFunction2D& f) {
    EXPECT_TRUE(f.params.empty());
    EXPECT_EQ(f.cellCounts, ktNM::vect2<int>(0, 0));
    for (const Answer& answer : answers(f))
        ASSERT_EQ(answer, Answer());
}

TEST(MeshFunction2DEdits, MovesAndClonesAnswerAsBefore) {
    const TestMesh mesh = meshWithEverything();
    const std::vector<Answer> expected = answers(mesh.function());
    std::vector<MeshFunction2D> functions;
    functions.push_back(mesh.function());
    functions.push_back(gridMesh("other", 5, 1.0, 0.0).function());
    std::swap(functions[0], functions[1]);
    EXPECT_EQ(answers(functions[1]), expected);
    const std::unique_ptr<MeshFunction2D> clone = functions[1].clone();
    const std::unique_ptr<MeshFunction2D> copy(functions[1].copy());
    functions[0] = std::move(functions[1]);
    expectNoMesh(functions[1]);
    MeshFunction2D& same = functions[0];
    functions[0] = std::move(same);
    EXPECT_EQ(answers(functions[0]), expected) << "also onto itself";
    functions.clear();
    EXPECT_EQ(answers(*clone), expected);
    EXPECT_EQ(answers(*copy), expected);

    MeshFunction2D again(std::move(*clone));
    expectNoMesh(*clone);
    clone->params = mesh.params;
    clone->values = mesh.values;
    clone->facets = mesh.facets;
    clone->normaldots = mesh.normaldots;
    clone->initEvaluatorHelper();
    EXPECT_EQ(answers(*clone), expected) << "used again";
    EXPECT_EQ(answers(again), expected);
    static_assert(std::is_nothrow_move_constructible_v<MeshFunction2D> &&
                  !std::is_copy_constructible_v<MeshFunction2D>);
}

// Under the address sanitizer this tells whether anything outside is read.
TEST(MeshFunction2DEdits, QueriesAfterAnEditReadNothingOutside) {
    using Counts = ktNM::vect2<int>;
    using Numbers = std::vector<int>;
    const auto half = [](auto& sequence) {
        sequence.resize(sequence.size() / 2);
        sequence.shrink_to_fit();
    };
    const struct {
        const char* what;
        std::function<void(MeshFunction2D&)> edit;
        bool stillEvaluates;
    } edits[] = {
        {"nothing", [](auto&) {}, true},
        {"no data", [](auto& f) { f.params = f.values = {}; }, false},
        {"half the params", [&](auto& f) { half(f.params); }, false},
        {"half the values", [&](auto& f) { half(f.values); }, false},
        {"half the floats", [&](auto& f) { half(f.normaldots); }, true},
        {"half the facets", [&](auto& f) { half(f.facets); }, true},
        {"no facets", [](auto& f) { f.facets = {}; }, true},
        {"wild facets", [](auto& f) { f.facets.assign(f.facets.size(), INT_MAX); }, true},
        {"no cells", [](auto& f) { f.cells = {}; }, true},
        {"wild cells",
         [](auto& f) {
             f.cells.assign(400, Numbers({INT_MAX, -1, INT_MIN}));
         },
         true},
        {"cells without end", [](auto& f) { f.cellCounts = Counts(INT_MAX, INT_MAX); }, true},
        {"negative cells", [](auto& f) { f.cellCounts = Counts(-20, -20); }, true},
        {"another scale", [](auto& f) { f.cellScale = Point(1e9, kNaN); }, true},
        {"another box", [](auto& f) { f.boxMin = f.boxMax = Point(-kInfinity, 1e300); }, true},
        {"no boundaries", [](auto& f) { f.boundaries.clear(); }, true},
        {"null boundaries", [](auto& f) { f.boundaries[0].reset(); }, true},
        {"emptied boundaries", [](auto& f) { f.boundaries[0]->points = {}; }, true},
        {"cut boundaries", [&](auto& f) { half(f.boundaries[0]->points); }, true},
        {"no owners", [](auto& f) { f.boundaryFacets.clear(); }, true},
        {"cut owners", [&](auto& f) { half(f.boundaryFacets[0]); }, true},
        {"wild owners", [](auto& f) { f.boundaryFacets[0].assign(99, INT_MIN); }, true},
        {"the flag off", [](auto& f) { f.extrapolateFlag = false; }, true},
    };
    const TestMesh mesh = meshWithEverything();
    for (const auto& edit : edits) {
        SCOPED_TRACE(edit.what);
        MeshFunction2D f = mesh.function();
        edit.edit(f);
        answers(f);
        EXPECT_EQ(f.evaluate({3.1, 3.2}, nullptr, nullptr), edit.stillEvaluates);
        answers(*f.clone());
        f.initBoundaries();
        answers(f);
    }
    MeshFunction2D none(true);
    none.cellCounts = {20, 20};
    answers(none);
    none.cells.assign(400, {0});
    answers(none);
}

TEST(MeshFunction2DEdits, WithoutMemoryTheOldGridStays) {
    MeshFunction2D f = meshWithEverything().function();
    for (Point& p : f.params)
        p += Point(5.0, 0.0);
    const std::vector<Answer> before = answers(f);
    long n = 0;
    for (; !failing::isDoneWithout(n, false, [&] { f.initEvaluatorHelper(); }); ++n)
        ASSERT_EQ(answers(f), before) << "allocation " << n;
    EXPECT_GT(n, 400) << "a list for each cell, among others";
    EXPECT_NE(answers(f), before);
}

}  // namespace
