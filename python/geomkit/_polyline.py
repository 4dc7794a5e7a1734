"""The nearest points on polylines, and the quick test for being near to points."""

from __future__ import annotations

from typing import NamedTuple

import numpy as np

from . import _core
from ._arrays import Bool, Float64, Int32, Numbers


class PolylineProjection(NamedTuple):
    """The nearest points on a polyline.

    Attributes
    ----------
    segment : (...) array
        Number k of the segment from vertex k to k + 1; -1 where there is no segment.
    param : (...) array
        How far along the segment, from 0 to 1.
    point : (..., 3) array
        The nearest points.
    """

    segment: Int32
    param: Float64
    point: Float64


class PolylineProjector:
    """An open polyline in space, built once and asked for nearest points many times.

    A query takes about logarithmic time.

    Parameters
    ----------
    points : (n, 3) array
        The vertices. Some may be equal. One alone, or none, has no segment: the nearest point is
        that vertex, or the origin.

    Examples
    --------
    >>> import geomkit
    >>> path = geomkit.PolylineProjector([[0, 0, 0], [2, 0, 0], [2, 2, 0]])
    >>> path.nearest([3, 0.5, 0])
    PolylineProjection(segment=array(1, dtype=int32), param=array(0.25),
                       point=array([2. , 0.5, 0. ]))
    >>> path.arc_length
    array([0., 2., 4.])
    """

    __slots__ = ("_core",)

    def __init__(self, points: Numbers) -> None:
        self._core = _core.PolylineProjector(points)

    def nearest(self, queries: Numbers, workers: int = 1) -> PolylineProjection:
        """Return segments, parameters and points that are nearest to queries of shape (..., 3).

        Of fewer than 20 vertices, the first of equally near segments is taken. A query that is not
        finite is answered by any segment. ``workers`` threads share the queries, all processors for
        -1; the answers are the same.
        """
        return PolylineProjection._make(self._core.nearest(queries, workers))

    @property
    def points(self) -> Float64:
        """The vertices, (n, 3), for reading."""
        return self._core.points

    @property
    def arc_length(self) -> Float64:
        """The length of the polyline up to each vertex, (n,), for reading."""
        return self._core.arc_length

    def __reduce__(self) -> tuple[type, tuple[Float64]]:
        return (type(self), (self.points,))

    def __repr__(self) -> str:
        return f"PolylineProjector({len(self.points)} points)"


class ProximityTester:
    """A grid that tells by one look-up whether a query may be within a radius of some point.

    False is certain. True means that a point is less than two cells away along each axis; a large
    set with a small radius has cells much wider than the radius.

    Parameters
    ----------
    points : (n, 3) array
        The points. No point but the first may be NaN: it ends the marking of cells.
    radius : float
        With a radius that is not positive every answer is False, with an infinite one True.

    Examples
    --------
    >>> import geomkit
    >>> tester = geomkit.ProximityTester([[0, 0, 0], [10, 0, 0]], radius=1)
    >>> tester.test([[0.5, 0.5, 0], [5, 0, 0]])
    array([ True, False])
    """

    __slots__ = ("_core", "_points", "_radius")

    def __init__(self, points: Numbers, radius: float) -> None:
        self._core = _core.ProximityTester(points, radius)
        self._points = np.array(points, dtype=np.float64)
        self._points.flags.writeable = False
        self._radius = float(radius)

    def test(self, queries: Numbers, workers: int = 1) -> Bool:
        """Return whether queries of shape (..., 3) may be near; False for one that is not finite.

        ``workers`` threads share the queries, all processors for -1; the answers are the same.
        """
        return self._core.test(queries, workers)

    @property
    def points(self) -> Float64:
        """The points, (n, 3), for reading."""
        return self._points

    @property
    def radius(self) -> float:
        """The radius."""
        return self._radius

    @property
    def shape(self) -> tuple[int, int, int]:
        """The number of cells along each axis, a border of one cell on each side included."""
        return self._core.shape

    @property
    def cell(self) -> tuple[float, float, float]:
        """The edges of a cell."""
        return self._core.cell

    def __reduce__(self) -> tuple[type, tuple[Float64, float]]:
        return (type(self), (self._points, self._radius))

    def __repr__(self) -> str:
        cells = " x ".join(map(str, self.shape))
        return f"ProximityTester({len(self._points)} points, {cells} cells)"
