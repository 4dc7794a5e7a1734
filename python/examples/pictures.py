"""Draw the pictures of docs/python.md from the package.

    python pictures.py FOLDER
"""

from __future__ import annotations

import sys
from pathlib import Path
from typing import Any, Callable

import geomkit
import matplotlib
import matplotlib.pyplot as plt
import numpy as np
from matplotlib.colors import LightSource, TwoSlopeNorm
from numpy.typing import NDArray
from scipy.interpolate import LinearNDInterpolator
from scipy.spatial import Delaunay

Array = NDArray[np.float64]


def plain(axes: Any, title: str) -> None:
    """Leave nothing but the title around a picture of equal scales."""
    axes.set_title(title, fontsize=11)
    axes.set_aspect("equal")
    axes.set_axis_off()


def continued_field() -> Any:
    """SciPy's interpolator and the mesh function, on the same points and triangles."""
    rings = [(0.0, 1), *((0.125 * k, 6 * k) for k in range(1, 9))]
    turns = [np.linspace(0, 2 * np.pi, n, endpoint=False) + n for _, n in rings]
    spread = [r * np.stack([np.cos(t), np.sin(t)]).T for (r, _), t in zip(rings, turns)]
    params = np.concatenate(spread)
    inner = np.linalg.norm(params, axis=1, keepdims=True) < 0.8
    params += inner * np.random.default_rng(3).uniform(-0.04, 0.04, params.shape)
    height = np.sin(3 * params[:, 0]) + np.cos(2.5 * params[:, 1] + params[:, 0])
    triangles = Delaunay(params)
    facets = triangles.simplices

    side = np.linspace(-1.4, 1.4, 500)
    points = np.stack(np.meshgrid(side, side), axis=-1)
    theirs = LinearNDInterpolator(triangles, height)(points)
    field = geomkit.Field2D(params, height[:, np.newaxis], facets)
    ours = field(points, outside="extrapolate")[..., 0]

    figure, both = plt.subplots(1, 2, figsize=(8, 4.2), layout="constrained")
    for axes, values, title in (
        (both[0], theirs, "SciPy: NaN beyond the border"),
        (both[1], ours, "geomkit: the field goes on"),
    ):
        levels = np.linspace(-4, 3, 29)
        axes.contourf(side, side, values, levels, cmap="RdYlBu_r", extend="both")
        axes.triplot(*params.T, facets, color="black", linewidth=0.3, alpha=0.6)
        plain(axes, title)
    return figure


def implicit_surface() -> Any:
    """Slices of a field that is 0 at points of a surface."""
    draw = np.random.default_rng(1)
    turn, swing = draw.uniform(0, 2 * np.pi, (2, 400))
    normals = np.stack(
        [np.cos(turn) * np.cos(swing), np.sin(turn) * np.cos(swing), np.sin(swing)], -1
    )
    ring = np.stack([np.cos(turn), np.sin(turn), 0 * turn], axis=-1)
    surface = ring + (0.35 + 0.1 * np.cos(3 * turn))[:, np.newaxis] * normals
    samples = np.concatenate([surface, surface - 0.15 * normals])
    f = geomkit.Implicit(samples, np.repeat([0.0, -0.15], len(surface)))

    side = np.linspace(-1.7, 1.7, 240)
    figure, both = plt.subplots(1, 2, figsize=(8, 4.2), layout="constrained")
    norm = TwoSlopeNorm(0.0, -0.3, 1.2)
    for axes, axis, title in ((both[0], 2, "z = 0"), (both[1], 1, "y = 0")):
        points = np.insert(
            np.stack(np.meshgrid(side, side), axis=-1), axis, 0.0, axis=-1
        )
        values = f(points)
        levels = np.linspace(-0.3, 1.2, 31)
        axes.contourf(side, side, values, levels, cmap="RdBu", norm=norm, extend="both")
        axes.contour(side, side, values, [0.0], colors="black", linewidths=2)
        near = np.delete(surface[np.abs(surface[:, axis]) < 0.06], axis, axis=1)
        axes.plot(*near.T, "o", color="white", markeredgecolor="black", markersize=4)
        plain(axes, f"a field through 800 samples, {title}")
    return figure


