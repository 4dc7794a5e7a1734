"""Times of competitors side by side, and the table of them."""

from __future__ import annotations

import random
import statistics
import time
from typing import Any, Callable

Call = Callable[[], Any]


def seconds(call: Call) -> float:
    """Return what one call takes. What it returns may be a time that it measured itself."""
    begin = time.perf_counter()
    answer = call()
    taken = time.perf_counter() - begin
    return answer if isinstance(answer, float) else taken


def medians(calls: dict[str, Call], repetitions: int) -> dict[str, float]:
    """Return the median time of each call; they take turns, in an order drawn each time."""
    times: dict[str, list[float]] = {name: [] for name in calls}
    for _ in range(repetitions):
        for name in random.sample(sorted(calls), len(calls)):
            times[name].append(seconds(calls[name]))
    return {name: statistics.median(taken) for name, taken in times.items()}


def timed(name: str, ours: Call, peers: dict[str, Call], repetitions: int = 9) -> None:
    """Print a row for each peer, with our time over its time."""
    times = medians({"": ours, **peers}, repetitions)
    for peer in peers:
        mine, theirs = times[""], times[peer]
        print(
            f"| {name} | {text(mine)} | {peer} | {text(theirs)} | {mine / theirs:.2g} |"
        )


def text(value: float) -> str:
    """Return a time as people write it."""
    for unit, size in (("s", 1.0), ("ms", 1e-3), ("us", 1e-6)):
        if value >= size:
            return f"{value / size:.3g} {unit}"
    return f"{value / 1e-9:.3g} ns"


def repeated(call: Call) -> float:
    """Return the mean time of many calls."""
    begin = time.perf_counter()
    for _ in range(10000):
        call()
    return (time.perf_counter() - begin) / 10000
