/// @file
/// `MeshFunction2D`, a piecewise-linear function over a 2D triangle mesh.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include "geomKit/export.h"
#include "geomKit/meshFunc2d/MeshFunction2DCheck.h"
#include "geomKit/meshFunc2d/vect2.h"
#include "geomKit/queries/PolylineProjector.h"
#include "geomKit/tags/Serializable.h"

namespace geomKit {

namespace detail {
class ChainTree;
struct CellFrame;
class FineGrid;
}  // namespace detail

/// Maps points of a 2D parameter plane to 2D values and to one float, linearly in each triangle of
/// a mesh, and extends the map beyond the mesh.
///
/// **Data.** The four data sequences and the flag are the function; everything else is derived from
/// them by `initEvaluatorHelper`. Facets whose indices are not all valid for both `params` and
/// `values`, and a trailing partial triple, are kept in `facets` but take part in no query. Facets
/// whose place in the grid is not finite (those with a NaN vertex, and all of them when the mesh is
/// not finite or has no extent along one axis) are not in the grid, but in the boundaries as all
/// others: `evaluate` does not find them, and `extrapolate` may continue them or, at a NaN vertex,
/// find nothing near their chain.
///
/// **Edits.** After an edit of the data, call `initEvaluatorHelper` before the next query. A query
/// that comes before it reads nothing outside the sequences:
///
/// - `evaluate` finds facets by the old index, whatever has become of `facets`, `cells`, the box
///   and the counts, and blends the present data of their vertices. It answers false when `params`
///   or `values` no longer have every vertex that the index names.
/// - `extrapolate` answers false then too. Beyond the mesh it passes over boundaries that are
///   missing, and answers false where the owner of the nearest segment is missing.
/// - `extrapolateOld` takes the public fields as they are. It answers false when `cells` does not
///   have an entry for each cell of `cellCounts`, and passes over facets that are missing.
///
/// **Copies and moves.** `clone` copies; there is no copying by accident. A function that was moved
/// from is one without a mesh, as `MeshFunction2D(extrapolateFlag)` makes it.
///
/// **Threads.** All const members may be called concurrently on one object: `extrapolate` leaves
/// the result fields of the projectors in `boundaries` alone. No query allocates.
class GEOMKIT_API MeshFunction2D : public Serializable {
public:
    using Point = ktNM::vect2<double>;

    /// Vertex positions in the parameter plane.
    std::vector<Point> params;
    /// The value at each vertex.
    std::vector<Point> values;
    /// One float a vertex. When there are fewer than `values`, the float output of queries is -1.
    std::vector<float> normaldots;
    /// Vertex-index triples: facet f is entries 3f, 3f + 1, 3f + 2.
    std::vector<int> facets;
    /// The location grid: entry cu * cellCounts.v + cv lists, ascending, the facets whose vertices'
    /// bounding box touches the cell.
    std::vector<std::vector<int>> cells;
    /// The grid's domain: the bounding box of `params` widened by 1 % of its extent on each side.
    Point boxMin;
    Point boxMax;
    /// Grid cells per parameter unit; (-1, -1) when there is no grid.
    Point cellScale;
    /// Grid size: 20 x 20, or 0 x 0 when there is no grid.
    ktNM::vect2<int> cellCounts;
    /// True: `extrapolate` extends the triangle at the nearest boundary. False: it is
    /// `extrapolateOld`, and no boundaries are built.
    bool extrapolateFlag;
    /// One projector for each chain of boundary edges, over the points (u, v, 0).
    std::vector<std::unique_ptr<PolylineProjector>> boundaries;
    /// For boundary k, entry j is the facet that owns the segment from point j to point j + 1.
    std::vector<std::vector<int>> boundaryFacets;

    /// A function without a mesh: every query answers false.
    explicit MeshFunction2D(bool extrapolateFlag);
    /// Copies the data, sets `extrapolateFlag` and builds grid and boundaries. Mind the order:
    /// facets before floats.
    MeshFunction2D(const std::vector<Point>& params, const std::vector<Point>& values,
                   const std::vector<int>& facets, const std::vector<float>& normaldots);
    ~MeshFunction2D() override;
    MeshFunction2D(const MeshFunction2D&) = delete;
    MeshFunction2D& operator=(const MeshFunction2D&) = delete;
    MeshFunction2D(MeshFunction2D&& other) noexcept;
    MeshFunction2D& operator=(MeshFunction2D&& other) noexcept;

    /// A function with copies of everything. The index is not built again, the projectors are.
    [[nodiscard]] std::unique_ptr<MeshFunction2D> clone() const;
    /// `clone` as a plain pointer, which the caller owns.
    [[nodiscard]] MeshFunction2D* copy() const;

    /// Reads the data sequences and the flag from a document and calls `initEvaluatorHelper`. The
    /// sequences are taken as they stand: see `check`.
    void load(InTag& tag, boost::intrusive_ptr<Field> field) override;
    /// "super", "params", "values", "normaldots", "facets" and "extrapolateFlag".
    [[nodiscard]] const boost::intrusive_ptr<CompositeField>& classField() const override;

