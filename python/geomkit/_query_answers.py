"""What the queries about lines, planes, triangles and spheres answer."""

from __future__ import annotations

from enum import IntEnum
from typing import NamedTuple

from ._arrays import Float64, Int32


class LineTriangleStatus(IntEnum):
    """What `line_triangle` found.

    Attributes
    ----------
    HIT
        The line passes through the triangle.
    MISS
        It passes beside it.
    IN_PLANE
        It lies in the triangle's plane.
    PARALLEL
        It is parallel to that plane and off it.
    DEGENERATE
        The triangle has no area.
    """

    HIT = 0
    MISS = 1
    IN_PLANE = 2
    PARALLEL = 3
    DEGENERATE = 4


class LineLineStatus(IntEnum):
    """What `line_line` found.

    Attributes
    ----------
    MEET
        The lines meet, closer than ``tol``.
    PARALLEL
        They are parallel, ``tol`` or more apart.
    COINCIDENT
        They are parallel, closer than ``tol``.
    SKEW
        They come no closer than ``tol``.
    """

    MEET = 0
    PARALLEL = 1
    COINCIDENT = 2
    SKEW = 3


class LinePlaneStatus(IntEnum):
    """What `line_plane` found.

    Attributes
    ----------
    HIT
        The line meets the plane in one point.
    PARALLEL
        It is parallel, ``tol`` or more away.
    IN_PLANE
        It is parallel, closer than ``tol``.
    """

    HIT = 0
    PARALLEL = 1
    IN_PLANE = 2


class PlanePlaneStatus(IntEnum):
    """What `plane_plane` found.

    Attributes
    ----------
    MEET
        The planes meet in a line.
    PARALLEL
        They are parallel, ``tol`` or more apart.
    COINCIDENT
        They are parallel, closer than ``tol``.
    """

    MEET = 0
    PARALLEL = 1
    COINCIDENT = 2


class LineTriangleInt(NamedTuple):
    """The answers of `line_triangle`.

    Attributes
    ----------
    status : (...) array
        Numbers of `LineTriangleStatus`.
    point : (..., 3) array
        Where the line meets the plane, for a hit and a miss close by; else 0.
    param : (...) array
        The distance of that point from the origin along the direction; else 0.
    """

    status: Int32
    point: Float64
    param: Float64


class LineLineInt(NamedTuple):
    """The answers of `line_line`.

    Attributes
    ----------
    status : (...) array
        Numbers of `LineLineStatus`.
    point : (..., 3) array
        On the first line, where they meet; the first origin if parallel; else 0.
    param1 : (...) array
        Parameter of the nearest point on the first line; 0 if parallel.
    param2 : (...) array
        The same on the second line; if parallel, of the foot of the first origin.
    """

    status: Int32
    point: Float64
    param1: Float64
    param2: Float64


class LinePlaneInt(NamedTuple):
    """The answers of `line_plane`.

    Attributes
    ----------
    status : (...) array
        Numbers of `LinePlaneStatus`.
    point : (..., 3) array
        The common point; the line's origin if parallel.
    param : (...) array
        The distance of that point from the origin along the direction; 0 if parallel.
    """

    status: Int32
    point: Float64
    param: Float64


class PlanePlaneInt(NamedTuple):
    """The answers of `plane_plane`.

    Attributes
    ----------
    status : (...) array
        Numbers of `PlanePlaneStatus`.
    point : (..., 3) array
        A point of the common line; 0 if parallel.
    direction : (..., 3) array
        Its unit direction; nearly 0 if parallel.
    """

    status: Int32
    point: Float64
    direction: Float64


class LineSphereInt(NamedTuple):
    """The answers of `line_sphere`.

    Attributes
    ----------
    num_hits : (...) array
        0, 1 for a tangent, or 2.
    point1 : (..., 3) array
        The first hit; 0 where there is none.
    point2 : (..., 3) array
        The second hit, that of a tangent again; 0 where there is none.
    param1 : (...) array
        The distance of the first hit along the direction, the smaller one.
    param2 : (...) array
        The distance of the second hit.
    """

    num_hits: Int32
    point1: Float64
    point2: Float64
    param1: Float64
    param2: Float64
