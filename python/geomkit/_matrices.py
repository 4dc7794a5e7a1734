"""Rotations, rigid motions and inverses as arrays of matrices."""

from __future__ import annotations

from typing import NamedTuple

import numpy as np

from . import _core
from ._arrays import Float64, Numbers


def rotation_matrix(axis: Numbers, angle: Numbers) -> Float64:
    """Return the rotations about axes (..., 3) by angles (...) in radians, as (..., 3, 3).

    Counter-clockwise seen from the tip of the axis, which may have any length; a null one is z.

    Examples
    --------
    >>> import geomkit
    >>> geomkit.rotation_matrix([0, 0, 2], 0.5).round(3)
    array([[ 0.878, -0.479,  0.   ],
           [ 0.479,  0.878,  0.   ],
           [ 0.   ,  0.   ,  1.   ]])
    """
    return _core.rotation_matrix(axis, angle)


def rotation_between(start: Numbers, end: Numbers) -> Float64:
    """Return the rotations that take directions to directions, (..., 3) each, as (..., 3, 3).

    About their common normal, for tiny turns too. Parallel directions give the identity, opposite
    ones a half turn. They need not have unit length; a null one is z.

    Examples
    --------
    >>> import geomkit
    >>> (geomkit.rotation_between([1, 0, 0], [0, 5, 0]) @ [1, 0, 0]).round(6)
    array([0., 1., 0.])
    """
    return _core.rotation_between(start, end)


class AxisAngle(NamedTuple):
    """Axes and angles of rotation matrices."""

    axis: Float64
    """(..., 3), of unit length."""
    angle: Float64
    """(...), in radians, from -pi to pi."""


def rotation_axis_angle(matrix: Numbers) -> AxisAngle:
    """Return the axes and the signed angles of rotation matrices, (..., 3, 3).

    Turns under about 1e-4 radians have a coordinate axis; the identity has x. About the axes -x, -y
    and -z exactly, the angle is 0 whatever the matrix.

    Examples
    --------
    >>> import geomkit
    >>> axis, angle = geomkit.rotation_axis_angle(geomkit.rotation_matrix([0, 3, 4], 0.5))
    >>> axis.round(6), angle.round(6)
    (array([0. , 0.6, 0.8]), 0.5)
    """
    axis, angle = _core.rotation_axis_angle(matrix)
    return AxisAngle(axis, angle[()])


def rigid_matrix(
    start: Numbers, start_direction: Numbers, end: Numbers, end_direction: Numbers
) -> Float64:
    """Return the rigid motions that take points and directions, (..., 3) each, as (..., 4, 4).

    The point ``start`` goes to ``end``, ``start_direction`` to ``end_direction``. Opposite
    directions are turned by pi about z, which is right in the xy plane only: `Transform.rotate`
    takes any.

    Examples
    --------
    >>> import geomkit
    >>> geomkit.rigid_matrix([0, 0, 0], [1, 0, 0], [5, 0, 0], [0, 1, 0]).round(6) + 0
    array([[ 0., -1.,  0.,  5.],
           [ 1.,  0.,  0.,  0.],
           [ 0.,  0.,  1.,  0.],
           [ 0.,  0.,  0.,  1.]])
    """
    return _core.rigid_matrix(start, start_direction, end, end_direction)


def inverse(matrix: Numbers) -> Float64:
    """Return the inverses of matrices, (..., 3, 3) or (..., 4, 4).

    A 3x3 matrix with an absolute determinant below 1e-8 gives the zero matrix. A 4x4 matrix is
    taken for an affine map, its bottom row for (0, 0, 0, 1); where the determinant of its linear
    part is not above 1e-13 in absolute value, the answer is the identity.

    Examples
    --------
    >>> import geomkit
    >>> geomkit.inverse([[2, 0, 0, 6], [0, 1, 0, 0], [0, 0, 1, 0], [0, 0, 0, 1]])[0]
    array([ 0.5,  0. ,  0. , -3. ])
    """
    shape = np.shape(matrix)
    if shape[-2:] not in ((3, 3), (4, 4)):
        raise ValueError(f"matrix: shape {shape}, wanted (..., 3, 3) or (..., 4, 4)")
    return _core.inverse3(matrix) if shape[-1] == 3 else _core.inverse4(matrix)
