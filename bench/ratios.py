#!/usr/bin/env python3
"""Print, from a Google Benchmark JSON file, the median time of geomKit over that of each peer.

A benchmark is named CASE/LIBRARY or CASE/LIBRARY/SIZE; names that differ in the library only are
compared. A ratio below 1 means that geomKit is the faster.
"""
import json
import sys
from typing import Dict, Iterator, Tuple

OURS = "geomKit"


def medians(path: str) -> Dict[str, float]:
    with open(path, encoding="utf-8") as file:
        runs = json.load(file)["benchmarks"]
    return {
        run["run_name"]: run["cpu_time"]
        for run in runs
        if run.get("aggregate_name") == "median"
    }


def rows(times: Dict[str, float]) -> Iterator[Tuple[str, str, float]]:
    """Yield (case, peer, ratio), where case is the name without its library."""
    for name, time in times.items():
        parts = name.split("/")
        if OURS not in parts:
            continue
        at = parts.index(OURS)
        for other, peer_time in times.items():
            theirs = other.split("/")
            same = len(theirs) == len(parts) and theirs[at] != OURS
            if (
                same
                and theirs[:at] == parts[:at]
                and theirs[at + 1 :] == parts[at + 1 :]
            ):
                yield "/".join(parts[:at] + parts[at + 1 :]), theirs[
                    at
                ], time / peer_time


def main() -> None:
    table = [row for path in sys.argv[1:] for row in rows(medians(path))]
    if not table:
        sys.exit(
            f"no benchmark named CASE/{OURS} with a peer in {' '.join(sys.argv[1:])}"
        )
    print(f"{'case':<40} {'peer':<24} {OURS} / peer")
    for case, peer, ratio in table:
        print(f"{case:<40} {peer:<24} {ratio:.2f}")


main()
