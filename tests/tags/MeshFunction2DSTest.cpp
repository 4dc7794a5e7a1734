#include <cmath>
#include <fstream>
#include <functional>
#include <random>
#include <thread>

#include "geomKit/meshFunc2d/MeshFunction2D.h"
#include "tests/tags/documents.h"

namespace {

using Point = MeshFunction2D::Point;

/// A grid of triangles whose vertices are moved at random.
std::unique_ptr<MeshFunction2D> makeMesh(int side, double scale, std::uint64_t seed) {
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> jitter(-0.3, 0.3);
    std::vector<Point> params;
    std::vector<Point> values;
    std::vector<float> floats;
    std::vector<int> facets;
    for (int i = 0; i < side * side; ++i) {
        const double du = jitter(random);
        const double dv = jitter(random);
        params.emplace_back(scale * (i % side + du), scale * (i / side + dv));
        values.emplace_back(dv / scale, du);
        floats.push_back(static_cast<float>(du));
    }
    for (int a = 0; a + side + 1 < side * side; ++a) {
        if (a % side == side - 1) continue;
        facets.insert(facets.end(), {a, a + 1, a + side, a + 1, a + side + 1, a + side});
    }
    return std::make_unique<MeshFunction2D>(params, values, facets, floats);
}

TEST(MeshFunction2DS, formOfTheDocument) {
    const MeshFunction2D function({{0.1, -2.5}}, {{1e-20, 1.0 / 3.0}}, {}, {0.1f});
    std::ostringstream expected;
    expected << std::ifstream(GEOMKIT_TEST_FOLDER "/onePoint.xml").rdbuf();
    EXPECT_EQ(saved(function), expected.str());
}

TEST(MeshFunction2DS, whatLoadsBackSavesAlikeAndAnswersTheSame) {
    const std::pair<int, double> cases[] = {{2, 1.0}, {30, 1e-3}, {224, 1e6}};
    for (const auto& [side, scale] : cases) {
        const auto original = makeMesh(side, scale, 4);
        const std::string text = saved(*original);
        const auto loaded = loadedAs<MeshFunction2D>(text);
        ASSERT_EQ(saved(*loaded), text);
        ASSERT_EQ(loaded->values.size(), original->values.size());
        ASSERT_TRUE(loaded->facets == original->facets);
        ASSERT_TRUE(loaded->normaldots == original->normaldots);
        EXPECT_EQ(loaded->boundaries.size(), 1u);
        EXPECT_TRUE(loaded->check().isValid());

        // The loaded data, given to the constructor, lead to the same answers.
        const MeshFunction2D built(loaded->params, loaded->values, loaded->facets,
                                   loaded->normaldots);
        std::mt19937_64 random(5);
        std::uniform_real_distribution<double> place(-1.0, side);
        for (int i = 0; i < 200; ++i) {
            const double u = place(random);
            const double v = place(random);
            const Point p(scale * u, scale * v);
            Point answer[2];
            float floats[2] = {0.0f, 0.0f};
            ASSERT_EQ(loaded->extrapolate(p, &answer[0], &floats[0]),
                      built.extrapolate(p, &answer[1], &floats[1]));
            ASSERT_TRUE(answer[0].u == answer[1].u && answer[0].v == answer[1].v &&
                        floats[0] == floats[1]);
        }
    }
}

TEST(MeshFunction2DS, emptyAndWithoutBoundaries) {
    const auto empty = loadedAs<MeshFunction2D>(saved(MeshFunction2D(true)));
    EXPECT_FALSE(empty->extrapolate({0, 0}, nullptr, nullptr));
    auto mesh = makeMesh(3, 1.0, 6);
    mesh->extrapolateFlag = false;
    const auto loaded = loadedAs<MeshFunction2D>(saved(*mesh));
    EXPECT_TRUE(loaded->boundaries.empty());
}

TEST(MeshFunction2DS, checkNamesTheFirstFault) {
    const auto mesh = makeMesh(2, 1.0, 7);
    std::string faults;
    const std::function<void()> spoil[] = {
        [&] { mesh->normaldots.clear(); }, [&] { mesh->values[1].u = HUGE_VAL; },
        [&] { mesh->params[2].v = NAN; },  [&] { mesh->facets[5] = -1; },
        [&] { mesh->facets[4] = 4; },      [&] { mesh->facets.push_back(0); },
        [&] { mesh->values.pop_back(); },
    };
    for (const auto& change : spoil) {
        change();
        faults += mesh->check().text() + (mesh->check().isValid() ? "!\n" : "\n");
    }
    EXPECT_EQ(faults,
              "no fault!\n"
              "values[1] is not finite\n"
              "params[2] is not finite\n"
              "facets[5] is not the index of a vertex\n"
              "facets[4] is not the index of a vertex\n"
              "the triple at facets[6] is not whole\n"
              "params and values differ in length from [3] on\n");
}

TEST(MeshFunction2DS, ThreadsSaveAndLoadAtOnce) {
    const auto mesh = makeMesh(10, 1.0, 8);
    const std::string text = saved(*mesh);
    std::string results[4];
    std::vector<std::thread> threads;
    for (std::string& result : results) {
        threads.emplace_back([&] { result = saved(*loadedAs<MeshFunction2D>(saved(*mesh))); });
    }
    for (std::thread& thread : threads)
        thread.join();
    for (const std::string& result : results)
        EXPECT_EQ(result, text);
}

}  // namespace
