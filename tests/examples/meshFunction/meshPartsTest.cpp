#include <cmath>
#include <random>

#include <gtest/gtest.h>

#include "examples/meshFunction/cutMesh.h"
#include "examples/meshFunction/frontToBack.h"

using namespace demo;

namespace {

/// A flat grid of n x n cells over the unit square.
Mesh grid(int n) {
    Mesh mesh;
    for (int j = 0; j <= n; ++j) {
        for (int i = 0; i <= n; ++i) {
            const double x = static_cast<double>(i) / n;
            const double y = static_cast<double>(j) / n;
            mesh.positions.emplace_back(x, y, 0.0);
            mesh.normals.emplace_back(0.0, 0.0, 1.0);
            mesh.uvs.push_back({2.0 * x + y, y - 3.0 * x});
        }
    }
    for (int j = 0; j < n; ++j) {
        for (int i = 0; i < n; ++i) {
            const int a = j * (n + 1) + i;
            const int d = a + n + 1;
            mesh.facets.insert(mesh.facets.end(), {a, a + 1, d + 1, a, d + 1, d});
        }
    }
    return mesh;
}

Vector3 corner(const Mesh& mesh, std::size_t entry) {
    return mesh.positions[static_cast<std::size_t>(mesh.facets[entry])];
}

double area(const Mesh& mesh) {
    double sum = 0.0;
    for (std::size_t i = 0; i + 2 < mesh.facets.size(); i += 3) {
        const Vector3 a = corner(mesh, i);
        sum += 0.5 * ((corner(mesh, i + 1) - a) % (corner(mesh, i + 2) - a)).z;
    }
    return sum;
}

/// Length of the edges that no facet runs through the other way.
double boundaryLength(const Mesh& mesh) {
    double sum = 0.0;
    for (std::size_t i = 0; i < mesh.facets.size(); ++i) {
        const int a = mesh.facets[i];
        const int b = mesh.facets[i % 3 == 2 ? i - 2 : i + 1];
        bool isInner = false;
        for (std::size_t j = 0; j < mesh.facets.size() && !isInner; ++j) {
            isInner = mesh.facets[j] == b && mesh.facets[j % 3 == 2 ? j - 2 : j + 1] == a;
        }
        if (isInner) continue;
        sum += (mesh.positions[static_cast<std::size_t>(a)] -
                mesh.positions[static_cast<std::size_t>(b)])
                   .length();
    }
    return sum;
}

}  // namespace

TEST(CutMesh, bothPartsMakeUpTheWholeAndStayJoined) {
    const Mesh mesh = grid(9);
    std::vector<double> side;
    std::vector<double> other;
    for (const Vector3& p : mesh.positions) {
        side.push_back(0.3 * p.x + p.y - 0.57);
        other.push_back(-side.back());
    }
    const Mesh above = cutMesh(mesh, side);
    const Mesh below = cutMesh(mesh, other);
    // The line from (0, 0.57) to (1, 0.27): 0.42 of the square lies below.
    EXPECT_NEAR(area(below), 0.42, 1e-12);
    EXPECT_NEAR(area(above), 0.58, 1e-12);
    const double cut = std::sqrt(1.0 + 0.3 * 0.3);
    EXPECT_NEAR(boundaryLength(above) + boundaryLength(below), 4.0 + 2.0 * cut, 1e-9);
    for (std::size_t i = 0; i < above.positions.size(); ++i) {
        const Vector3& p = above.positions[i];
        EXPECT_NEAR(above.uvs[i].x, 2.0 * p.x + p.y, 1e-12);
        EXPECT_NEAR(above.uvs[i].y, p.y - 3.0 * p.x, 1e-12);
    }
}

TEST(FrontToBack, theFirstFacetOverAnyPointIsTheNearest) {
    constexpr int kSize = 48;
    constexpr int kFacets = 120;
    std::mt19937_64 random(11);
    std::uniform_real_distribution<double> position(-8.0, kSize + 8.0);
    std::uniform_real_distribution<double> tilt(-0.4, 0.4);
    std::vector<ScreenPoint> at;
    std::vector<int> facets;
    // Facets in slabs of depth that do not touch, so that no two pass through each other.
    for (int f = 0; f < kFacets; ++f) {
        const double slab = 5.0 + (f * 37) % kFacets;
        for (int k = 0; k < 3; ++k) {
            facets.push_back(static_cast<int>(at.size()));
            at.push_back({position(random), position(random), slab + tilt(random)});
        }
    }
    const SampledScene scene(at, facets, kSize, kSize);
    const std::vector<int> order = frontToBack(scene);
    ASSERT_EQ(order.size(), static_cast<std::size_t>(kFacets));

    const std::size_t columns = kSize * SampledScene::kSamples;
    int checked = 0;
    for (std::size_t s = 0; s < scene.fronts().size(); ++s) {
        const std::size_t row = s / columns;
        const double x = (static_cast<double>(s % columns) + 0.5) / SampledScene::kSamples;
        const double y = (static_cast<double>(row) + 0.5) / SampledScene::kSamples;
        int first = -1;
        int nearest = -1;
        for (const int f : order) {
            const ScreenPoint* c = &at[3 * static_cast<std::size_t>(f)];
            double sign[3];
            for (int k = 0; k < 3; ++k) {
                const ScreenPoint& p = c[k];
                const ScreenPoint& q = c[(k + 1) % 3];
                sign[k] = (q.x - p.x) * (y - p.y) - (q.y - p.y) * (x - p.x);
            }
            const bool covers = (sign[0] > 0 && sign[1] > 0 && sign[2] > 0) ||
                                (sign[0] < 0 && sign[1] < 0 && sign[2] < 0);
            if (!covers) continue;
            if (first < 0) first = f;
            const auto depth = [&](int g) { return at[3 * static_cast<std::size_t>(g)].depth; };
            if (nearest < 0 || depth(f) < depth(nearest)) nearest = f;
        }
        if (first < 0) continue;
        ++checked;
        ASSERT_EQ(first, nearest) << "at " << x << " " << y;
        EXPECT_TRUE(scene.isVisible(first));
    }
    EXPECT_GT(checked, 5000);
}
