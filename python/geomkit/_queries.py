"""Where lines, planes, triangles and spheres meet."""

from __future__ import annotations

from . import _core
from ._arrays import Float64, Numbers
from ._query_answers import (
    LineLineInt,
    LinePlaneInt,
    LineSphereInt,
    LineTriangleInt,
    PlanePlaneInt,
)


def line_triangle(
    origin: Numbers,
    direction: Numbers,
    triangles: Numbers,
    tol: Numbers,
    workers: int = 1,
) -> LineTriangleInt:
    """Intersect lines with triangles, from either side.

    Edges and vertices belong to the triangle.

    Parameters
    ----------
    origin, direction : (..., 3) arrays
        The lines. Directions are normalized; a zero one becomes (0, 0, 1).
    triangles : (..., 3, 3) array
        Three corners each. The leading lengths of all arguments broadcast.
    tol : (...) array or number
        The doubled area by which a hit may lie outside of an edge, and the distance below which a
        parallel line counts as lying in the plane: with 0, none does.
    workers : int
        How many threads share the work, all processors for -1. The answers are the same.

    Returns
    -------
    LineTriangleInt
        ``status``, ``point`` and ``param``. NaN in a triangle gives ``IN_PLANE``; NaN in an origin
        ``MISS`` with NaN, or ``IN_PLANE`` for a parallel line.

    Examples
    --------
    >>> import geomkit
    >>> triangle = [[0, 0, 0], [1, 0, 0], [0, 1, 0]]
    >>> origins = [[0.25, 0.5, 3], [0.75, 0.75, 3]]
    >>> hits = geomkit.line_triangle(origins, [0, 0, -1], triangle, tol=1e-9)
    >>> hits.status == geomkit.LineTriangleStatus.HIT
    array([ True, False])
    >>> hits.point[0], hits.param[0]
    (array([0.25, 0.5 , 0.  ]), 3.0)
    """
    return LineTriangleInt._make(
        _core.line_triangle(origin, direction, triangles, tol, workers)
    )


def line_line(
    origin1: Numbers,
    direction1: Numbers,
    origin2: Numbers,
    direction2: Numbers,
    tol: Numbers,
    normalize: bool = False,
    workers: int = 1,
) -> LineLineInt:
    """Find where pairs of lines meet, or come closest.

    Parameters
    ----------
    origin1, direction1, origin2, direction2 : (..., 3) arrays
        The lines. The leading lengths of all arguments broadcast.
    tol : (...) array or number
        Closer than this distance, lines meet or coincide: with 0, none do.
    normalize : bool
        False: directions have any length, which is the unit of the parameters, and lines within
        0.03 degrees are parallel. True: directions are normalized, and lines are parallel only when
        the product of the directions rounds to 1, which often fails for a line and itself.
    workers : int
        How many threads share the work, all processors for -1. The answers are the same.

    Returns
    -------
    LineLineInt
        ``status``, ``point``, ``param1`` and ``param2``. A zero direction gives ``SKEW`` and
        parameters that are not finite; lines that are not finite never ``MEET``.

    Examples
    --------
    >>> import geomkit
    >>> found = geomkit.line_line([0, 0, 0], [2, 0, 0], [3, 1, 0], [0, 1, 0], tol=1e-9)
    >>> geomkit.LineLineStatus(found.status)
    <LineLineStatus.MEET: 0>
    >>> found.point, found.param1, found.param2
    (array([3., 0., 0.]), array(1.5), array(-1.))
    """
    function = _core.unit_line_line if normalize else _core.line_line
    return LineLineInt._make(
        function(origin1, direction1, origin2, direction2, tol, workers)
    )


def line_plane(
    origin: Numbers,
    direction: Numbers,
    point: Numbers,
    normal: Numbers,
    tol: Numbers,
    workers: int = 1,
) -> LinePlaneInt:
    """Intersect lines with planes.

    A line is parallel to a plane within an angle of 1e-8 radians.

    Parameters
    ----------
    origin, direction : (..., 3) arrays
        The lines. Directions are normalized; a zero one becomes (0, 0, 1).
    point, normal : (..., 3) arrays
        The planes. Normals are normalized. The leading lengths of all arguments broadcast.
    tol : (...) array or number
        Closer than this distance, a parallel line lies in the plane: with 0, none does.
    workers : int
        How many threads share the work, all processors for -1. The answers are the same.

    Returns
    -------
    LinePlaneInt
        ``status``, ``point`` and ``param``. NaN in a normal gives ``IN_PLANE``, in a point ``HIT``
        with NaN.

    Examples
    --------
    >>> import geomkit
    >>> hits = geomkit.line_plane([0, 0, 5], [[0, 0, 1], [1, 0, 0]], [0, 0, 2], [0, 0, 1], tol=1e-9)
    >>> [geomkit.LinePlaneStatus(s).name for s in hits.status]
    ['HIT', 'PARALLEL']
    >>> hits.param
    array([-3.,  0.])
    """
    return LinePlaneInt._make(
        _core.line_plane(origin, direction, point, normal, tol, workers)
    )


