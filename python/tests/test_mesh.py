"""Mesh functions, beside SciPy's interpolator and the documented rules for arrays."""

from __future__ import annotations

import pickle

import geomkit
import numpy as np
import pytest
from scipy.interpolate import LinearNDInterpolator
from scipy.spatial import Delaunay


@pytest.fixture(scope="module")
def mesh() -> tuple[np.ndarray, np.ndarray, np.ndarray]:
    random = np.random.default_rng(1)
    params = random.random((500, 2))
    return params, random.random((500, 2)), Delaunay(params).simplices


def test_same_as_scipy_inside_and_continued_outside(mesh) -> None:
    params, values, facets = mesh
    points = np.random.default_rng(2).random((40, 50, 2)) * 1.4 - 0.2
    function = geomkit.MeshFunction2D(params, values, facets)
    theirs = LinearNDInterpolator(Delaunay(params), values)(points)
    inside = np.isfinite(theirs)
    assert 0.3 < inside.mean() < 0.7
    assert np.allclose(function(points)[inside], theirs[inside], rtol=0, atol=1e-9)
    assert np.isfinite(function(points, outside="extrapolate")).all()


@pytest.mark.parametrize("workers", [1, 2, 3, -1])
@pytest.mark.parametrize("extrapolate", [False, True])
def test_workers_do_not_change_a_bit(mesh, workers: int, extrapolate: bool) -> None:
    params, values, facets = mesh
    points = np.random.default_rng(3).random((30000, 2)) * 1.2
    floats = np.arange(500, dtype=np.float32)
    function = geomkit.MeshFunction2D(params, values, facets, floats)
    one = [function.evaluate(p, extrapolate) for p in points[:500]]
    many = function.evaluate(points, extrapolate, workers)
    for k, name in enumerate(geomkit.Evaluation._fields):
        assert np.array_equal(
            [answer[k] for answer in one], many[k][:500], equal_nan=k < 2
        ), name


def test_pickles_give_the_same_bits(mesh) -> None:
    function = geomkit.MeshFunction2D(*mesh)
    points = np.random.default_rng(4).random((1000, 2)) * 2.0
    for protocol in range(pickle.HIGHEST_PROTOCOL + 1):
        other = pickle.loads(pickle.dumps(function, protocol))
        answers = other(points, outside="extrapolate")
        assert answers.tobytes() == function(points, outside="extrapolate").tobytes()


@pytest.mark.parametrize(
    ("change", "error", "message"),
    [
        (
            {"params": np.zeros((5, 3))},
            ValueError,
            r"params: shape \(5, 3\), wanted \(n, 2\)",
        ),
        (
            {"values": np.zeros((4, 2))},
            ValueError,
            "values: length 4, wanted that of params, 3",
        ),
        (
            {"facets": [[0, 1, 2], [0, 1, 3]]},
            ValueError,
            "facets: facet 1 has vertex 3 of 3",
        ),
        ({"facets": [[0, 1, -1]]}, ValueError, "facets: facet 0 has vertex -1 of 3"),
        (
            {"facets": [[0.0, 1.0, 2.0]]},
            TypeError,
            "facets: dtype float64, wanted integers",
        ),
        ({"floats": [1.0]}, ValueError, "floats: length 1, wanted that of params, 3"),
        ({"params": "abc"}, ValueError, "params: shape"),
    ],
)
def test_what_is_wrong_is_named(change: dict, error: type, message: str) -> None:
    corners = [[0, 0], [1, 0], [0, 1]]
    good = {"params": corners, "values": corners, "facets": [[0, 1, 2]]}
    with pytest.raises(error, match=message):
        geomkit.MeshFunction2D(**{**good, **change})


def test_any_number_of_channels(mesh) -> None:
    params, _, facets = mesh
    values = np.random.default_rng(5).random((500, 5))
    points = np.random.default_rng(6).random((7, 9, 2)) * 1.3
    field = geomkit.Field2D(params, values, facets)
    for k in range(5):
        pair = values[:, [k, k]]
        alone = geomkit.MeshFunction2D(params, pair, facets)
        for outside in ("nan", "extrapolate"):
            assert np.array_equal(
                field(points, outside)[..., k],
                alone(points, outside)[..., 0],
                equal_nan=True,
            )
