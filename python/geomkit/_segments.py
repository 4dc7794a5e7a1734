"""Segments in the plane: do they cross, what is left of them inside of something.

Points have two coordinates, or three, of which z is expected to be 0.
"""

from __future__ import annotations

from typing import NamedTuple

import numpy as np

from . import _core
from ._arrays import Bool, Float64, Numbers


class ClippedSegment(NamedTuple):
    """What is left of segments.

    Attributes
    ----------
    remains : (...) array
        Whether anything is left.
    a : (..., 2) or (..., 3) array
        The first end.
    b : (..., 2) or (..., 3) array
        The second end.
    """

    remains: Bool
    a: Float64
    b: Float64


def _is_flat(point: Numbers) -> bool:
    return np.shape(point)[-1:] != (3,)


def segs_intersect(
    a0: Numbers,
    a1: Numbers,
    b0: Numbers,
    b1: Numbers,
    tol: Numbers,
    inclusive: Numbers,
    workers: int = 1,
) -> Bool:
    """Return whether segments from b0 to b1 cross segments from a0 to a1.

    Parameters
    ----------
    a0, a1, b0, b1 : (..., 2) or (..., 3) arrays
        The ends, all of as many coordinates. The leading lengths of all arguments broadcast.
    tol : (...) array or number
        The distance that widens every test if ``inclusive``, and narrows it if not.
    inclusive : (...) array of bool, or bool
        Whether touching counts. It takes a positive ``tol``, as do overlaps on one line.
    workers : int
        How many threads share the work, all processors for -1. The answers are the same.

    Returns
    -------
    (...) array of bool
        A first segment without length has no sides: test its length before. NaN gives True unless a
        finite test rejects.

    Examples
    --------
    >>> import geomkit
    >>> ends = [[1, 1], [1, -1]]
    >>> geomkit.segs_intersect([0, 0], [2, 0], [1, 2], ends, tol=1e-9, inclusive=True)
    array([False,  True])
    """
    flat = _is_flat(a0)
    function = _core.segs_intersect_2d if flat else _core.segs_intersect_3d
    return function(a0, a1, b0, b1, tol, inclusive, workers)[0]


def seg_intersect_rect(
    a: Numbers, b: Numbers, rmin: Numbers, rmax: Numbers, workers: int = 1
) -> Bool:
    """Return whether segments from a to b meet rectangles, by exact comparisons.

    Parameters
    ----------
    a, b : (..., 2) or (..., 3) arrays
        The ends, all points of as many coordinates. The leading lengths of all arguments broadcast.
    rmin, rmax : arrays like these
        The lower and the upper corners of the rectangles.
    workers : int
        How many threads share the work, all processors for -1. The answers are the same.

    Returns
    -------
    (...) array of bool
        False for a segment that runs along an edge or touches it from outside; True for one that
        passes through a corner aslant. NaN gives False unless an end lies in the rectangle.

    Examples
    --------
    >>> import geomkit
    >>> geomkit.seg_intersect_rect([-1, 0.5], [[0.5, 0.5], [-1, 2]], [0, 0], [1, 1])
    array([ True, False])
    """
    flat = _is_flat(a)
    function = _core.seg_intersect_rect_2d if flat else _core.seg_intersect_rect_3d
    return function(a, b, rmin, rmax, workers)[0]


def seg_clip_half_plane(
    a: Numbers, b: Numbers, point: Numbers, normal: Numbers, workers: int = 1
) -> ClippedSegment:
    """Clip segments from a to b to the half-planes that normals point to.

    Parameters
    ----------
    a, b : (..., 2) or (..., 3) arrays
        The ends, all points of as many coordinates. The leading lengths of all arguments broadcast.
    point, normal : arrays like these
        A point of the border, and the direction to the side that is kept.
    workers : int
        How many threads share the work, all processors for -1. The answers are the same.

    Returns
    -------
    ClippedSegment
        ``remains``, ``a`` and ``b``: the ends as they were where nothing remains. A segment on the
        border is removed. An end that NaN has clipped is NaN.

    Examples
    --------
    >>> import geomkit
    >>> rest = geomkit.seg_clip_half_plane([-1, 1], [3, 1], point=[0, 0], normal=[1, 0])
    >>> rest.a, rest.b
    (array([0., 1.]), array([3., 1.]))
    """
    flat = _is_flat(a)
    function = _core.seg_clip_half_plane_2d if flat else _core.seg_clip_half_plane_3d
    return ClippedSegment._make(function(a, b, point, normal, workers))


def seg_clip_rect(
    a: Numbers, b: Numbers, rmin: Numbers, rmax: Numbers, workers: int = 1
) -> ClippedSegment:
    """Clip segments from a to b to rectangles, edge by edge: left, bottom, right, top.

    Parameters
    ----------
    a, b : (..., 2) or (..., 3) arrays
        The ends, all points of as many coordinates. The leading lengths of all arguments broadcast.
    rmin, rmax : arrays like these
        The lower and the upper corners of the rectangles.
    workers : int
        How many threads share the work, all processors for -1. The answers are the same.

    Returns
    -------
    ClippedSegment
        ``remains``, ``a`` and ``b``: where nothing remains, what the edges before left. A segment
        along an edge is removed. An end that NaN has clipped is NaN.

    Examples
    --------
    >>> import geomkit
    >>> geomkit.seg_clip_rect([-1, 0.5], [2, 0.5], [0, 0], [1, 1])
    ClippedSegment(remains=array(True), a=array([0. , 0.5]), b=array([1. , 0.5]))
    """
    flat = _is_flat(a)
    function = _core.seg_clip_rect_2d if flat else _core.seg_clip_rect_3d
    return ClippedSegment._make(function(a, b, rmin, rmax, workers))
