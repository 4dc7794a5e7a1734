"""Boxes along the axes."""

from __future__ import annotations

from typing import NamedTuple

import numpy as np

from . import _core
from ._arrays import Bool, Float64, Numbers


class BoxBounds(NamedTuple):
    """The extreme corners of boxes along a direction.

    Attributes
    ----------
    low : (..., 3) array
        The corner that is least along the direction.
    high : (..., 3) array
        The corner that is greatest.
    """

    low: Float64
    high: Float64


class Bbox:
    """A box along the axes, or an array of boxes, which may be empty.

    A box is valid when no lower coordinate is more than 1e-13 above the upper one. Values do not
    change: what widens a box answers another one. Points and other boxes broadcast.

    Parameters
    ----------
    min_pt, max_pt : (..., 3) arrays, optional
        The corners, as they are: a box with corners out of order is invalid. Without them, the
        empty box, which is invalid too.

    Examples
    --------
    >>> import geomkit
    >>> box = geomkit.Bbox.of_points([[0, 2, 0], [3, 0, 1], [1, 1, 1]])
    >>> box
    Bbox([0.0, 0.0, 0.0], [3.0, 2.0, 1.0])
    >>> box.filter([[1, 1, 1], [1, 1, 2]])
    array([ True, False])
    >>> (box + geomkit.Bbox([5, 0, 0], [6, 1, 1])).volume
    array(12.)
    >>> (box + geomkit.Bbox()).is_valid
    array(False)
    """

    __slots__ = ("_corners",)
    _corners: Float64
    __hash__ = None  # type: ignore[assignment]

    def __init__(
        self, min_pt: Numbers | None = None, max_pt: Numbers | None = None
    ) -> None:
        if min_pt is None and max_pt is None:
            self._corners = _core.empty_box()
        elif min_pt is None or max_pt is None:
            missing = "min_pt" if min_pt is None else "max_pt"
            raise TypeError(f"{missing}: None, wanted both corners or neither")
        else:
            (self._corners,) = _core.box_of_corners(min_pt, max_pt, 1)

    @classmethod
    def _of(cls, corners: tuple[Float64]) -> Bbox:
        box = cls.__new__(cls)
        (box._corners,) = corners
        return box

    @classmethod
    def of_points(cls, points: Numbers, workers: int = 1) -> Bbox:
        """Return the boxes of lists of points, of shape (..., n, 3).

        No points have the valid box at the origin. A NaN is passed over, but for the first point,
        where it makes the box invalid.
        """
        return cls._of(_core.boxes_of_points(points, workers))

    @property
    def min_pt(self) -> Float64:
        """The lower corners, (..., 3)."""
        return self._view(0)

    @property
    def max_pt(self) -> Float64:
        """The upper corners, (..., 3)."""
        return self._view(1)

    def _view(self, corner: int) -> Float64:
        view = self._corners[..., corner, :]
        view.flags.writeable = False
        return view

    @property
    def is_valid(self) -> Bool:
        """Whether the corners are in order, (...)."""
        return _core.box_is_valid(self._corners, 1)[0]

    @property
    def center(self) -> Float64:
        """The points midway between the corners, (..., 3), also of invalid boxes."""
        return _core.box_center(self._corners, 1)[0]

    @property
    def size(self) -> Float64:
        """The lengths of the edges, (..., 3): some are negative where a box is invalid."""
        return _core.box_size(self._corners, 1)[0]

    @property
    def volume(self) -> Float64:
        """The products of the edges, (...); -2 where a box is invalid."""
        return _core.box_volume(self._corners, 1)[0]

    def filter(self, points: Numbers, workers: int = 1) -> Bool:
        """Return whether boxes hold points of shape (..., 3), faces included, without tolerance."""
        return _core.box_filter(self._corners, points, workers)[0]

    def updated(self, points: Numbers, workers: int = 1) -> Bbox:
        """Return boxes that hold one more point each; an invalid one becomes that of the point."""
        return self._of(_core.box_update(self._corners, points, workers))

    def __add__(self, other: Bbox) -> Bbox:
        """Return the boxes around two; the empty box where one is invalid."""
        if not isinstance(other, Bbox):
            return NotImplemented
        return self._of(_core.box_add(self._corners, other._corners, 1))

    def isec(self, other: Bbox, workers: int = 1) -> Bbox:
        """Return what boxes share with others.

        It is invalid where they are more than 1e-13 apart, empty where the other one is invalid,
        and an invalid box stays as it is.
        """
        return self._of(_core.box_isec(self._corners, other._corners, workers))

    def bounds_in_dir(self, direction: Numbers, workers: int = 1) -> BoxBounds:
        """Return the corners with the least and the greatest product with directions (..., 3).

        A corner must be better by more than 1e-13 to replace the lower or the upper one.
        """
        answers = _core.box_bounds_in_dir(self._corners, direction, workers)
        return BoxBounds._make(answers)

    def __eq__(self, other: object) -> bool:
        """Return whether all coordinates are equal, without tolerance; NaN equals nothing."""
        if not isinstance(other, Bbox):
            return NotImplemented
        return np.array_equal(self._corners, other._corners)

    def __reduce__(self) -> tuple[type, tuple[Float64, Float64]]:
        return (type(self), (self.min_pt, self.max_pt))

    def __repr__(self) -> str:
        if self._corners.ndim > 2:
            return f"Bbox(shape {self._corners.shape[:-2]})"
        return f"Bbox({self.min_pt.tolist()}, {self.max_pt.tolist()})"
