/// @file
/// Meshes that are hard on point location, and what mesh functions answer.
#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <utility>

#include "tests/reference/LiteralMesh.h"
#include "tests/support.h"

using Point = ktNM::vect2<double>;

struct TestMesh {
    std::string name;
    std::vector<Point> params;
    std::vector<Point> values;
    std::vector<int> facets;
    std::vector<float> normaldots;

    /// Samples a linear function, so that right answers are known everywhere.
    static Point linear(const Point& p) { return {2.0 * p.u - p.v + 1.0, p.u + 3.0 * p.v}; }

    int addVertex(const Point& p) {
        params.push_back(p);
        values.push_back(linear(p));
        normaldots.push_back(static_cast<float>(0.25 * p.u));
        return static_cast<int>(params.size()) - 1;
    }
    void addFacet(int a, int b, int c) { facets.insert(facets.end(), {a, b, c}); }

    void addTriangle(const Point& p, const Point& q, const Point& r) {
        const int a = addVertex(p), b = addVertex(q);
        addFacet(a, b, addVertex(r));
    }

    geomKit::MeshFunction2D function() const { return {params, values, facets, normaldots}; }
    LiteralMesh literal() const { return {params, values, facets, normaldots}; }
};

/// A jittered grid of n x n vertices over a square; `keep(i, j)`, if any, chooses its cells.
inline TestMesh gridMesh(std::string name, int n, double size, double jitter,
                         const std::function<bool(int, int)>& keep = nullptr) {
    InputSource in(static_cast<std::uint64_t>(n));
    TestMesh mesh{std::move(name), {}, {}, {}, {}};
    const double cell = size / (n - 1);
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) {
            const double du = in.uniform(-jitter, jitter), dv = in.uniform(-jitter, jitter);
            mesh.addVertex({(i + du) * cell, (j + dv) * cell});
        }
    }
    for (int i = 0; i + 1 < n; ++i) {
        for (int j = 0; j + 1 < n; ++j) {
            if (keep && !keep(i, j)) continue;
            const int a = i * n + j;
            mesh.addFacet(a, a + n, a + n + 1);
            mesh.addFacet(a, a + n + 1, a + 1);
        }
    }
    return mesh;
}

/// Unconnected facets, each thinned to `thickness` of its size: overlapping and inverted ones too.
inline TestMesh soup(std::string name, int count, double size, double thickness) {
    InputSource in(static_cast<std::uint64_t>(count) + 7);
    TestMesh mesh{std::move(name), {}, {}, {}, {}};
    for (int f = 0; f < count; ++f) {
        // From specks to facets that span everything.
        const double reach = size * std::exp(in.uniform(-6.0, 0.5));
        const geomKit::Vector3 a = in.vector(size), d = in.vector(reach), e = in.vector(reach);
        const geomKit::Vector3 c = a + d * in.uniform(0.0, 1.0) + e * thickness;
        mesh.addTriangle({a.x, a.y}, {a.x + d.x, a.y + d.y}, {c.x, c.y});
        if (f % 10 == 0) mesh.addFacet(3 * f, 3 * f + 2, 3 * f + 1);
    }
    return mesh;
}

/// What a query wrote, and whether it found anything.
struct Answer {
    bool isFound = false;
    Point value;
    float number = 0.0f;

    bool operator==(const Answer& other) const {
        return isFound == other.isFound && value == other.value && number == other.number;
    }
};

inline std::ostream& operator<<(std::ostream& os, const Answer& answer) {
    return os << (answer.isFound ? "found " : "not found ") << answer.value << ' ' << answer.number;
}

template <typename Query>
Answer answer(const Query& query) {
    Answer answer;
    answer.isFound = query(&answer.value, &answer.number);
    return answer;
}

/// Of a mesh function or of its plain version.
template <typename Function>
Answer evaluated(const Function& f, const Point& p) {
    return answer([&](Point* value, float* cosine) { return f.evaluate(p, value, cosine); });
}

inline Answer extrapolated(const geomKit::MeshFunction2D& f, const Point& p) {
    return answer([&](Point* value, float* cosine) { return f.extrapolate(p, value, cosine); });
}

inline Answer inFacet(const geomKit::MeshFunction2D& f, int facet, const Point& p, bool strict) {
    const int* corner = &f.facets[3 * static_cast<std::size_t>(facet)];
    return answer([&](Point* value, float* cosine) {
        return f.iEvalInFacet(corner[0], corner[1], corner[2], p, value, cosine, strict);
    });
}

/// Compares both forms of `evaluate` with the plain one; returns how many points were found.
inline std::size_t expectPlainAnswers(const TestMesh& mesh, const geomKit::MeshFunction2D& f,
                                      const std::vector<Point>& points) {
    const LiteralMesh literal = mesh.literal();
    std::vector<Point> values(points.size());
    std::vector<float> floats(points.size());
    const auto found = std::make_unique<bool[]>(points.size());
    const std::size_t hits =
        f.evaluate(points.data(), points.size(), values.data(), floats.data(), found.get());
    std::size_t expected = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const Answer plain = evaluated(literal, points[i]);
        const Answer inArray = {found[i], values[i], floats[i]};
        EXPECT_EQ(evaluated(f, points[i]), plain);
        EXPECT_EQ(inArray, plain);
        if (testing::Test::HasFailure()) return 0;
        expected += plain.isFound ? 1 : 0;
    }
    EXPECT_EQ(hits, expected);
    return hits;
}
