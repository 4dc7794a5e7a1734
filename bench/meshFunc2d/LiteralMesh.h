/// @file
/// What a mesh function shows, built plainly: lists of the location grid, and boundary chains by a
/// hash table of ordered maps. The reference for the time that building takes.
#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

#include "bench/meshFunc2d/TriangulationScene.h"
#include "geomKit/queries/PolylineProjector.h"

struct LiteralMesh {
    using Point = TriangulationScene::Point;

    static constexpr int kCells = 20;

    std::vector<Point> params;
    std::vector<Point> values;
    std::vector<int> facets;
    std::vector<float> normaldots;
    std::vector<std::vector<int>> cells;
    std::vector<std::unique_ptr<geomKit::PolylineProjector>> boundaries;
    std::vector<std::vector<int>> boundaryFacets;

    explicit LiteralMesh(const TriangulationScene& scene)
        : params(scene.params),
          values(scene.values),
          facets(scene.facets),
          normaldots(scene.normaldots),
          cells(std::size_t{kCells} * kCells) {
        fillCells();
        findBoundaries();
    }

private:
    void fillCells() {
        Point low = params[0];
        Point high = params[0];
        for (const Point& p : params) {
            for (int k = 0; k < 2; ++k) {
                low[k] = (std::min)(low[k], p[k]);
                high[k] = (std::max)(high[k], p[k]);
            }
        }
        const Point margin = (high - low) * 0.01;
        low = low - margin;
        high += margin;
        const Point scale(kCells / (high.u - low.u), kCells / (high.v - low.v));
        for (std::size_t i = 0; i < facets.size(); i += 3) {
            int first[2] = {kCells, kCells};
            int last[2] = {-1, -1};
            for (std::size_t corner = i; corner < i + 3; ++corner) {
                const Point& p = params[static_cast<std::size_t>(facets[corner])];
                for (int k = 0; k < 2; ++k) {
                    const double x = (p[k] - low[k]) * scale[k];
                    const int cell = std::clamp(static_cast<int>(x), 0, kCells - 1);
                    first[k] = (std::min)(first[k], cell);
                    last[k] = (std::max)(last[k], cell);
                }
            }
            for (int u = first[0]; u <= last[0]; ++u) {
                for (int v = first[1]; v <= last[1]; ++v)
                    cells[static_cast<std::size_t>(u * kCells + v)].push_back(
                        static_cast<int>(i / 3));
            }
        }
    }

    void findBoundaries() {
        std::unordered_map<int, std::map<int, int>> table(100);
        for (std::size_t i = 0; i < facets.size(); ++i) {
            const int a = facets[i];
            const int b = i % 3 == 2 ? facets[i - 2] : facets[i + 1];
            const auto opposite = table.find(b);
            if (opposite == table.end() || opposite->second.erase(a) == 0) {
                table[a][b] = static_cast<int>(i / 3);
            } else if (opposite->second.empty()) {
                table.erase(opposite);
            }
        }
        while (!table.empty()) {
            std::vector<geomKit::Vector3> points;
            std::vector<int> owners;
            const auto visit = [&](int v) {
                const Point& p = params[static_cast<std::size_t>(v)];
                points.emplace_back(p.u, p.v, 0.0);
                return table.find(v);
            };
            for (auto from = visit(table.begin()->first); from != table.end();) {
                const auto [target, facet] = *from->second.begin();
                owners.push_back(facet);
                from->second.erase(target);
                if (from->second.empty()) table.erase(from);
                from = visit(target);
            }
            boundaries.push_back(std::make_unique<geomKit::PolylineProjector>(points));
            boundaryFacets.push_back(std::move(owners));
        }
    }
};
