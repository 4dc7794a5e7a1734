"""Polylines, proximity, roots, fits and eigensystems beside SciPy, shapely and NumPy."""

from __future__ import annotations

import geomkit
import numpy as np
import pytest
import shapely.geometry as shapely
from scipy.spatial import cKDTree


@pytest.mark.parametrize("count", [2, 15, 400])
def test_nearest_like_shapely(count: int) -> None:
    random = np.random.default_rng(count)
    vertices = np.pad(
        np.cumsum(random.normal(size=(count, 2)), axis=0), ((0, 0), (0, 1))
    )
    path, line = geomkit.PolylineProjector(vertices), shapely.LineString(
        vertices[:, :2]
    )
    steps = np.linalg.norm(np.diff(vertices, axis=0), axis=1)
    assert np.allclose(path.arc_length, np.concatenate([[0], np.cumsum(steps)]))
    queries = np.pad(random.normal(size=(500, 2)) * 5, ((0, 0), (0, 1)))
    segment, param, point = path.nearest(queries)
    along = path.arc_length[segment] + param * steps[segment]
    for k, query in enumerate(queries):
        theirs = shapely.Point(query[:2])
        distance = np.linalg.norm(point[k] - query)
        assert np.isclose(distance, line.distance(theirs), atol=1e-9), k
        assert np.isclose(along[k], line.project(theirs), atol=1e-6), k
    with pytest.raises(ValueError, match="read-only"):
        path.points[0] = 0.0


def test_short_polylines() -> None:
    assert geomkit.PolylineProjector([[1, 2, 3]]).nearest([0, 0, 0]).point.tolist() == [
        1,
        2,
        3,
    ]
    empty = geomkit.PolylineProjector(np.zeros((0, 3)))
    assert empty.nearest([[4, 5, 6]]).segment.tolist() == [-1]


def test_proximity_is_certain_about_the_far() -> None:
    random = np.random.default_rng(1)
    points, queries = random.normal(size=(300, 3)), random.normal(size=(5000, 3)) * 2
    tester = geomkit.ProximityTester(points, radius=0.2)
    answers = tester.test(queries)
    away = np.abs(points[None] - queries[:, None]) >= 2 * np.array(tester.cell)
    near = cKDTree(points).query(queries)[0] < 0.2
    far = away.any(axis=2).all(axis=1)
    assert near.sum() > 50 and far.sum() > 50
    assert answers[near].all()
    assert not answers[far].any()
    with pytest.raises(TypeError, match="radius: dtype <U3, wanted real numbers"):
        geomkit.ProximityTester(points, radius="far")


@pytest.mark.parametrize(
    ("solve", "degree"), [(geomkit.solve_quadratic, 2), (geomkit.solve_cubic, 3)]
)
def test_roots_are_those_put_in(solve, degree: int) -> None:
    random = np.random.default_rng(2)
    wanted = np.sort(random.uniform(-3, 3, (2000, degree)))
    wanted = wanted[np.diff(wanted).min(axis=1) > 0.05]
    leading = random.uniform(0.5, 2, len(wanted))
    count, roots = solve([a * np.poly(r) for a, r in zip(leading, wanted)])
    assert (count == degree).all()
    assert np.allclose(roots, wanted, atol=1e-8)


def test_no_root_is_nan() -> None:
    count, roots = geomkit.solve_cubic([[1, 0, 1, 0], [0, 1, 0, 1], [0, 1, -3, 2]])
    assert count.tolist() == [1, 0, 2]
    assert np.isnan(roots).sum(axis=1).tolist() == [2, 3, 1]


def test_eigensystems_like_numpy() -> None:
    matrices = np.random.default_rng(3).normal(size=(40, 50, 3, 3))
    symmetric = (matrices + np.swapaxes(matrices, -1, -2)) / 2
    values, vectors = geomkit.eigensystem(matrices)
    assert np.allclose(values, np.linalg.eigvalsh(symmetric), atol=1e-7)
    assert np.allclose(symmetric @ vectors, vectors * values[..., None, :], atol=1e-7)
    assert np.allclose(np.linalg.norm(vectors, axis=-2), 1.0)


def test_fits_like_the_singular_vectors() -> None:
    random = np.random.default_rng(4)
    points = random.normal(size=(200, 30, 3)) * [3.0, 2.0, 1.0] + random.normal(
        size=(200, 1, 3)
    )
    middle = points.mean(axis=1)
    axes = np.linalg.svd(points - middle[:, None])[2]
    for fit, wanted in (
        (geomkit.best_fit_line, axes[:, 0]),
        (geomkit.best_fit_plane, axes[:, 2]),
    ):
        center, direction = fit(points)
        assert np.allclose(center, middle)
        assert np.allclose(np.abs(np.einsum("ni,ni->n", direction, wanted)), 1.0)
    with pytest.raises(ValueError, match="points: 1 in a set, wanted 2 or more"):
        geomkit.best_fit_line([[1, 2, 3]])
