"""Bake a mesh function into a raster with a cluster of processes.

The raster is a dask array cut into square tiles. A task evaluates one tile and writes it into a
memory map of the .npy file, so a thread holds no more than `TEXEL_BYTES` for each texel of a tile
and `STRIP_BYTES` of the file, whatever the size of the raster. The function travels to each worker
once. A worker that dies loses the tiles in its hands, which are done again; the tiles that are in
the file stay.

    python dask_bake.py raster.npy                            two local processes
    python dask_bake.py raster.npy --scheduler tcp://h:8786   any cluster that shares the folder
"""

from __future__ import annotations

import argparse
import sys
import time
from functools import partial
from pathlib import Path
from typing import Any, Callable, Iterator

import dask.array
import geomkit
import numpy as np
from dask.distributed import (
    Client,
    LocalCluster,
    Worker,
    WorkerPlugin,
    as_completed,
    futures_of,
    get_worker,
)
from numpy.typing import NDArray

Array = NDArray[np.float64]
PointFunction = Callable[[Array], Array]

# A point, its two values and whether it has any take 33 bytes; allocators keep some more.
TEXEL_BYTES = 48
# A tile goes into the file in strips, because the system maps what lies between its rows too.
STRIP_BYTES = 4 * 2**20
# What a local worker may take in all: Python with its packages, the function, and its tiles.
WORKER_BYTES = 512 * 2**20


class Shared(WorkerPlugin):  # type: ignore[misc]  # Dask tells no types
    """A function that each worker gets when it starts or when this is registered."""

    name = "function to bake"

    def __init__(self, function: PointFunction) -> None:
        self.function = function

    def setup(self, worker: Worker) -> None:
        """Nothing is left to do: the worker keeps this by its name."""


def centers(first: int, last: int, size: int) -> Array:
    """Return the centers of texels along one side of the unit square."""
    return (np.arange(first, last) + 0.5) / size


def tile_values(size: int, block_info: Any = None) -> Array:
    """Return the values at the texels of one tile."""
    rows, columns, _ = block_info[None]["array-location"]
    points = np.empty((rows[1] - rows[0], columns[1] - columns[0], 2))
    points[..., 0] = centers(columns[0], columns[1], size)
    points[..., 1] = centers(rows[0], rows[1], size)[:, np.newaxis]
    values: Array = get_worker().plugins[Shared.name].function(points)
    return values


def write_tile(values: Array, path: str, block_info: Any = None) -> NDArray[np.int64]:
    """Write one tile into the file, and return the number of its texels as an array."""
    (first, last), columns, _ = block_info[0]["array-location"]
    step = max(1, STRIP_BYTES // (block_info[0]["shape"][1] * values.itemsize * 2))
    for row in range(first, last, step):
        strip = slice(row, min(row + step, last))
        file = np.load(path, mmap_mode="r+")
        file[strip, slice(*columns)] = values[strip.start - first : strip.stop - first]
    return np.full((1, 1, 1), values.shape[0] * values.shape[1])


def bake(
    client: Client, function: PointFunction, path: Path, size: int, tile: int
) -> Iterator[float]:
    """Write function's values into a .npy file of shape (size, size, 2); yield the part done."""
    create: Any = np.lib.format.open_memmap
    create(path, "w+", np.float64, (size, size, 2))
    client.register_worker_plugin(Shared(function))
    sides = dask.array.core.normalize_chunks(tile, (size, size))
    raster = dask.array.map_blocks(
        tile_values,
        size,
        chunks=(*sides, (2,)),
        dtype=np.float64,
        meta=np.empty((0,) * 3),
    )
    ones = tuple((1,) * len(side) for side in sides)
    written = raster.map_blocks(
        write_tile,
        str(path.resolve()),
        chunks=(*ones, (1,)),
        dtype=np.int64,
        meta=np.empty((0,) * 3, np.int64),
    )
    # Each result is let go as it comes. Nothing is computed again for the sake of a lost result.
    results = as_completed(futures_of(client.persist(written)), with_results=True)
    del written
    done = 0
    for _, texels in results:
        done += texels.item()
        yield done / size**2


def sample_function(side: int = 225) -> geomkit.MeshFunction2D:
    """Return waves over the middle of the unit square, which continue to its border."""
    u, v = np.meshgrid(*[np.linspace(0.1, 0.9, side)] * 2)
    params = np.stack([u.ravel(), v.ravel()], axis=-1)
    corner = (np.arange(side - 1)[:, np.newaxis] * side + np.arange(side - 1)).ravel()
    lower = np.stack([corner, corner + 1, corner + side], axis=-1)
    upper = np.stack([corner + 1, corner + side + 1, corner + side], axis=-1)
    values = np.stack([np.sin(9.0 * u) * v, np.cos(7.0 * v) + u], axis=-1)
    return geomkit.MeshFunction2D(
        params, values.reshape(-1, 2), np.concatenate([lower, upper])
    )


def peak_memory() -> int:
    """Return the most bytes that this process ever held in memory, or 0 where Linux is not."""
    status = Path("/proc/self/status")
    lines = status.read_text().splitlines() if status.exists() else []
    return sum(
        1024 * int(line.split()[1]) for line in lines if line.startswith("VmHWM")
    )


def main() -> None:
    """Bake the sample function as the command line says."""
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("path", type=Path, help="the .npy file to write")
    parser.add_argument(
        "--scheduler", help="address of a cluster; without one, two local processes"
    )
    parser.add_argument("--size", type=int, default=16384, help="texels on a side")
    parser.add_argument(
        "--tile", type=int, default=512, help="texels on a side of a tile"
    )
    arguments = parser.parse_args()

    function = partial(sample_function(), outside="extrapolate")
    begin = time.perf_counter()
    cluster = arguments.scheduler or LocalCluster(
        n_workers=2,
        threads_per_worker=1,
        memory_limit=WORKER_BYTES,
        dashboard_address=None,
    )
    with Client(cluster) as client:
        for part in bake(
            client, function, arguments.path, arguments.size, arguments.tile
        ):
            seconds = time.perf_counter() - begin
            print(
                f"\r{part:6.1%} in {seconds:.1f} s", end="", file=sys.stderr, flush=True
            )
        print(file=sys.stderr)
        peaks = {"this process": peak_memory(), **client.run(peak_memory)}
        for name, peak in peaks.items():
            print(f"{name}: at most {peak / 2**20:.0f} MiB")


if __name__ == "__main__":
    main()