def bent_tube() -> Any:
    """A tube that two bones carry, and the weights of one of them."""
    along, turn = np.meshgrid(np.linspace(0, 2, 60), np.linspace(0, 2 * np.pi, 40))
    rest = np.stack([along, 0.25 * np.cos(turn), 0.25 * np.sin(turn)], axis=-1)
    second = np.clip(1.25 * (along - 0.6), 0, 1).ravel()
    second = second * second * (3 - 2 * second)
    weights = np.stack([1 - second, second], axis=-1)
    numbers = np.tile([0, 1], (len(weights), 1))
    bones = [[[0, 0, 0], [1, 0, 0]], [[1, 0, 0], [2, 0, 0]]]
    pose = np.array([[[0, 0, 0], [1, 0, 0]], [[1, 0, 0], [1.4, 0, 0.9]]])
    transforms = geomkit.BoneTransform(rest=bones, pose=pose)
    moved = geomkit.skin(rest.reshape(-1, 3), numbers, weights, transforms)

    figure = plt.figure(figsize=(8, 3.4), layout="constrained")
    for k, (shape, title) in enumerate(((rest, "at rest"), (moved, "posed"))):
        axes: Any = figure.add_subplot(1, 2, k + 1, projection="3d")
        x, y, z = np.moveaxis(shape.reshape(*rest.shape), -1, 0)
        colors = matplotlib.colormaps["coolwarm"](second.reshape(along.shape))
        light = LightSource(azdeg=-60, altdeg=50)
        axes.plot_surface(
            x,
            y,
            z,
            facecolors=colors,
            lightsource=light,
            rstride=1,
            cstride=1,
            antialiased=False,
        )
        axes.set(xlim=(0, 2), ylim=(-0.5, 0.5), zlim=(-0.4, 1.1))
        axes.set_box_aspect((2, 1, 1.5), zoom=1.25)
        axes.view_init(elev=18, azim=-80)
        axes.set_axis_off()
        axes.set_title(title, fontsize=11, y=0.95)
    return figure


def nearest_points() -> Any:
    """Queries, and where a polyline is nearest to them."""
    turn = np.linspace(0, 1, 60)
    line = np.stack([7 * turn, np.sin(9 * turn) * (0.3 + turn), 0 * turn], axis=-1)
    path = geomkit.PolylineProjector(line)
    queries = np.random.default_rng(5).uniform([-0.3, -1.7, 0], [7.3, 1.7, 0], (160, 3))
    segment, param, point = path.nearest(queries)
    steps = np.diff(path.arc_length)
    length = path.arc_length[segment] + param * steps[segment]

    figure, axes = plt.subplots(figsize=(8, 4), layout="constrained")
    ends = np.stack([queries, point], axis=1)[..., :2]
    for end in ends:
        axes.plot(*end.T, color="#718096", linewidth=0.7, zorder=1)
    axes.plot(*line[:, :2].T, color="black", linewidth=2.5, zorder=2)
    axes.scatter(*queries[:, :2].T, c=length, cmap="viridis", s=22, zorder=3)
    axes.plot(
        *point[:, :2].T, "o", color="white", markeredgecolor="black", markersize=3
    )
    plain(axes, "nearest points; the colour is the length along the line")
    return figure


PICTURES: dict[str, Callable[[], Any]] = {
    "python-continued": continued_field,
    "python-implicit": implicit_surface,
    "python-tube": bent_tube,
    "python-nearest": nearest_points,
}


def main() -> None:
    """Draw all pictures into the folder that is named."""
    matplotlib.use("Agg")
    for name, draw in PICTURES.items():
        path = Path(sys.argv[1]) / f"{name}.png"
        draw().savefig(
            path,
            dpi=90,
            bbox_inches="tight",
            pad_inches=0.1,
            metadata={"Software": None},
        )
        plt.close("all")
        print(path, path.stat().st_size // 1000, "kB")


if __name__ == "__main__":
    main()
