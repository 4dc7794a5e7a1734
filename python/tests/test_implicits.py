"""Implicit surfaces, beside SciPy's interpolator with the cubic kernel."""

from __future__ import annotations

import copy
import os
import pickle
import signal
import threading
import time

import geomkit
import numpy as np
import pytest
from scipy.interpolate import RBFInterpolator

RANDOM = np.random.default_rng(21)
SAMPLES = RANDOM.uniform(-1, 1, (200, 3))
VALUES = np.linalg.norm(SAMPLES, axis=-1) - 0.7
FIELD = geomkit.Implicit(SAMPLES, VALUES)
ELLIPSOID = geomkit.ImplEllipsoid(SAMPLES * [5, 2, 1])
POINTS = RANDOM.uniform(-2, 2, (3000, 3))


def test_same_as_scipy() -> None:
    theirs = RBFInterpolator(SAMPLES, VALUES, kernel="cubic", degree=1)
    assert np.allclose(FIELD(POINTS), theirs(POINTS), rtol=0, atol=1e-8)
    assert FIELD.max_residual() < 1e-10 and not FIELD.met_zero_pivot
    steps = 1e-4 * np.eye(3)
    slopes = (FIELD(POINTS[:, None] + steps) - FIELD(POINTS[:, None] - steps)) / 2e-4
    assert np.allclose(FIELD.gradient(POINTS), slopes, rtol=0, atol=1e-6)
    distances = np.linalg.norm(POINTS[0] - FIELD.centers, axis=-1)
    by_hand = FIELD.offset + FIELD.linear @ POINTS[0] + FIELD.weights @ distances**3
    assert abs(FIELD(POINTS[0]) - by_hand) < 1e-10


def test_ellipsoids_have_the_axes_of_the_moments() -> None:
    points = RANDOM.normal(size=(500, 3)) @ RANDOM.normal(size=(3, 3)) + [1, 2, 3]
    center = points.mean(axis=0)
    for ellipsoid in (
        geomkit.ImplEllipsoid(points),
        geomkit.ImplEllipsoid(points, center),
    ):
        assert np.allclose(ellipsoid.center, center, rtol=0, atol=1e-12)
        moments = np.linalg.inv((points - center).T @ (points - center) / 500)
        ratio = ellipsoid.matrix / moments
        assert np.allclose(ratio, ratio[0, 0], rtol=1e-6, atol=0)
        assert abs(ellipsoid(points).max() - 1) < 1e-12
    # A point on an axis of the thicker one lies farther out by the distance.
    lengths, axes = np.linalg.eigh(ellipsoid.matrix)
    tips = center + (lengths**-0.5 + 0.25)[:, None] * axes.T
    assert np.allclose(ellipsoid.thicken(0.25)(tips), 1, rtol=0, atol=1e-9)


@pytest.mark.parametrize("function", [FIELD, FIELD.gradient, ELLIPSOID])
def test_arrays_and_workers_do_not_change_a_bit(function) -> None:
    one = function(POINTS)
    assert np.array_equal(one[:100], [function(p) for p in POINTS[:100]])
    for workers in (2, 3, -1):
        assert (
            function(POINTS.reshape(3, 1000, 3), workers=workers).tobytes()
            == one.tobytes()
        )


@pytest.mark.parametrize("thing", [FIELD, ELLIPSOID])
def test_copies_have_the_same_bits(thing) -> None:
    pickles = [pickle.dumps(thing, p) for p in range(pickle.HIGHEST_PROTOCOL + 1)]
    for other in [*map(pickle.loads, pickles), copy.copy(thing), copy.deepcopy(thing)]:
        assert other(POINTS).tobytes() == thing(POINTS).tobytes()
        assert repr(other) == repr(thing)
    assert ELLIPSOID == copy.deepcopy(ELLIPSOID) != ELLIPSOID.thicken(1.0)
    residuals = {FIELD.max_residual(), copy.deepcopy(FIELD).max_residual(workers=2)}
    assert len(residuals) == 1


def test_ill_posed_samples_are_told() -> None:
    plane = SAMPLES * [1, 1, 0]
    twice = np.concatenate([SAMPLES[:20], SAMPLES[:1]])
    assert geomkit.Implicit(plane, VALUES).met_zero_pivot
    repeated = geomkit.Implicit(twice, np.arange(21.0))
    assert repeated.met_zero_pivot or not repeated.max_residual() < 1e-3
    assert np.isnan(geomkit.Implicit(SAMPLES, VALUES * np.nan).max_residual())
    nothing = geomkit.Implicit(np.zeros((0, 3)), [])
    assert not nothing(POINTS).any() and nothing.max_residual() == 0.0


def test_progress_rises_to_one() -> None:
    shares: list[float] = []
    told = geomkit.Implicit(RANDOM.normal(size=(900, 3)), np.ones(900), shares.append)
    assert shares == sorted(shares) and shares[-1] == 1.0
    assert abs(told([0, 0, 0]) - 1) < 1e-6

    def refuse(share: float) -> None:
        raise LookupError(share)

    with pytest.raises(LookupError):
        geomkit.Implicit(SAMPLES, VALUES, progress=refuse)


def interrupted(call) -> float:
    """How long a call went on after the user pressed Ctrl-C."""
    pressed = []

    def press() -> None:
        pressed.append(time.monotonic())
        os.kill(os.getpid(), signal.SIGINT)

    timer = threading.Timer(0.2, press)
    timer.start()
    with pytest.raises(KeyboardInterrupt):
        call()
    return time.monotonic() - pressed[0]


@pytest.mark.parametrize(
    "call",
    [
        lambda: FIELD.gradient(np.zeros((30_000_000, 3))),
        lambda: FIELD(np.zeros((30_000_000, 3)), workers=2),
        lambda: geomkit.Implicit(RANDOM.normal(size=(5000, 3)), np.ones(5000)),
    ],
)
def test_interrupts_end_long_calls(call) -> None:
    # The best of some, for machines that are busy with other things.
    assert min(interrupted(call) for _ in range(3)) < 0.2


@pytest.mark.parametrize(
    ("call", "error", "message"),
    [
        (
            lambda: geomkit.Implicit(SAMPLES[:, :2], VALUES),
            ValueError,
            r"points: shape \(200, 2\)",
        ),
        (
            lambda: geomkit.Implicit(SAMPLES, [1.0]),
            ValueError,
            "values: length 1, wanted that of",
        ),
        (
            lambda: geomkit.Implicit(SAMPLES, VALUES, progress=7),
            TypeError,
            "progress: not callable",
        ),
        (
            lambda: FIELD([0, 0]),
            ValueError,
            r"points: shape \(2,\), wanted \(\.\.\., 3\)",
        ),
        (lambda: FIELD(POINTS, workers=-2), ValueError, "workers: -2"),
        (
            lambda: geomkit.ImplEllipsoid(SAMPLES, [1, 2]),
            ValueError,
            r"center: shape \(2,\)",
        ),
    ],
)
def test_what_is_wrong_is_named(call, error: type, message: str) -> None:
    with pytest.raises(error, match=message):
        call()
