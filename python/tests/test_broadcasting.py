"""What holds for every function of arrays: shapes, types and layouts, threads, errors."""

from __future__ import annotations

import pickle
from collections.abc import Callable

import geomkit
import numpy as np
import pytest
from hypothesis import given, settings
from hypothesis import strategies as st
from hypothesis.extra.numpy import mutually_broadcastable_shapes

VERTICES = np.random.default_rng(1).normal(size=(50, 3))
PATH = geomkit.PolylineProjector(VERTICES)
NEAR = geomkit.ProximityTester(VERTICES, radius=0.3)
BOX = geomkit.Bbox.of_points(VERTICES[:3])
LINE = {"origin": (3,), "direction": (3,)}
POINTS = {"a": (2,), "b": (2,)}

# The functions, and the last lengths of each argument. Truth values are called "inclusive".
FUNCTIONS: dict[str, tuple[Callable, dict[str, tuple]]] = {
    "line_triangle": (
        geomkit.line_triangle,
        {**LINE, "triangles": (3, 3), "tol": ()},
    ),
    "line_line": (
        geomkit.line_line,
        {k + n: (3,) for n in "12" for k in LINE} | {"tol": ()},
    ),
    "line_plane": (
        geomkit.line_plane,
        {**LINE, "point": (3,), "normal": (3,), "tol": ()},
    ),
    "plane_plane": (
        geomkit.plane_plane,
        {k + n: (3,) for n in "12" for k in ("point", "normal")} | {"tol": ()},
    ),
    "line_sphere": (
        geomkit.line_sphere,
        {**LINE, "center": (3,), "radius": (), "tol": ()},
    ),
    "triangle_weights": (
        geomkit.triangle_weights,
        {"points": (3,), "triangles": (3, 3)},
    ),
    "segs_intersect": (
        geomkit.segs_intersect,
        {k: (2,) for k in ("a0", "a1", "b0", "b1")} | {"tol": (), "inclusive": ()},
    ),
    "seg_intersect_rect": (
        geomkit.seg_intersect_rect,
        {**POINTS, "rmin": (2,), "rmax": (2,)},
    ),
    "seg_clip_half_plane": (
        geomkit.seg_clip_half_plane,
        {k: (3,) for k in ("a", "b", "point", "normal")},
    ),
    "seg_clip_rect": (
        geomkit.seg_clip_rect,
        {**POINTS, "rmin": (2,), "rmax": (2,)},
    ),
    "nearest": (PATH.nearest, {"queries": (3,)}),
    "test": (NEAR.test, {"queries": (3,)}),
    "box filter": (BOX.filter, {"points": (3,)}),
    "box bounds": (BOX.bounds_in_dir, {"direction": (3,)}),
    "box updated": (lambda **kw: BOX.updated(**kw).max_pt, {"points": (3,)}),
    "box of points": (
        lambda **kw: geomkit.Bbox.of_points(**kw).min_pt,
        {"points": (4, 3)},
    ),
    "best_fit_plane": (geomkit.best_fit_plane, {"points": (5, 3)}),
    "best_fit_line": (geomkit.best_fit_line, {"points": (5, 3)}),
    "eigensystem": (geomkit.eigensystem, {"matrices": (3, 3)}),
    "solve_quadratic": (geomkit.solve_quadratic, {"coefficients": (3,)}),
    "solve_cubic": (geomkit.solve_cubic, {"coefficients": (4,)}),
}
every_function = pytest.mark.parametrize("name", FUNCTIONS)


def _unaligned(array: np.ndarray) -> np.ndarray:
    return np.frombuffer(b"-" + array.tobytes(), array.dtype, offset=1).reshape(
        array.shape
    )


LAYOUTS: dict[str, Callable[[np.ndarray], object]] = {
    "contiguous": lambda a: a,
    "Fortran": lambda a: np.array(a, order="F"),
    "every second": lambda a: np.repeat(a, 2, axis=-1)[..., ::2] if a.ndim else a,
    "backwards": lambda a: np.flip(np.flip(a).copy()),
    "other byte order": lambda a: a.astype(a.dtype.newbyteorder()),
    "unaligned": _unaligned,
    "list": lambda a: a.tolist() if a.size else a,
}
HOSTILE = [0.0, -0.0, 1.0, np.nan, np.inf, -np.inf, 1e200, 1e-200, 5e-324]