def plane_plane(
    point1: Numbers,
    normal1: Numbers,
    point2: Numbers,
    normal2: Numbers,
    tol: Numbers,
    workers: int = 1,
) -> PlanePlaneInt:
    """Find the lines that pairs of planes share.

    Planes are parallel within an angle of 1e-8 radians, whichever way their normals point.

    Parameters
    ----------
    point1, normal1, point2, normal2 : (..., 3) arrays
        The planes. Normals are normalized; a zero one becomes (0, 0, 1). The leading lengths of all
        arguments broadcast.
    tol : (...) array or number
        Closer than this distance, parallel planes coincide: with 0, none do.
    workers : int
        How many threads share the work, all processors for -1. The answers are the same.

    Returns
    -------
    PlanePlaneInt
        ``status``, ``point`` and ``direction``. NaN in a normal gives ``MEET`` with NaN.

    Examples
    --------
    >>> import geomkit
    >>> geomkit.plane_plane([0, 0, 1], [0, 0, 1], [2, 0, 0], [1, 0, 0], tol=1e-9)
    PlanePlaneInt(status=array(0, dtype=int32), point=array([2., 0., 1.]),
                  direction=array([0., 1., 0.]))
    """
    return PlanePlaneInt._make(
        _core.plane_plane(point1, normal1, point2, normal2, tol, workers)
    )


def line_sphere(
    origin: Numbers,
    direction: Numbers,
    center: Numbers,
    radius: Numbers,
    tol: Numbers,
    workers: int = 1,
) -> LineSphereInt:
    """Intersect lines with spheres.

    Parameters
    ----------
    origin, direction : (..., 3) arrays
        The lines. Directions are normalized; a zero one becomes (0, 0, 1).
    center : (..., 3) array
        The centers of the spheres. The leading lengths of all arguments broadcast.
    radius : (...) array or number
        Their radii; the sign does not matter.
    tol : (...) array or number
        A line is a tangent when the squares of its distance and of the radius differ by less: for
        a margin e, pass 2 e radius.
    workers : int
        How many threads share the work, all processors for -1. The answers are the same.

    Returns
    -------
    LineSphereInt
        ``num_hits``, ``point1``, ``point2``, ``param1`` and ``param2``. NaN in a line or a center
        gives one hit with NaN, in a radius one hit at the point nearest to the center.

    Examples
    --------
    >>> import geomkit
    >>> hits = geomkit.line_sphere([[0, 0, -5], [3, 0, -5]], [0, 0, 1], [0, 0, 0], 2, tol=1e-9)
    >>> hits.num_hits
    array([2, 0], dtype=int32)
    >>> hits.param1[0], hits.param2[0]
    (3.0, 7.0)
    """
    return LineSphereInt._make(
        _core.line_sphere(origin, direction, center, radius, tol, workers)
    )


def triangle_weights(points: Numbers, triangles: Numbers, workers: int = 1) -> Float64:
    """Return the weights of the corners of triangles whose blends are given points.

    Points are projected into the plane along the axis nearest to its normal, not along the normal.

    Parameters
    ----------
    points : (..., 3) array
        The points.
    triangles : (..., 3, 3) array
        Three corners each. The leading lengths of both arguments broadcast.
    workers : int
        How many threads share the work, all processors for -1. The answers are the same.

    Returns
    -------
    (..., 3) array
        Weights that sum to 1; outside of a triangle some are negative. All are 0 for a triangle
        whose doubled projected area is below 1e-8. NaN in a point gives NaN.

    Examples
    --------
    >>> import geomkit
    >>> triangle = [[0, 0, 0], [4, 0, 0], [0, 4, 0]]
    >>> geomkit.triangle_weights([[1, 1, 0], [4, 0, 0]], triangle)
    array([[0.5 , 0.25, 0.25],
           [0.  , 1.  , 0.  ]])
    """
    return _core.triangle_weights(points, triangles, workers)[0]
