"""Lines, planes, triangles, spheres, boxes and segments beside NumPy and shapely."""

from __future__ import annotations

import geomkit
import numpy as np
import pytest
import shapely.geometry as shapely
from geomkit import LineLineStatus, LinePlaneStatus, LineTriangleStatus
from geomkit import PlanePlaneStatus

COUNT = 2000
TOL = 1e-9


def _random(*shape: int, seed: int = 1) -> np.ndarray:
    return np.random.default_rng(seed).normal(size=(COUNT, *shape))


def _along(origin: np.ndarray, direction: np.ndarray, param: np.ndarray) -> np.ndarray:
    unit = direction / np.linalg.norm(direction, axis=-1, keepdims=True)
    return origin + unit * param[..., None]


def _dot(a: np.ndarray, b: np.ndarray) -> np.ndarray:
    return np.einsum("...i,...i", a, b)


def test_triangles_are_hit_where_linear_equations_say() -> None:
    p, d, t = 0.3 * _random(3), _random(3, seed=2), _random(3, 3, seed=3)
    columns = np.stack([t[:, 1] - t[:, 0], t[:, 2] - t[:, 0], -d], axis=-1)
    u, v, s = np.linalg.solve(columns, (p - t[:, 0])[..., None])[..., 0].T
    inside = (u > 0) & (v > 0) & (u + v < 1)
    hits = geomkit.line_triangle(p, d, t, TOL)
    assert np.array_equal(hits.status == LineTriangleStatus.HIT, inside)
    assert 100 < inside.sum() < COUNT - 100
    scale = np.linalg.norm(d, axis=-1)
    assert np.allclose(hits.param[inside], (s * scale)[inside], rtol=1e-6)
    assert np.allclose(hits.point[inside], _along(p, d, hits.param)[inside])
    # One line takes another way through the triangles.
    one = geomkit.line_triangle(p[0], d[0], t, TOL)
    for k in range(0, COUNT, 50):
        single = geomkit.line_triangle(p[0], d[0], t[k], TOL)
        assert [a[k].tobytes() for a in one] == [a.tobytes() for a in single]


def test_weights_blend_to_the_point() -> None:
    t, w = _random(3, 3), np.random.default_rng(2).dirichlet([1, 1, 1], COUNT)
    points = np.einsum("nk,nki->ni", w, t)
    assert np.allclose(geomkit.triangle_weights(points, t), w, atol=1e-6)


@pytest.mark.parametrize("normalize", [False, True])
def test_lines_meet_where_they_were_made_to(normalize: bool) -> None:
    point, d1, d2 = _random(3), _random(3, seed=2), _random(3, seed=3)
    s, t = _random(2, seed=4).T
    length1, length2 = (np.linalg.norm(d, axis=-1) for d in (d1, d2))
    unit1, unit2 = (length1, length2) if normalize else (1.0, 1.0)
    found = geomkit.line_line(
        point - d1 * s[:, None], d1, point - d2 * t[:, None], d2, 1e-6, normalize
    )
    assert (found.status == LineLineStatus.MEET).all()
    assert np.allclose(found.point, point, atol=1e-6)
    assert np.allclose(found.param1, s * unit1, atol=1e-6)
    assert np.allclose(found.param2, t * unit2, atol=1e-6)


def test_planes_are_met_on_both_objects() -> None:
    p, d, q, n = (_random(3, seed=k) for k in range(4))
    hits = geomkit.line_plane(p, d, q, n, TOL)
    size = 1.0 + np.abs(hits.param)
    assert (np.abs(_dot(hits.point - q, n)) < 1e-9 * size).all()
    assert np.allclose(hits.point, _along(p, d, hits.param))
    both = geomkit.plane_plane(p, d, q, n, TOL)
    size = 1.0 + np.linalg.norm(both.point, axis=-1)
    for point, normal in ((p, d), (q, n)):
        assert (np.abs(_dot(both.point - point, normal)) < 1e-9 * size).all()
    cross = np.cross(d, n)
    assert np.allclose(both.direction, cross / np.linalg.norm(cross, axis=-1)[:, None])


def test_spheres_are_hit_on_their_surface() -> None:
    p, d, c = (_random(3, seed=k) for k in range(3))
    radius = np.abs(_random(seed=4))
    hits = geomkit.line_sphere(p, d, c, radius, 0.0)
    unit = d / np.linalg.norm(d, axis=-1)[:, None]
    gap = np.linalg.norm(np.cross(c - p, unit), axis=-1)
    assert np.array_equal(hits.num_hits, np.where(gap < radius, 2, 0))
    hit = hits.num_hits == 2
    assert 100 < hit.sum() < COUNT - 100
    assert (hits.param1 <= hits.param2).all()
    for point, param in ((hits.point1, hits.param1), (hits.point2, hits.param2)):
        assert np.allclose(np.linalg.norm(point - c, axis=-1)[hit], radius[hit])
        assert np.allclose(point[hit], _along(p, d, param)[hit])


X, Y, Z, O = [1, 0, 0], [0, 1, 0], [0, 0, 1], [0, 0, 0]
TRIANGLE = [O, X, Y]


