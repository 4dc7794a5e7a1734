"""Mesh functions beside SciPy's and matplotlib's interpolators and the library's own calls."""

from __future__ import annotations

import ctypes
import os
from functools import partial

import geomkit
import matplotlib.tri
import numpy as np
from scipy.interpolate import LinearNDInterpolator
from scipy.spatial import Delaunay
from timing import Call, repeated, timed

POINTS = 1_000_000
VERTICES = 50_000
SIDE = 100.0  # of the mesh: large beside the least triangle that answers


class Library:
    """The library's own calls, which time themselves."""

    def __init__(self, path: str, f: geomkit.MeshFunction2D) -> None:
        self.calls = ctypes.CDLL(path)
        self.calls.newFunction.restype = ctypes.c_void_p
        self.calls.secondsOfPoints.restype = ctypes.c_double
        params, values, facets = (
            ctypes.c_void_p(array.ctypes.data)
            for array in (f.params, f.values, f.facets)
        )
        vertices, count = (ctypes.c_size_t(len(a)) for a in (f.params, f.facets))
        self.function = ctypes.c_void_p(
            self.calls.newFunction(params, values, vertices, facets, count)
        )

    def seconds(
        self, points: np.ndarray, extrapolate: bool, results: np.ndarray | None = None
    ) -> float:
        taken: float = self.calls.secondsOfPoints(
            self.function,
            ctypes.c_void_p(points.ctypes.data),
            ctypes.c_size_t(len(points)),
            ctypes.c_bool(extrapolate),
            None if results is None else ctypes.c_void_p(results.ctypes.data),
        )
        return taken


class Matplotlib:
    """Two interpolators of one value each, over one triangulation and its finder."""

    def __init__(
        self, params: np.ndarray, values: np.ndarray, facets: np.ndarray
    ) -> None:
        mesh = matplotlib.tri.Triangulation(params[:, 0], params[:, 1], facets)
        self.parts = [matplotlib.tri.LinearTriInterpolator(mesh, z) for z in values.T]

    def __call__(self, points: np.ndarray) -> np.ndarray:
        answers = [part(points[:, 0], points[:, 1]) for part in self.parts]
        return np.stack([a.filled(np.nan) for a in answers], axis=-1)


def same(ours: np.ndarray, theirs: np.ndarray) -> None:
    """End the program where answers differ; a few points may lie on the border for one only."""
    apart = np.isfinite(ours) != np.isfinite(theirs)
    assert apart.mean() < 1e-4, f"{apart.sum()} answers are there for one only"
    assert np.nanmax(np.abs(ours - theirs)) <= 1e-9


def evaluation(
    f: geomkit.MeshFunction2D,
    scipy: Call,
    pyplot: Call,
    plain: Library,
    points: np.ndarray,
) -> None:
    side = (np.arange(1000) + 0.5) * SIDE / 1000
    raster = np.stack(np.meshgrid(side, side), axis=-1).reshape(-1, 2)
    for name, case in (("random", points), ("a raster", raster)):
        ours = partial(f, case)
        same(f(case[::10]), scipy(case[::10]))
        same(f(case[::10]), pyplot(case[::10]))
        timed(f"f(points), {name}", ours, {"SciPy": partial(scipy, case)}, 1)
        timed(f"f(points), {name}", ours, {"matplotlib": partial(pyplot, case)}, 3)
        call = partial(plain.seconds, case, False)
        timed(f"f(points), {name}", ours, {"the C++ array call": call}, 31)
    wide = points * 1.2 - 0.1 * SIDE
    answers = np.zeros_like(wide)
    plain.seconds(wide, True, answers)
    assert np.array_equal(answers, f(wide, outside="extrapolate"))
    ours = partial(f, wide, outside="extrapolate")
    call = partial(plain.seconds, wide, True)
    timed("..., a third outside, continued", ours, {"the C++ array call": call}, 31)


def rows(library: str) -> None:
    """Print the rows of the table."""
    draw = np.random.default_rng(1)
    params, values = SIDE * draw.random((VERTICES, 2)), draw.random((VERTICES, 2))
    triangles = Delaunay(params)
    facets = triangles.simplices
    points = SIDE * draw.random((POINTS, 2))
    f = geomkit.MeshFunction2D(params, values, facets)
    scipy = LinearNDInterpolator(triangles, values)
    pyplot = Matplotlib(params, values, facets)
    evaluation(f, scipy, pyplot, Library(library, f), points)

    build = partial(geomkit.MeshFunction2D, params, values, facets)
    peers: dict[str, Call] = {
        "SciPy, its triangulation too": partial(LinearNDInterpolator, params, values),
        "matplotlib": partial(Matplotlib, params, values, facets),
    }
    timed("building", build, peers, 5)
    for name, point in (
        ("an array", points[0].copy()),
        ("a list", [SIDE / 2, SIDE / 2]),
    ):
        one, their = (partial(repeated, partial(g, point)) for g in (f, scipy))
        timed(f"one point, {name}", one, {"SciPy": their})


def shared_rows(processors: set[int]) -> None:
    """Print the row of two workers, which may use several processors."""
    draw = np.random.default_rng(1)
    params = SIDE * draw.random((VERTICES, 2))
    f = geomkit.MeshFunction2D(params, params, Delaunay(params).simplices)
    points = SIDE * draw.random((POINTS, 2))
    os.sched_setaffinity(0, processors)
    two, one = (partial(f.evaluate, points, workers=n) for n in (2, 1))
    timed("f.evaluate, two workers", two, {"one worker": one}, 31)
