// `LineTriangleInt` of one line and many triangles.
#include "geomKit/internal/toIndex.h"
#include "geomKit/internal/vector3x4.h"
#include "geomKit/internal/wideCall.h"
#include "geomKit/queries/LineTriangleInt.h"

namespace geomKit {

namespace {

using detail::callWide;

struct Line {
    Vector3 p;
    UVector3 d;
    double tol;
};

/// Triangles with corners of their own.
struct FlatTriangles {
    const Vector3* corners;

    [[nodiscard]] bool isWhole(std::size_t) const { return true; }
    [[nodiscard]] const Vector3& corner(std::size_t triangle, std::size_t k) const {
        return corners[3 * triangle + k];
    }
};

/// Triangles with the numbers of shared vertices.
struct IndexedTriangles {
    const Vector3* vertices;
    std::size_t vertexCount;
    const int* facets;

    [[nodiscard]] std::size_t vertex(std::size_t triangle, std::size_t k) const {
        return detail::toIndex(facets[3 * triangle + k]);
    }
    [[nodiscard]] bool isWhole(std::size_t triangle) const {
        return vertex(triangle, 0) < vertexCount && vertex(triangle, 1) < vertexCount &&
               vertex(triangle, 2) < vertexCount;
    }
    [[nodiscard]] const Vector3& corner(std::size_t triangle, std::size_t k) const {
        return vertices[vertex(triangle, k)];
    }
};

/// What becomes of the answers: they are written out.
struct Outputs {
    std::int32_t* statuses;
    double* params;
    Vector3* points;
    std::size_t hits = 0;

    GEOMKIT_ALWAYS_INLINE void take(std::size_t i, std::int32_t status, double param,
                                    const Vector3& point) {
        hits += status == LineTriangleInt::kHit ? 1 : 0;
        if (statuses != nullptr) statuses[i] = status;
        if (params != nullptr) params[i] = param;
        if (points != nullptr) points[i] = point;
    }
};

/// What becomes of the answers: the nearest hit is kept.
struct NearestHit {
    double leastParam;
    LineTriangleHit nearest;

