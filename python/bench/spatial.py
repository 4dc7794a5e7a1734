"""Polylines beside shapely, and fields through samples beside SciPy's radial basis functions."""

from __future__ import annotations

import ctypes
from functools import partial
from typing import Any

import geomkit
import numpy as np
from scipy.interpolate import RBFInterpolator
from shapely.geometry import LineString, Point
from timing import repeated, text, timed

POINTS = 10_000
SAMPLES = 1000
MANY = 1_000_000


def by_shapely(line: LineString, points: list[Point]) -> list[Point]:
    """Return the nearest points, for each of which shapely has a call."""
    return [line.interpolate(line.project(point)) for point in points]


def polylines() -> None:
    """Print the rows of polylines."""
    draw = np.random.default_rng(1)
    queries = draw.random((POINTS, 3)) * [1, 1, 0]
    points = [Point(x, y) for x, y, _ in queries]
    for vertices in (100, 1000):
        turn = np.linspace(0, 20, vertices)
        radius = turn / 40
        vertex = np.stack(
            [0.5 + radius * np.cos(turn), 0.5 + radius * np.sin(turn), 0 * turn], -1
        )
        ours, line = geomkit.PolylineProjector(vertex), LineString(vertex[:, :2])
        nearest = ours.nearest(queries).point[:, :2] - queries[:, :2]
        theirs = np.array([p.coords[0] for p in by_shapely(line, points)])
        theirs -= queries[:, :2]
        assert np.allclose(
            np.hypot(*nearest.T), np.hypot(*theirs.T), rtol=0, atol=1e-12
        )
        timed(
            f"nearest, {POINTS} points, {vertices} vertices",
            partial(ours.nearest, queries),
            {"shapely": partial(by_shapely, line, points)},
            5,
        )


def seconds(call: Any, *arguments: np.ndarray | int | None) -> float:
    """Return what a call of the library says that it took."""
    call.restype = ctypes.c_double
    taken: float = call(
        *(
            ctypes.c_void_p(a.ctypes.data)
            if isinstance(a, np.ndarray)
            else ctypes.c_size_t(a)
            if a is not None
            else None
            for a in arguments
        )
    )
    return taken


def library_calls(library: str) -> None:
    """Print the rows of the library's own calls."""
    calls = ctypes.CDLL(library)
    draw = np.random.default_rng(1)
    points = draw.standard_normal((MANY, 3))

    line = np.cumsum(draw.standard_normal((1000, 3)), axis=0) / 30
    projector, answers = geomkit.PolylineProjector(line), np.empty((MANY, 3))
    nearest = partial(seconds, calls.secondsOfNearest, line, len(line), points, MANY)
    nearest(answers)
    assert np.array_equal(answers, projector.nearest(points).point)
    timed(
        f"nearest, {MANY} points, 1000 vertices",
        partial(projector.nearest, points),
        {"a C++ loop": partial(nearest, None)},
    )

    samples = draw.standard_normal((50, 3))
    values = np.linalg.norm(samples, axis=1) - 1
    field, answers = geomkit.Implicit(samples, values), np.empty(MANY)
    of_field = partial(seconds, calls.secondsOfField, samples, values, 50, points, MANY)
    of_field(answers)
    assert np.array_equal(answers, field(points))
    timed(
        f"field, {MANY} points, 50 samples",
        partial(field, points),
        {"the C++ array call": partial(of_field, None)},
    )
    for name, call in (
        ("nearest", projector.nearest),
        ("field", field),
        ("gradient", field.gradient),
    ):
        one = partial(repeated, partial(call, points[0].copy()))
        print(f"| {name}, one point | {text(one())} | | | |")


def implicits() -> None:
    """Print the rows of fields."""
    draw = np.random.default_rng(1)
    samples = draw.standard_normal((SAMPLES, 3))
    values = np.linalg.norm(samples, axis=1) - 1
    points = draw.standard_normal((POINTS, 3))
    ours = geomkit.Implicit(samples, values)
    theirs = RBFInterpolator(samples, values, kernel="cubic", degree=1)
    steps = 1e-5 * np.concatenate([np.eye(3), -np.eye(3)])

    def slopes() -> np.ndarray:
        around = (points[:, np.newaxis] + steps).reshape(-1, 3)
        both = theirs(around).reshape(-1, 2, 3)
        return (both[:, 0] - both[:, 1]) / 2e-5

    assert np.abs(ours(points) - theirs(points)).max() < 1e-8
    assert np.abs(ours.gradient(points) - slopes()).max() < 1e-4
    size = f"{POINTS} points, {SAMPLES} samples"
    timed(
        f"field, {size}", partial(ours, points), {"SciPy": partial(theirs, points)}, 5
    )
    gradient = partial(ours.gradient, points)
    timed(f"gradient, {size}", gradient, {"SciPy, differences": slopes}, 3)
    timed(
        f"fit of {SAMPLES} samples",
        partial(geomkit.Implicit, samples, values),
        {"SciPy": partial(RBFInterpolator, samples, values, kernel="cubic", degree=1)},
        3,
    )