    /// Whether the data hold together: `params` and `values` of one length, whole triples, valid
    /// indices, finite coordinates, no facets too small to answer. Queries are safe in any case; a
    /// host that loads files from strangers learns here that facets will be missing. Linear in the
    /// data.
    [[nodiscard]] MeshFunction2DCheck check() const;

    /// Rebuilds the grid and, when `extrapolateFlag` is set, the boundaries. Without points, or
    /// when the bounding box has a squared diagonal below 1e-16, there is no grid, every query
    /// answers false and the boundaries are left as they were. If memory runs out (bad_alloc),
    /// everything is left as it was.
    void initEvaluatorHelper();

    /// Rebuilds `boundaries` and `boundaryFacets`: the half-edges that no opposite half-edge
    /// cancels, in the orientation of their triangles, joined into chains. A chain starts at the
    /// smallest vertex index that still has an outgoing edge, goes on to the smallest target, and
    /// ends where no edge leads on; a loop repeats its first point. No boundaries when the length
    /// of `facets` is not a positive multiple of 3, or above 2^31 - 1. If memory runs out, the
    /// boundaries are left as they were.
    void initBoundaries();

    /// Interpolates at `p` in the first facet that contains it within 1e-8 in every barycentric
    /// weight, edges included; a point on a shared edge takes the facet of the lower index. False,
    /// with the outputs untouched, outside the mesh and for a `p` that is not finite. Facets whose
    /// determinant is below 1e-8 in absolute value (parameter units squared, not scaled) contain
    /// nothing. Either output may be null.
    bool evaluate(const Point& p, Point* outValue, float* outFloat) const;

    /// `evaluate` of `count` points, each answer the same to the bit. Returns how many succeeded.
    /// Every output may be null; values and floats of points that failed are left untouched. A
    /// point takes two thirds to a fifth of the time, the less the larger the mesh: several points
    /// share the vector registers and wait for memory together.
    std::size_t evaluate(const Point* points, std::size_t count, Point* outValues, float* outFloats,
                         bool* outFound) const;

    /// Interpolates inside the mesh; outside, extends the linear map of the facet that owns the
    /// nearest boundary segment (of equally near chains the first). False when there is no boundary
    /// within a distance of sqrt(1e13), when that facet is degenerate, or when `p` is not finite.
    /// Without `extrapolateFlag` it is `extrapolateOld`.
    bool extrapolate(const Point& p, Point* outValue, float* outFloat) const;

    /// `extrapolate` of `count` points, each answer the same to the bit. Returns how many
    /// succeeded. Every output may be null; values and floats of points that failed are left
    /// untouched. Those inside the mesh are found by the array form of `evaluate`: where nearly all
    /// are, a point takes 0.7 of the time or less; where half of them are outside, as long.
    std::size_t extrapolate(const Point* points, std::size_t count, Point* outValues,
                            float* outFloats, bool* outFound) const;

    /// Extends the linear map of the facet with the nearest edge among those listed in the cell of
    /// `p` (clamped into the grid); from an empty cell it walks towards the grid's centre first.
    /// Never tests whether a facet contains `p`. False when the walk meets no facet, when the facet
    /// is degenerate, or when `p` or its place in the grid is not finite.
    bool extrapolateOld(const Point& p, Point* outValue, float* outFloat) const;

    /// Blends the data of vertices i0, i1, i2 by the barycentric weights of `p`. `strict` asks for
    /// weights of at least -1e-8; otherwise the triangle's affine map is extended to `p`. False
    /// for a determinant below 1e-8 in absolute value and for an index that is not valid.
    bool iEvalInFacet(int i0, int i1, int i2, const Point& p, Point* outValue, float* outFloat,
                      bool strict) const;

    /// Squared distance from `p` to the segment between vertices a and b, of `values` or of
    /// `params`. `interior`, if not null, tells whether `p` projects between the ends, within 1e-8
    /// of the length. The perpendicular distance may come out slightly below 0. Infinite when an
    /// index is not valid.
    double iDistToEdge(int a, int b, const Point& p, bool* interior, bool useValues) const;

private:
    /// Whether there is an index, and every vertex that it names.
    bool iIsIndexed() const;
    /// Vertices that facets can name.
    int iVertexCount() const noexcept;
    std::vector<std::vector<int>> iListFacets(const detail::CellFrame& frame) const;
    bool iExtendBoundary(const Point& p, Point* outValue, float* outFloat) const;
    std::size_t iCellIndex(int cu, int cv) const {
        return static_cast<std::size_t>(cu) * static_cast<std::size_t>(cellCounts.v) +
               static_cast<std::size_t>(cv);
    }
    void iSwap(MeshFunction2D& other) noexcept;

    std::unique_ptr<const detail::FineGrid> fineGrid_;
    std::unique_ptr<const detail::ChainTree> chainTree_;
};

}  // namespace geomKit
