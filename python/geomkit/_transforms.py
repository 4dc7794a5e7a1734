"""Similarity and bone transforms, one or many of them."""

from __future__ import annotations

from typing import Any, TypeVar, overload

import numpy as np

from . import _core
from ._arrays import Float64, Numbers
from ._maps import Map, common_shape

_M = TypeVar("_M", bound=Map)


class Transform(Map):
    """Similarity transforms: the maps x -> scale (rotation x) + translation.

    One transform, or an array of them where the arguments have leading axes, which broadcast:
    angles of shape (5,) make five. ``a @ b`` composes, b first; ``a @ points`` maps points of shape
    (..., 3); ``a[i]``, ``len`` and loops take single ones. Nothing checks or repairs the rotation,
    and `inverse` transposes it. The inverse of scale 0 has infinities and NaN.

    Parameters
    ----------
    rotation : (..., 3, 3) array, optional
        Proper rotations, used as they are; the identity by default. A mirror is a proper rotation
        with a negative scale.
    translation : (..., 3) array, optional
        Where the origin goes; itself by default.
    scale : (...) array, optional
        Uniform scale, 1 by default.
    axis, angle : (..., 3) and (...) arrays, optional
        Instead of ``rotation``: axes of any length, and radians by the right-hand rule. A null axis
        is z.

    Examples
    --------
    >>> import geomkit
    >>> turn = geomkit.Transform(axis=[0, 0, 1], angle=3.141592653589793 / 2)
    >>> move = geomkit.Transform(translation=[10, 0, 0])
    >>> (move @ turn @ [[1, 0, 0], [2, 0, 0]]).round(6)
    array([[10.,  1.,  0.],
           [10.,  2.,  0.]])
    >>> turn @ geomkit.Transform() == turn
    True
    >>> half = geomkit.interpolate(geomkit.Transform(), move, [0.25, 0.5])
    >>> half, half[1].translation
    (Transform(shape (2,)), array([5., 0., 0.]))
    """

    __slots__ = ()
    _loops = _core.TransformLoops

    def __init__(
        self,
        rotation: Numbers | None = None,
        translation: Numbers | None = None,
        scale: Numbers | None = None,
        *,
        axis: Numbers | None = None,
        angle: Numbers | None = None,
    ) -> None:
        if (axis is None) != (angle is None):
            raise TypeError("axis and angle: one is missing")
        if axis is not None and rotation is not None:
            raise TypeError("rotation: given beside axis and angle, wanted one of both")
        if axis is not None and angle is not None:
            rotation = _core.rotation_matrix(axis, angle)
        given = [
            ("rotation", np.eye(3) if rotation is None else rotation, (3, 3)),
            ("translation", np.zeros(3) if translation is None else translation, (3,)),
            ("scale", 1.0 if scale is None else scale, ()),
        ]
        parts = [_core.numbers(part, name, item) for name, part, item in given]
        leading = [
            p.shape[: p.ndim - len(item)] for p, (_, _, item) in zip(parts, given)
        ]
        shape = common_shape(
            *((name, own) for (name, _, _), own in zip(given, leading))
        )
        data = np.empty((*shape, 13))
        data[..., :9] = parts[0].reshape(*leading[0], 9)
        data[..., 9:12] = parts[1]
        data[..., 12] = parts[2]
        self._set(data)

    @classmethod
    def rotate(cls, start: Numbers, end: Numbers) -> Transform:
        """Return the turn that takes directions ``start`` to ``end``, (..., 3) each.

        They need not have unit length; a null one is z. Directions within 0.03 degrees of parallel
        give the identity, within 0.03 degrees of opposite a half turn.
        """
        return cls._of(_core.rotate(start, end))

    @classmethod
    def reflection(cls, point: Numbers, normal: Numbers) -> Transform:
        """Return the mirror in the plane through ``point`` with ``normal``, (..., 3) each.

        The normal need not have unit length; a null one is z.
        """
        return cls._of(_core.reflection(point, normal))

    @property
    def rotation(self) -> Float64:
        """The rotations, (..., 3, 3), for reading."""
        rotation: Float64 = self._data[..., :9].reshape(*self.shape, 3, 3)
        rotation.flags.writeable = False
        return rotation

    @property
    def scale(self) -> Float64:
        """The scales, (...), for reading."""
        scale: Float64 = self._data[..., 12][()]
        return scale

    def __repr__(self) -> str:
        if self.shape:
            return f"Transform(shape {self.shape})"
        return (
            f"Transform(rotation={self.rotation.tolist()}, "
            f"translation={self.translation.tolist()}, scale={self.scale.tolist()})"
        )