    GEOMKIT_ALWAYS_INLINE void take(std::size_t i, std::int32_t status, double param,
                                    const Vector3& point) {
        if (status != LineTriangleInt::kHit || !(param >= leastParam)) return;
        if (nearest && !(param < nearest.param)) return;
        nearest = {static_cast<std::ptrdiff_t>(i), param, point};
    }
};

template <typename Triangles, typename Taker>
GEOMKIT_INLINE_KERNEL void _solveOne(const Line& line, const Triangles& triangles, std::size_t i,
                                     Taker& taker) {
    if (!triangles.isWhole(i)) {
        taker.take(i, LineTriangleInt::kDegenerate, 0.0, Vector3());
        return;
    }
    const LineTriangleInt one(line.p, line.d, triangles.corner(i, 0), triangles.corner(i, 1),
                              triangles.corner(i, 2), line.tol);
    taker.take(i, one.status, one.param, one.point);
}

#if defined(GEOMKIT_HAS_VECTOR3X4)

using detail::Quad;
using detail::Vector3x4;
using Sphere = detail::LineTriangleSphere<Vector3x4>;
using Sides = detail::LineTriangleSides<Vector3x4>;
using Truth = detail::TruthOf<Vector3x4>;

template <typename Triangles>
GEOMKIT_INLINE_KERNEL Vector3x4 _corners(const Triangles& triangles, std::size_t i, std::size_t k) {
    return Vector3x4::of(triangles.corner(i, k), triangles.corner(i + 1, k),
                         triangles.corner(i + 2, k), triangles.corner(i + 3, k));
}

/// Four whole triangles from number i on.
template <typename Triangles, typename Taker>
GEOMKIT_INLINE_KERNEL void _solveFour(const Line& line, const Triangles& triangles, std::size_t i,
                                      Taker& taker) {
    const Vector3x4 p = Vector3x4::all(line.p);
    const Vector3x4 d = Vector3x4::all(line.d);
    const Vector3x4 a = _corners(triangles, i, 0);
    const Vector3x4 b = _corners(triangles, i, 1);
    const Vector3x4 c = _corners(triangles, i, 2);
    const Sphere sphere(p, d, a, b, c);
    const Truth isPassed = (sphere.distSq > sphere.radiusSq(a) + line.tol) &
                           (sphere.distSq > sphere.radiusSq(b, c) + line.tol);
    if ((isPassed[0] & isPassed[1] & isPassed[2] & isPassed[3]) != 0) {
        for (std::size_t k = 0; k < 4; ++k)
            taker.take(i + k, LineTriangleInt::kMiss, 0.0, Vector3());
        return;
    }

    const Sides sides(p, d, a, b, c, line.tol, sphere.offsetSq);
    const Quad param = sides.param(d);
    const Vector3x4 point = p + d * param;
    for (int k = 0; k < 4; ++k) {
        const std::size_t triangle = i + static_cast<std::size_t>(k);
        if (isPassed[k] != 0) {
            taker.take(triangle, LineTriangleInt::kMiss, 0.0, Vector3());
        } else if (sides.areKnown[k] != 0) {
            const bool isHit = sides.depth[k] > 0.0;
            taker.take(triangle, isHit ? LineTriangleInt::kHit : LineTriangleInt::kMiss, param[k],
                       point.get(k));
        } else {
            _solveOne(line, triangles, triangle, taker);
        }
    }
}

template <typename Triangles, typename Taker>
GEOMKIT_INLINE_KERNEL void _solve(const Line* line, const Triangles* triangles, std::size_t count,
                                  Taker* taker) {
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4) {
        if (triangles->isWhole(i) && triangles->isWhole(i + 1) && triangles->isWhole(i + 2) &&
            triangles->isWhole(i + 3)) {
            _solveFour(*line, *triangles, i, *taker);
        } else {
            for (std::size_t k = 0; k < 4; ++k)
                _solveOne(*line, *triangles, i + k, *taker);
        }
    }
    for (; i < count; ++i)
        _solveOne(*line, *triangles, i, *taker);
}

#else

template <typename Triangles, typename Taker>
void _solve(const Line* line, const Triangles* triangles, std::size_t count, Taker* taker) {
    for (std::size_t i = 0; i < count; ++i)
        _solveOne(*line, *triangles, i, *taker);
}

#endif

template <typename Triangles, typename Taker>
void _solveAll(const Line& line, const Triangles& triangles, std::size_t count, Taker& taker) {
    callWide<_solve<Triangles, Taker>>(&line, &triangles, count, &taker);
}

}  // namespace

std::size_t LineTriangleInt::intersect(const Vector3& p, const UVector3& d, double tol,
                                       const Vector3* corners, std::size_t count,
                                       std::int32_t* statuses, double* params,
                                       Vector3* points) noexcept {
    Outputs outputs = {statuses, params, points};
    _solveAll({p, d, tol}, FlatTriangles{corners}, count, outputs);
    return outputs.hits;
}

std::size_t LineTriangleInt::intersect(const Vector3& p, const UVector3& d, double tol,
                                       const Vector3* vertices, std::size_t vertexCount,
                                       const int* facets, std::size_t count, std::int32_t* statuses,
                                       double* params, Vector3* points) noexcept {
    Outputs outputs = {statuses, params, points};
    _solveAll({p, d, tol}, IndexedTriangles{vertices, vertexCount, facets}, count, outputs);
    return outputs.hits;
}

LineTriangleHit LineTriangleInt::nearest(const Vector3& p, const UVector3& d, double tol,
                                         double leastParam, const Vector3* corners,
                                         std::size_t count) noexcept {
    NearestHit taker = {leastParam, {}};
    _solveAll({p, d, tol}, FlatTriangles{corners}, count, taker);
    return taker.nearest;
}

LineTriangleHit LineTriangleInt::nearest(const Vector3& p, const UVector3& d, double tol,
                                         double leastParam, const Vector3* vertices,
                                         std::size_t vertexCount, const int* facets,
                                         std::size_t count) noexcept {
    NearestHit taker = {leastParam, {}};
    _solveAll({p, d, tol}, IndexedTriangles{vertices, vertexCount, facets}, count, taker);
    return taker.nearest;
}

}  // namespace geomKit
