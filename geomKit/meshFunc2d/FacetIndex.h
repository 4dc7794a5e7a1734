/// @file
/// A finer grid below the cells of a mesh function's location grid. Internal to mesh functions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "geomKit/meshFunc2d/barycentric.h"
#include "geomKit/meshFunc2d/vect2.h"

/// For a position in a cell of the location grid, the facets of that cell's list that may contain
/// it, in the list's order.
///
/// Each cell is divided into n x n fine cells, n by the length of its list. A facet is entered
/// wherever the rounded arithmetic of the containment test might accept a point, so the first facet
/// to accept a point is the same one as in the whole list. Facets that accept nothing are left out.
class FacetIndex {
public:
    using Point = ktNM::vect2<double>;

    /// A range of facet numbers.
    struct Candidates {
        const int* first;
        const int* last;

        const int* begin() const { return first; }
        const int* end() const { return last; }
    };

    /// A facet ready for the test, in one cache line.
    struct alignas(64) Facet {
        FacetFrame frame;
        int corner[3] = {0, 0, 0};
    };

    /// `cells`, `cellsV` columns of them, list facets whose corners are valid in `params`; a point
    /// p lies at (p - origin) * scale in cell units.
    FacetIndex(const std::vector<std::vector<int>>& cells, int cellsV,
               const std::vector<Point>& params, const std::vector<int>& facets,
               const Point& origin, const Point& scale);

    /// Where the candidates for position `x` in cell (cu, cv) = entry `cell` are listed.
    const std::uint32_t* find(const Point& x, int cu, int cv, std::size_t cell) const {
        const Division& division = divisions_[cell];
        const int fu = fineCoordinate(x.u, cu, division.count);
        const int fv = fineCoordinate(x.v, cv, division.count);
        return &starts_[division.start + static_cast<std::uint32_t>(fu * division.count + fv)];
    }
    Candidates candidates(const std::uint32_t* found) const {
        return {entries_.data() + found[0], entries_.data() + found[1]};
    }

    /// By facet number, for small meshes; empty for others, whose prepared facets would not stay
    /// in the cache and cost more than the division that they save.
    const std::vector<Facet>& prepared() const { return prepared_; }

private:
    struct Division {
        std::uint32_t start = 0;
        int count = 1;
    };
    struct Reach;

    /// Monotonic in `x`, which is all that the index relies on.
    static int fineCoordinate(double x, int cell, int count) {
        const double t = (x - cell) * count;
        if (!(t > 0.0)) return 0;
        return t < count ? static_cast<int>(t) : count - 1;
    }

    Division divide(const std::vector<Reach>& reaches, int cu, int cv, double fineCellsPerFacet);

    std::vector<Division> divisions_;
    /// For each fine cell where its candidates start in `entries_`; one more for each cell.
    std::vector<std::uint32_t> starts_;
    std::vector<int> entries_;
    std::vector<Facet> prepared_;
};
