"""Piecewise-linear functions over triangle meshes in the plane."""

from __future__ import annotations

import warnings
from dataclasses import dataclass
from enum import IntEnum
from typing import Literal, NamedTuple

import numpy as np

from . import _core
from ._arrays import Bool, Float32, Float64, Int32, Numbers

Outside = Literal["nan", "extrapolate"]
_State = tuple[Float64, Float64, Int32, Float32, bool]


class Evaluation(NamedTuple):
    """The answers of a mesh function for an array of points."""

    values: Float64
    """(..., 2); NaN where there is no answer."""
    floats: Float32
    """(...); NaN where there is no answer, -1 where the function has no floats."""
    found: Bool
    """(...): whether there is an answer."""


class MeshWarning(UserWarning):
    """Facets of a mesh function that can never answer."""


class MeshFault(IntEnum):
    """The first fault of a mesh function's data, in the order in which they are looked for."""

    NONE = 0
    LENGTHS_DIFFER = 1
    """There are not as many values as params; the index is the lesser number."""
    PARTIAL_TRIPLE = 2
    """The last facet is not whole; the index is that of its first number."""
    INDEX_OUT_OF_RANGE = 3
    """A number of a facet is no vertex; the index is that of the number."""
    PARAM_NOT_FINITE = 4
    VALUE_NOT_FINITE = 5
    TOO_SMALL = 6
    """A facet has a determinant below 1e-8 in absolute value; the index is that of the facet."""


@dataclass(frozen=True)
class MeshCheck:
    """Whether the data of a mesh function hold together; true when they have no fault."""

    fault: MeshFault
    index: int
    """Where the fault is."""
    silent_facets: int
    """How many facets can never answer, because they are degenerate or not finite."""
    text: str
    """The fault in words."""

    def __bool__(self) -> bool:
        return self.fault is MeshFault.NONE


def warn_of_silence(core: _core.MeshFunction, stacklevel: int = 3) -> None:
    silent = core.check()[2]
    if silent > 0:
        message = (
            f"{silent} of {len(core.facets)} facets can never answer: their determinants are "
            "below 1e-8 in absolute value, or not finite"
        )
        warnings.warn(message, MeshWarning, stacklevel)


def _extrapolates(outside: str) -> bool:
    if outside not in ("nan", "extrapolate"):
        raise ValueError(f'outside: {outside!r}, wanted "nan" or "extrapolate"')
    return outside == "extrapolate"


class MeshFunction2D:
    """A map of the plane to two values and a float, linear in each triangle of a mesh.

    Beyond the mesh it continues: the triangle at the nearest border goes on. Facets whose
    determinant (twice the signed area) is below 1e-8 in absolute value never answer; a
    `MeshWarning` says how many there are.

    Parameters
    ----------
    params : (n, 2) array
        Positions of the vertices.
    values : (n, 2) array
        The values at the vertices.
    facets : (m, 3) array of integers
        The vertices of each triangle.
    floats : (n,) array, optional
        One more number at each vertex, of single precision.
    extrapolate : bool
        Whether the borders are found, along which the function is continued.

    Examples
    --------
    >>> import geomkit
    >>> corners = [[0, 0], [1, 0], [1, 1], [0, 1]]
    >>> values = [[10, 0], [12, 0], [12, 5], [10, 5]]
    >>> f = geomkit.MeshFunction2D(corners, values, [[0, 1, 2], [0, 2, 3]])
    >>> f([[0.25, 0.5], [2.0, 0.5]])
    array([[10.5,  2.5],
           [ nan,  nan]])
    >>> f([2.0, 0.5], outside="extrapolate")
    array([14. ,  2.5])
    """

    __slots__ = ("_core",)

    def __init__(
        self,
        params: Numbers,
        values: Numbers,
        facets: Numbers,
        floats: Numbers | None = None,
        extrapolate: bool = True,
    ) -> None:
        self._core = _core.MeshFunction(params, values, facets, floats, extrapolate)
        warn_of_silence(self._core)

    def __call__(self, points: Numbers, outside: Outside = "nan") -> Float64:
        """Return the values at points of shape (..., 2), in the same shape."""
        return self._core.evaluate(points, _extrapolates(outside), False, 1)[0]

    def evaluate(
        self, points: Numbers, extrapolate: bool = False, workers: int = 1
    ) -> Evaluation:
        """Return values, floats, and where there are any, at points of shape (..., 2).

        ``workers`` threads share the points, all processors for -1; the answers are the same.
        """
        return Evaluation(*self._core.evaluate(points, extrapolate, True, workers))

    @property
    def params(self) -> Float64:
        """Positions of the vertices, (n, 2), for reading."""
        return self._core.params

    @property
    def values(self) -> Float64:
        """Values at the vertices, (n, 2), for reading."""
        return self._core.values

    @property
    def facets(self) -> Int32:
        """Vertices of the triangles, (m, 3), for reading."""
        return self._core.facets

    @property
    def floats(self) -> Float32:
        """The numbers at the vertices, (n,), for reading; empty where none were given."""
        return self._core.floats

    @property
    def boundaries(self) -> list[Float64]:
        """The chains of border vertices, (k, 2) each; a loop repeats its first vertex."""
        return self._core.boundaries

    def check(self) -> MeshCheck:
        """Return the first fault of the data, and how many facets can never answer.

        A function that was loaded may have any fault, since documents are taken as they stand; one
        that was made from arrays has at most numbers that are not finite. Queries are safe in any
        case.
        """
        fault, index, silent, text = self._core.check()
        return MeshCheck(MeshFault(fault), index, silent, text)

    @classmethod
    def _of(cls, core: _core.MeshFunction) -> MeshFunction2D:
        made = cls.__new__(cls)
        made._core = core
        return made

    def __getstate__(self) -> _State:
        f = self._core
        return (f.params, f.values, f.facet_list, f.floats, f.extrapolates)

    def __setstate__(self, state: _State) -> None:
        self._core = _core.MeshFunction.restore(*state)

    def __repr__(self) -> str:
        return f"MeshFunction2D({len(self.params)} vertices, {len(self.facets)} facets)"


class Field2D:
    """A map of the plane to any number of values, linear in each triangle of a mesh.

    Like `MeshFunction2D`, with ``values`` of shape (n, k).
    """

    __slots__ = ("_pairs", "_channels")

    def __init__(self, params: Numbers, values: Numbers, facets: Numbers) -> None:
        columns = np.asarray(values, dtype=np.float64)
        if columns.ndim != 2:
            raise ValueError(f"values: shape {columns.shape}, wanted (n, k)")
        self._channels = columns.shape[1]
        # The library's functions have two values. All share one mesh and its index.
        padded = np.zeros((len(columns), self._channels + self._channels % 2))
        padded[:, : self._channels] = columns
        pairs = [padded[:, k : k + 2] for k in range(0, padded.shape[1], 2)]
        first = _core.MeshFunction(params, pairs[0], facets, None, True)
        warn_of_silence(first)
        self._pairs = [first, *(first.with_values(pair) for pair in pairs[1:])]

    def __call__(
        self, points: Numbers, outside: Outside = "nan", workers: int = 1
    ) -> Float64:
        """Return the values at points of shape (..., 2), in shape (..., k)."""
        extrapolate = _extrapolates(outside)
        answers = [
            pair.evaluate(points, extrapolate, False, workers)[0]
            for pair in self._pairs
        ]
        return np.concatenate(answers, axis=-1)[..., : self._channels]
