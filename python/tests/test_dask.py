"""The example that bakes a raster on a cluster: bits, traffic, memory, and workers that die."""

from __future__ import annotations

import os
import signal
import subprocess
import sys
import time
from collections import Counter
from functools import partial
from pathlib import Path
from typing import Any, Callable, Iterator

import numpy as np
import pytest

EXAMPLES = Path(__file__).parents[1] / "examples"
sys.path.insert(0, str(EXAMPLES))

distributed = pytest.importorskip("distributed")
import dask_bake  # noqa: E402

SIZE, TILE = 2048, 300


class Logged:
    """A function that logs the processes it comes to, and the tiles it is asked for."""

    def __init__(self, log: Path, fatal: tuple[int, int] | None = None) -> None:
        self.inner = partial(dask_bake.sample_function(), outside="extrapolate")
        self.log, self.fatal = log, fatal

    def _append(self, *words: object) -> None:
        with open(self.log, "a") as file:
            file.write(" ".join(map(str, words)) + "\n")

    def __setstate__(self, state: dict[str, Any]) -> None:
        self.__dict__.update(state)
        self._append("came", os.getpid())

    def __call__(self, points: np.ndarray) -> np.ndarray:
        tile = tuple((points[0, 0] * SIZE // TILE).astype(int))
        self._append("tile", *tile)
        if tile == self.fatal and not (flag := self.log.with_suffix(".died")).exists():
            flag.touch()
            time.sleep(1.0)  # the results of the tiles before arrive
            os.kill(os.getpid(), signal.SIGKILL)
        return self.inner(points)

    def logged(self, kind: str) -> Counter[str]:
        lines = [line.split(" ", 1) for line in self.log.read_text().splitlines()]
        return Counter(text for key, text in lines if key == kind)


def memory(field: str) -> int:
    lines = Path("/proc/self/status").read_text().splitlines()
    return next(1024 * int(line.split()[1]) for line in lines if field in line)


def forget_peak() -> int:
    Path("/proc/self/clear_refs").write_text("5")
    return memory("VmRSS")


@pytest.fixture(scope="module")
def client() -> Iterator[Any]:
    cluster = distributed.LocalCluster(
        n_workers=2, threads_per_worker=1, dashboard_address=None
    )
    with cluster, distributed.Client(cluster) as client:
        yield client


@pytest.fixture(scope="module")
def expected() -> np.ndarray:
    side = dask_bake.centers(0, SIZE, SIZE)
    points = np.stack(np.meshgrid(side, side), axis=-1)
    return dask_bake.sample_function()(points, outside="extrapolate")


def bake(client: Any, function: Callable[..., Any], path: Path) -> list[float]:
    return list(dask_bake.bake(client, function, path, SIZE, TILE))


def test_same_bits_and_one_function_a_worker(client, expected, tmp_path: Path) -> None:
    function = Logged(tmp_path / "log")
    progress = bake(client, function, tmp_path / "raster.npy")
    assert np.load(tmp_path / "raster.npy").tobytes() == expected.tobytes()
    assert len(progress) == 49
    assert progress == sorted(progress) and progress[-1] == 1.0
    workers = client.run(os.getpid).values()
    assert function.logged("came") == {str(pid): 1 for pid in workers}


def test_memory_is_that_of_a_tile(client, tmp_path: Path) -> None:
    try:
        before = {None: forget_peak(), **client.run(forget_peak)}
    except PermissionError:
        pytest.skip("this system does not let a process forget its peak")
    bake(
        client,
        partial(dask_bake.sample_function(20), outside="extrapolate"),
        tmp_path / "raster.npy",
    )
    after = {None: dask_bake.peak_memory(), **client.run(dask_bake.peak_memory)}
    tile = TILE**2 * dask_bake.TEXEL_BYTES + dask_bake.STRIP_BYTES
    others = 6 * 2**20
    for process, peak in after.items():
        assert peak - before[process] < tile + others, (process, peak - before[process])


def test_dead_worker_costs_a_retry_of_its_tile(
    client, expected, tmp_path: Path
) -> None:
    function = Logged(tmp_path / "log", fatal=(3, 2))
    bake(client, function, tmp_path / "raster.npy")
    assert np.load(tmp_path / "raster.npy").tobytes() == expected.tobytes()
    evaluated = function.logged("tile")
    assert len(evaluated) == 49
    assert {tile: n for tile, n in evaluated.items() if n > 1} == {"3 2": 2}


def test_command_takes_a_cluster(client, tmp_path: Path) -> None:
    path = tmp_path / "raster.npy"
    address = client.scheduler.address
    command = [sys.executable, str(EXAMPLES / "dask_bake.py"), str(path)]
    options = ["--scheduler", address, "--size", "70", "--tile", "32"]
    subprocess.run([*command, *options], check=True, capture_output=True)
    side = dask_bake.centers(0, 70, 70)
    points = np.stack(np.meshgrid(side, side), axis=-1)
    alone = dask_bake.sample_function()(points, outside="extrapolate")
    assert np.load(path).tobytes() == alone.tobytes()