@pytest.mark.parametrize(
    ("status", "call", "arguments"),
    [
        (LineTriangleStatus.HIT, geomkit.line_triangle, (Z, Z, TRIANGLE, TOL)),
        (LineTriangleStatus.MISS, geomkit.line_triangle, ([1, 1, 0], Z, TRIANGLE, TOL)),
        (LineTriangleStatus.IN_PLANE, geomkit.line_triangle, (O, X, TRIANGLE, TOL)),
        (
            LineTriangleStatus.PARALLEL,
            geomkit.line_triangle,
            ([0, 0, 0.1], X, TRIANGLE, TOL),
        ),
        (LineTriangleStatus.DEGENERATE, geomkit.line_triangle, (O, Z, [O, X, X], TOL)),
        (LineLineStatus.MEET, geomkit.line_line, (O, X, Y, Y, TOL)),
        (LineLineStatus.PARALLEL, geomkit.line_line, (O, X, Y, X, TOL)),
        (LineLineStatus.COINCIDENT, geomkit.line_line, (O, X, X, X, TOL)),
        (LineLineStatus.SKEW, geomkit.line_line, (O, X, Z, Y, TOL)),
        (LinePlaneStatus.HIT, geomkit.line_plane, (O, X, O, X, TOL)),
        (LinePlaneStatus.PARALLEL, geomkit.line_plane, (Z, X, O, Z, TOL)),
        (LinePlaneStatus.IN_PLANE, geomkit.line_plane, (O, X, O, Z, TOL)),
        (PlanePlaneStatus.MEET, geomkit.plane_plane, (O, X, O, Y, TOL)),
        (PlanePlaneStatus.PARALLEL, geomkit.plane_plane, (O, X, X, X, TOL)),
        (PlanePlaneStatus.COINCIDENT, geomkit.plane_plane, (O, X, Y, X, TOL)),
    ],
    ids=str,
)
def test_statuses_are_named(status, call, arguments) -> None:
    assert type(status)(call(*arguments).status) is status


def test_boxes_like_numpy() -> None:
    points, others = _random(6, 3), _random(2, 3, seed=2)
    box, other = geomkit.Bbox.of_points(points), geomkit.Bbox.of_points(others)
    assert np.array_equal(box.min_pt, points.min(axis=1))
    assert np.array_equal(box.max_pt, points.max(axis=1))
    assert np.allclose(box.volume, np.ptp(points, axis=1).prod(axis=1))
    assert np.array_equal((box + other).min_pt, np.minimum(box.min_pt, other.min_pt))
    shared = box.isec(other)
    assert np.array_equal(shared.min_pt, np.maximum(box.min_pt, other.min_pt))
    apart = (shared.min_pt > shared.max_pt).any(axis=1)
    assert np.array_equal(shared.is_valid, ~apart)
    query = others[:, 0]
    inside = ((box.min_pt <= query) & (query <= box.max_pt)).all(axis=1)
    assert np.array_equal(box.filter(query), inside)
    wider = box.updated(query)
    assert wider.filter(query).all()
    low, high = box.bounds_in_dir(query)
    corners = np.where(query > 0, box.max_pt, box.min_pt)
    assert np.allclose(high, corners)
    assert np.allclose(low, box.min_pt + box.max_pt - corners)
    assert not geomkit.Bbox([1, 0, 0], O).is_valid
    assert geomkit.Bbox() == geomkit.Bbox() != box


def test_segments_like_shapely() -> None:
    a, b, c, d = (_random(2, seed=k) for k in range(4))
    rmin, rmax = np.array([-0.6, -0.4]), np.array([0.5, 0.7])
    rectangle = shapely.box(*rmin, *rmax)
    crosses = geomkit.segs_intersect(a, b, c, d, 1e-12, inclusive=True)
    meets = geomkit.seg_intersect_rect(a, b, rmin, rmax)
    rest = geomkit.seg_clip_rect(a, b, rmin, rmax)
    assert 0.1 < crosses.mean() < 0.9
    assert np.array_equal(meets, rest.remains)
    for k in range(COUNT):
        first, second = shapely.LineString([a[k], b[k]]), shapely.LineString(
            [c[k], d[k]]
        )
        assert crosses[k] == first.intersects(second), k
        assert meets[k] == first.intersects(rectangle), k
        if meets[k]:
            theirs = np.array(first.intersection(rectangle).coords)
            assert np.allclose([rest.a[k], rest.b[k]], theirs, atol=1e-12), k
    half = geomkit.seg_clip_half_plane(a, b, c, d)
    kept = np.stack([half.a, half.b])[:, half.remains]
    assert (_dot(kept - c[half.remains], d[half.remains]) > -1e-12).all()
    assert np.array_equal(half.remains, (_dot(a - c, d) > 0) | (_dot(b - c, d) > 0))
    # A third coordinate of 0 changes nothing.
    space = [np.pad(p, ((0, 0), (0, 1))) for p in (a, b, c, d)]
    assert np.array_equal(geomkit.segs_intersect(*space, 1e-12, True), crosses)
    assert np.array_equal(geomkit.seg_clip_half_plane(*space).a[:, :2], half.a)
