/// @file
/// A mesh function by its documentation: lists of the location grid, boundary chains by a hash
/// table of ordered maps, and evaluation by trying the facets of a list. The reference for answers,
/// and for the time that building takes.
#pragma once

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

#include "geomKit/meshFunc2d/MeshFunction2D.h"

/// Of meshes whose indices are valid, whose params are finite and whose extent is not zero.
class LiteralMesh {
public:
    using Point = ktNM::vect2<double>;

    std::vector<std::vector<int>> cells;
    std::vector<std::unique_ptr<geomKit::PolylineProjector>> boundaries;
    std::vector<std::vector<int>> boundaryFacets;

    LiteralMesh(const std::vector<Point>& params, const std::vector<Point>& values,
                const std::vector<int>& facets, const std::vector<float>& normaldots)
        : cells(std::size_t{kCells} * kCells),
          params_(params),
          values_(values),
          facets_(facets),
          normaldots_(normaldots) {
        iFillCells();
        iFindBoundaries();
    }

    /// The first facet in the list of the point's cell that accepts it answers.
    bool evaluate(const Point& p, Point* outValue, float* outFloat) const {
        for (int k = 0; k < 2; ++k) {
            const double x = iPosition(p, k);
            if (!(x >= -1e-8 && x <= kCells + 1e-8)) return false;
        }
        for (const int facet : cells[toIndex(iCell(p, 0) * kCells + iCell(p, 1))]) {
            if (iEvaluateIn(&facets_[3 * toIndex(facet)], p, outValue, outFloat)) return true;
        }
        return false;
    }

private:
    static constexpr int kCells = 20;

    static std::size_t toIndex(int i) { return static_cast<std::size_t>(i); }

    double iPosition(const Point& p, int k) const { return (p[k] - low_[k]) * scale_[k]; }
    int iCell(const Point& p, int k) const {
        const double x = iPosition(p, k);
        if (x > kCells - 1e-8) return kCells - 1;
        return x < 1e-8 ? 0 : static_cast<int>(std::floor(x));
    }

    bool iEvaluateIn(const int* corner, const Point& p, Point* outValue, float* outFloat) const {
        const std::size_t i0 = toIndex(corner[0]), i1 = toIndex(corner[1]), i2 = toIndex(corner[2]);
        const Point e1 = params_[i1] - params_[i0], e2 = params_[i2] - params_[i0];
        const double det = e1.u * e2.v - e2.u * e1.v;
        if (std::abs(det) < 1e-8) return false;
        const double r = 1.0 / det;
        const Point d = p - params_[i0];
        const double a = e2.v * r * d.u + -e2.u * r * d.v;
        const double b = -e1.v * r * d.u + e1.u * r * d.v;
        const double c = 1.0 - a - b;
        if (a < -1e-8 || b < -1e-8 || c < -1e-8) return false;
        *outValue = values_[i1] * a + values_[i2] * b + values_[i0] * c;
        auto f = static_cast<float>(normaldots_[i1] * a);
        f = static_cast<float>(normaldots_[i2] * b + f);
        *outFloat = static_cast<float>(normaldots_[i0] * c + f);
        return true;
    }

    void iFillCells() {
        low_ = params_[0];
        Point high = params_[0];
        for (const Point& p : params_) {
            for (int k = 0; k < 2; ++k) {
                low_[k] = (std::min)(low_[k], p[k]);
                high[k] = (std::max)(high[k], p[k]);
            }
        }
        const Point margin = (high - low_) * 0.01;
        low_ = low_ - margin;
        high += margin;
        scale_ = Point(kCells / (high.u - low_.u), kCells / (high.v - low_.v));
        for (std::size_t i = 0; i < facets_.size(); i += 3) {
            int first[2] = {kCells, kCells};
            int last[2] = {-1, -1};
            for (std::size_t corner = i; corner < i + 3; ++corner) {
                for (int k = 0; k < 2; ++k) {
                    const int cell = iCell(params_[toIndex(facets_[corner])], k);
                    first[k] = (std::min)(first[k], cell);
                    last[k] = (std::max)(last[k], cell);
                }
            }
            for (int u = first[0]; u <= last[0]; ++u) {
                for (int v = first[1]; v <= last[1]; ++v)
                    cells[toIndex(u * kCells + v)].push_back(static_cast<int>(i / 3));
            }
        }
    }

    void iFindBoundaries() {
        std::unordered_map<int, std::map<int, int>> table(100);
        for (std::size_t i = 0; i < facets_.size(); ++i) {
            const int a = facets_[i];
            const int b = i % 3 == 2 ? facets_[i - 2] : facets_[i + 1];
            const auto opposite = table.find(b);
            if (opposite == table.end() || opposite->second.erase(a) == 0) {
                table[a][b] = static_cast<int>(i / 3);
            } else if (opposite->second.empty()) {
                table.erase(opposite);
            }
        }
        std::vector<int> starts;
        for (const auto& [vertex, targets] : table)
            starts.push_back(vertex);
        std::sort(starts.begin(), starts.end());
        for (const int start : starts) {
            while (table.count(start) != 0)
                iFollowChain(start, table);
        }
    }

    void iFollowChain(int start, std::unordered_map<int, std::map<int, int>>& table) {
        std::vector<geomKit::Vector3> points;
        std::vector<int> owners;
        const auto visit = [&](int v) {
            const Point& p = params_[toIndex(v)];
            points.emplace_back(p.u, p.v, 0.0);
            return table.find(v);
        };
        for (auto from = visit(start); from != table.end();) {
            const auto [target, facet] = *from->second.begin();
            owners.push_back(facet);
            from->second.erase(target);
            if (from->second.empty()) table.erase(from);
            from = visit(target);
        }
        boundaries.push_back(std::make_unique<geomKit::PolylineProjector>(points));
        boundaryFacets.push_back(std::move(owners));
    }

    std::vector<Point> params_;
    std::vector<Point> values_;
    std::vector<int> facets_;
    std::vector<float> normaldots_;
    Point low_;
    Point scale_;
};
