"""Drawing hooks: calls from threads, exceptions, and the end of the interpreter."""

from __future__ import annotations

import subprocess
import sys
import threading
from collections.abc import Iterator

import geomkit
import numpy as np
import pytest


@pytest.fixture(autouse=True)
def unregister() -> Iterator[None]:
    yield
    geomkit.register_drawing()


def test_hooks_get_what_is_drawn_until_they_are_replaced() -> None:
    seen: list[tuple] = []
    geomkit.register_drawing(
        point=lambda p, colour: seen.append((p.tolist(), colour)),
        vector=lambda o, v, *numbers: seen.append((o.tolist(), v.tolist(), *numbers)),
    )
    geomkit.draw_point(np.float32([1, 2, 3]), -5)
    geomkit.draw_vector([0, 0, 0], [1, 0, 0], colour=3, scale=2.5)
    geomkit.register_drawing(point=lambda p, colour: seen.append("other"))
    geomkit.draw_vector([0, 0, 0], [1, 0, 0])
    geomkit.draw_point([0, 0, 0])
    vector = ([0.0, 0.0, 0.0], [1.0, 0.0, 0.0], 3, 2.5)
    assert seen == [([1.0, 2.0, 3.0], -5), vector, "other"]


def test_exceptions_are_reported_and_end_nothing(
    monkeypatch: pytest.MonkeyPatch,
) -> None:
    reports: list = []
    monkeypatch.setattr(sys, "unraisablehook", reports.append)

    def refuse(position: object, colour: int) -> None:
        raise KeyboardInterrupt if colour else LookupError

    geomkit.register_drawing(point=refuse)
    geomkit.draw_point([0, 0, 0])
    assert [(r.exc_type, r.object) for r in reports] == [(LookupError, refuse)]
    with pytest.raises(KeyboardInterrupt):
        geomkit.draw_point([0, 0, 0], colour=1)
    assert len(reports) == 1


def test_hooks_may_unregister_and_draw_from_many_threads() -> None:
    seen: list[int] = []

    def once(position: np.ndarray, colour: int) -> None:
        geomkit.register_drawing(point=lambda p, c: seen.append(c))
        geomkit.draw_point(position, colour)

    geomkit.register_drawing(point=once)
    threads = [
        threading.Thread(
            target=lambda: [geomkit.draw_point([0, 0, 0], k) for k in range(500)]
        )
        for _ in range(4)
    ]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert sorted(seen) == sorted(4 * list(range(500)))


def test_the_interpreter_ends_while_threads_draw() -> None:
    program = """
import geomkit, threading, time
class Hook:
    def __call__(self, position, colour): pass
geomkit.register_drawing(point=Hook())
def draw():
    while True: geomkit.draw_point([0, 0, 0])
for _ in range(3): threading.Thread(target=draw, daemon=True).start()
time.sleep(0.05)
"""
    ended = subprocess.run(
        [sys.executable, "-c", program], capture_output=True, check=False
    )
    assert (ended.returncode, ended.stderr) == (0, b"")


@pytest.mark.parametrize(
    ("call", "error", "message"),
    [
        (
            lambda: geomkit.register_drawing(vector=3),
            TypeError,
            "vector: int, wanted a callable",
        ),
        (
            lambda: geomkit.draw_point([1, 2]),
            ValueError,
            r"point: shape \(2,\), wanted \(3,\)",
        ),
    ],
)
def test_what_is_wrong_is_named(call, error: type, message: str) -> None:
    with pytest.raises(error, match=message):
        call()