def _random(
    random, argument: str, lengths: tuple, leading: tuple, hostile: float
) -> np.ndarray:
    if argument == "inclusive":
        return random.random(leading) < 0.5
    shape = leading + lengths
    numbers = random.normal(size=shape)
    bad = random.random(shape) < hostile
    return np.where(bad, random.choice(HOSTILE, shape), numbers)


def _arrays(answer: object) -> list[np.ndarray]:
    return list(answer) if isinstance(answer, tuple) else [answer]


def _assert_same(got: np.ndarray, wanted: np.ndarray) -> None:
    assert (got.dtype, got.shape) == (wanted.dtype, wanted.shape)
    numbers = got.dtype.kind == "f"
    assert np.array_equal(got, wanted, equal_nan=numbers)
    if numbers:
        there = ~np.isnan(got)
        assert np.array_equal(np.signbit(got[there]), np.signbit(wanted[there]))


@every_function
@settings(max_examples=60, deadline=None, derandomize=True)
@given(data=st.data())
def test_arrays_answer_like_single_calls(name: str, data) -> None:
    function, lengths = FUNCTIONS[name]
    shapes = data.draw(
        mutually_broadcastable_shapes(
            num_shapes=len(lengths), min_side=0, max_side=3, max_dims=3
        )
    )
    random = np.random.default_rng(data.draw(st.integers(0, 2**32)))
    hostile = data.draw(st.sampled_from([0.0, 0.1, 0.5]))
    single = data.draw(st.booleans())
    arrays, given_ = {}, {}
    for (argument, last), leading in zip(lengths.items(), shapes.input_shapes):
        array = _random(random, argument, last, leading, hostile)
        if single and argument != "inclusive":
            array = np.clip(array, -1e30, 1e30).astype(np.float32)
        arrays[argument] = array
        layout = data.draw(st.sampled_from(list(LAYOUTS)))
        given_[argument] = LAYOUTS[layout](array)
    answers = _arrays(function(**given_))

    leading = shapes.result_shape
    wide = {k: np.broadcast_to(arrays[k], leading + n) for k, n in lengths.items()}
    for item in np.ndindex(leading):
        singles = _arrays(function(**{k: a[item] for k, a in wide.items()}))
        for got, wanted in zip(answers, singles):
            _assert_same(got[item][()], wanted[()])
    assert all(answer.shape[: len(leading)] == leading for answer in answers)


@every_function
def test_workers_do_not_change_a_bit(name: str) -> None:
    function, lengths = FUNCTIONS[name]
    random = np.random.default_rng(3)
    arrays = {k: _random(random, k, n, (9, 1111), 0.05) for k, n in lengths.items()}
    one = _arrays(function(**arrays))
    for workers in (2, 5, -1):
        many = _arrays(function(**arrays, workers=workers))
        assert [a.tobytes() for a in many] == [a.tobytes() for a in one], workers
    with pytest.raises(ValueError, match="workers: 0, wanted"):
        function(**arrays, workers=0)


@every_function
def test_bad_arguments_are_named(name: str) -> None:
    function, lengths = FUNCTIONS[name]
    random = np.random.default_rng(4)
    good = {k: _random(random, k, n, (3,), 0.0) for k, n in lengths.items()}
    for argument, last in lengths.items():
        with pytest.raises(TypeError, match=f"^{argument}: dtype complex128, wanted"):
            function(**{**good, argument: good[argument] + 1j})
        if last != ():
            bad = np.zeros((2, 7))
            with pytest.raises(ValueError, match=rf"^{argument}: shape \(2, 7\), want"):
                function(**{**good, argument: bad})
        if argument != next(iter(lengths)):
            bad = _random(random, argument, last, (2,), 0.0)
            with pytest.raises(ValueError, match=rf"^{argument}: .*\(2,\), wanted .*3"):
                function(**{**good, argument: bad})


@pytest.mark.parametrize("protocol", range(pickle.HIGHEST_PROTOCOL + 1))
def test_pickles_answer_alike(protocol: int) -> None:
    path, near, box = pickle.loads(pickle.dumps((PATH, NEAR, BOX), protocol))
    queries = np.random.default_rng(5).normal(size=(1000, 3))
    for got, wanted in zip(path.nearest(queries), PATH.nearest(queries)):
        assert got.tobytes() == wanted.tobytes()
    assert np.array_equal(path.arc_length, PATH.arc_length)
    assert np.array_equal(near.test(queries), NEAR.test(queries))
    assert box == BOX
