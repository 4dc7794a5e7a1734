/// @file
/// One triangulation for all competitors, and the points to ask for.
#pragma once

#include <cmath>
#include <memory>
#include <random>
#include <utility>
#include <vector>

#include <CGAL/Delaunay_triangulation_2.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/Triangulation_vertex_base_with_info_2.h>

#include "geomKit/meshFunc2d/MeshFunction2D.h"

/// About `triangles` Delaunay triangles over a jittered grid in the unit square.
struct TriangulationScene {
    using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
    using Vertex = CGAL::Triangulation_vertex_base_with_info_2<int, Kernel>;
    using Delaunay =
        CGAL::Delaunay_triangulation_2<Kernel, CGAL::Triangulation_data_structure_2<Vertex>>;
    using Point = ktNM::vect2<double>;

    static constexpr std::size_t kRow = 1024;
    static constexpr std::size_t kQueries = kRow * kRow;
    /// Facets must stay above the library's absolute determinant bound of 1e-8.
    static constexpr double kSize = 1000.0;

    std::vector<Point> params;
    std::vector<Point> values;
    std::vector<float> normaldots;
    std::vector<int> facets;
    Delaunay delaunay;
    std::unique_ptr<geomKit::MeshFunction2D> function;
    std::vector<Point> randomQueries;
    std::vector<Point> rasterQueries;

    explicit TriangulationScene(int triangles) {
        std::mt19937_64 random(1);
        const int side = static_cast<int>(std::sqrt(triangles / 2.0)) + 1;
        const double cell = kSize / (side - 1);
        std::uniform_real_distribution<double> jitter(-0.35 * cell, 0.35 * cell);
        for (int i = 0; i < side; ++i) {
            for (int j = 0; j < side; ++j) {
                const double u = i * cell + jitter(random);
                const double v = j * cell + jitter(random);
                params.emplace_back(u, v);
                values.emplace_back(2.0 * u - v, u + 3.0 * v);
                normaldots.push_back(static_cast<float>(u / kSize));
            }
        }
        delaunay = delaunayOf();
        for (auto f = delaunay.finite_faces_begin(); f != delaunay.finite_faces_end(); ++f) {
            for (int k = 0; k < 3; ++k)
                facets.push_back(f->vertex(k)->info());
        }
        function = std::make_unique<geomKit::MeshFunction2D>(params, values, facets, normaldots);

        std::uniform_real_distribution<double> inside(0.01 * kSize, 0.99 * kSize);
        for (std::size_t i = 0; i < kQueries; ++i) {
            const double u = inside(random);
            const double v = inside(random);
            randomQueries.emplace_back(u, v);
            const auto at = [](std::size_t step) {
                return kSize * (0.01 + 0.98 * static_cast<double>(step) / kRow);
            };
            rasterQueries.emplace_back(at(i % kRow), at(i / kRow));
        }
    }

    /// Made anew from the vertices.
    Delaunay delaunayOf() const {
        std::vector<std::pair<Kernel::Point_2, int>> sites;
        sites.reserve(params.size());
        for (std::size_t i = 0; i < params.size(); ++i) {
            sites.emplace_back(Kernel::Point_2(params[i].u, params[i].v), static_cast<int>(i));
        }
        return Delaunay(sites.begin(), sites.end());
    }

    /// The scene of that size, made once.
    static const TriangulationScene& ofSize(int triangles) {
        static std::vector<std::pair<int, std::unique_ptr<TriangulationScene>>> made;
        for (const auto& [size, scene] : made) {
            if (size == triangles) return *scene;
        }
        made.emplace_back(triangles, std::make_unique<TriangulationScene>(triangles));
        return *made.back().second;
    }
};