class BoneTransform(Map):
    """Affine maps that carry bones from their rest positions to a pose.

    One transform, or an array of them where the arguments have leading axes, which broadcast; then
    as with `Transform`. A linear part with an absolute determinant below 1e-8 has no inverse: that
    is zero, linear part and translation.

    Parameters
    ----------
    matrix : (..., 4, 4) array, optional
        Affine maps of columns; the bottom rows are not read. The identity by default.
    rest, pose : (..., 2, 3) arrays, optional
        Instead of ``matrix``: where bones start and end. The map is the smallest swing of the
        direction, then the twist, then a stretch along the bone that matches the lengths. A rest
        bone of length zero makes the stretch infinite or NaN.
    twist : (...) array, optional
        Turns about the posed direction, in radians.

    Examples
    --------
    >>> import geomkit
    >>> bone = geomkit.BoneTransform(rest=[[0, 0, 0], [1, 0, 0]], pose=[[0, 0, 0], [0, 3, 0]])
    >>> (bone @ [1, 0, 0]).round(6) + 0
    array([0., 3., 0.])
    >>> geomkit.BoneTransform(bone.matrix) == bone
    True
    >>> blend = geomkit.interpolate(geomkit.BoneTransform(), bone, 0.5)
    >>> (blend @ [1, 0, 0]).round(3) + 0
    array([1.225, 1.225, 0.   ])
    """

    __slots__ = ()
    _loops = _core.BoneTransformLoops

    def __init__(
        self,
        matrix: Numbers | None = None,
        *,
        rest: Numbers | None = None,
        pose: Numbers | None = None,
        twist: Numbers | None = None,
    ) -> None:
        if (rest is None) != (pose is None):
            raise TypeError("rest and pose: one is missing")
        if rest is None:
            if twist is not None:
                raise TypeError("twist: given without rest and pose")
            whole = np.eye(4) if matrix is None else matrix
            self._set(_core.bones_of_matrices(whole))
            return
        if matrix is not None:
            raise TypeError("matrix: given beside rest and pose, wanted one of both")
        r = _core.numbers(rest, "rest", (2, 3))
        p = _core.numbers(pose, "pose", (2, 3))
        ends = (r[..., 0, :], r[..., 1, :], p[..., 0, :], p[..., 1, :])
        self._set(_core.bones(*ends, 0.0 if twist is None else twist))

    @property
    def linear(self) -> Float64:
        """The linear parts, (..., 3, 3), for reading."""
        linear: Float64 = self._data[..., :9].reshape(*self.shape, 3, 3)
        linear.flags.writeable = False
        return linear

    def __repr__(self) -> str:
        if self.shape:
            return f"BoneTransform(shape {self.shape})"
        return f"BoneTransform({self.matrix.tolist()})"


@overload
def interpolate(a: _M, b: _M, t: Numbers, workers: int = 1) -> _M:
    ...


@overload
def interpolate(a: Numbers, b: Numbers, t: Numbers, workers: int = 1) -> Float64:
    ...


def interpolate(a: Any, b: Any, t: Numbers, workers: int = 1) -> Any:
    """Blend from ``a`` (t <= 0 or NaN) to ``b`` (t >= 1), one blend for each number of ``t``.

    Transforms turn about one axis and grow geometrically. Bones blend turn and stretch, and a bone
    whose determinant is below 1e-8 collapses to zero inside. Turns of transforms and bones under
    about 1e-4 radians jump at t = 1, as do turns of matrices under about 4e-7; a matrix whose first
    row is zero gives NaN.

    Parameters
    ----------
    a, b : two `Transform`, two `BoneTransform`, or (..., 4, 4) arrays
        They broadcast with ``t``.
    t : (...) array
        How far from a to b.
    workers : int
        Threads that share the work, all processors for -1; the answers are the same.

    Examples
    --------
    >>> import geomkit
    >>> turn = geomkit.Transform(axis=[0, 0, 1], angle=1.0, translation=[8, 0, 0])
    >>> path = geomkit.interpolate(geomkit.Transform(), turn, [0.0, 0.25, 1.0])
    >>> path.translation
    array([[0., 0., 0.],
           [2., 0., 0.],
           [8., 0., 0.]])
    >>> path[2] == turn
    True
    """
    if isinstance(a, Map):
        return type(a).interpolate(a, b, t, workers)
    if isinstance(b, Map):
        return type(b).interpolate(a, b, t, workers)
    return _core.interpolate_matrices(a, b, t, workers)
