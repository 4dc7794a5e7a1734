"""Skinning: vertices that follow bones."""

from __future__ import annotations

from collections.abc import Sequence
from typing import NamedTuple, Union, overload

import numpy as np

from . import _core
from ._arrays import Float64, Numbers
from ._maps import Map
from ._transforms import BoneTransform, Transform

Bones = Union[BoneTransform, Transform, Sequence[Map], Numbers]


class Skinned(NamedTuple):
    """Vertices moved by bones."""

    positions: Float64
    """(n, 3)."""
    normals: Float64
    """(n, 3), of unit length."""


def _bone_numbers(transforms: Bones) -> Float64:
    """The numbers of all bones, (b, 12)."""
    if isinstance(transforms, Transform):
        transforms = BoneTransform(transforms.matrix)
    elif isinstance(transforms, (list, tuple)):
        maps = [bone for bone in transforms if isinstance(bone, Map)]
        if len(maps) == len(transforms):
            transforms = np.array([bone.matrix for bone in maps]).reshape(-1, 4, 4)
    if not isinstance(transforms, BoneTransform):
        transforms = BoneTransform(_core.numbers(transforms, "transforms", (4, 4)))
    if len(transforms.shape) != 1:
        raise ValueError(f"transforms: shape {transforms.shape}, wanted (n,)")
    return transforms._data


@overload
def skin(
    positions: Numbers,
    bones: Numbers,
    weights: Numbers,
    transforms: Bones,
    normals: None = None,
    workers: int = 1,
) -> Float64:
    ...


@overload
def skin(
    positions: Numbers,
    bones: Numbers,
    weights: Numbers,
    transforms: Bones,
    normals: Numbers,
    workers: int = 1,
) -> Skinned:
    ...


def skin(
    positions: Numbers,
    bones: Numbers,
    weights: Numbers,
    transforms: Bones,
    normals: Numbers | None = None,
    workers: int = 1,
) -> Float64 | Skinned:
    """Move vertices by bones: each goes to the weighted sum of its bones' images of it.

    Parameters
    ----------
    positions : (n, 3) array
        The vertices at rest.
    bones : (n, k) array of integers
        The bones of each vertex, 0 to b - 1. A number beside a weight of 0 may be anything.
    weights : (n, k) array
        Their weights, used as given: they need not sum to 1. A vertex whose weights are all 0 stays
        where it is.
    transforms : `BoneTransform` or `Transform` of shape (b,), a list of b, or (b, 4, 4) array
        Where each bone takes its vertices.
    normals : (n, 3) array, optional
        Normals at rest, of any length; a null one is z.
    workers : int
        Threads that share the vertices, all processors for -1; the answers are the same.

    Returns
    -------
    positions : (n, 3) array
        Or, with normals, ``Skinned(positions, normals)``. Normals stay perpendicular to the
        surface under stretch; mirroring bones turn them inwards. Beside a normal, the only bone of
        a vertex counts fully, whatever its weight.

    Examples
    --------
    >>> import geomkit
    >>> bones = geomkit.BoneTransform(
    ...     rest=[[0, 0, 0], [1, 0, 0]], pose=[[[0, 0, 0], [1, 0, 0]], [[0, 0, 0], [2, 0, 0]]]
    ... )
    >>> geomkit.skin([[1, 0, 0], [1, 1, 0]], [[0, 1], [1, 0]], [[0.5, 0.5], [1, 0]], bones)
    array([[1.5, 0. , 0. ],
           [2. , 1. , 0. ]])
    """
    moved, turned = _core.skin(
        positions, bones, weights, _bone_numbers(transforms), normals, workers
    )
    return moved if normals is None else Skinned(moved, turned)
