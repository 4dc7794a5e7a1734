"""Implicit surfaces: a field through samples, and an ellipsoid around points."""

from __future__ import annotations

from collections.abc import Callable

import numpy as np

from . import _core
from ._arrays import Float64, Numbers

_State = tuple[Float64, Float64, Float64, float, bool, Float64]


class Implicit:
    """A smooth field through given values at given points; f = 0 is a surface.

    f(p) = offset + linear . p + sum of weights[i] |p - centers[i]|**3, the smoothest field that
    takes each sample's value. The fit costs (n + 4)**3 steps and two matrices of (n + 4)**2 numbers
    for n samples. Samples of about unit size around the origin give the best accuracy.

    Fewer than four samples, all in one plane, or one given twice determine no field: it is then
    meaningless. Ask `met_zero_pivot` and `max_residual` before you rely on samples of strangers.
    No samples give the field 0.

    Parameters
    ----------
    points : (n, 3) array
        Where the samples are.
    values : (n,) array
        The field's value at each: 0 on the surface, others beside it.
    progress : callable, optional
        Called with the share of the fit that is done, from 0 to 1, some twenty times a second and
        at the end. What it raises ends the fit.

    Examples
    --------
    >>> import geomkit
    >>> directions = [[1, 0, 0], [-1, 0, 0], [0, 1, 0], [0, -1, 0], [0, 0, 1], [0, 0, -1]]
    >>> f = geomkit.Implicit([*directions, [0, 0, 0]], [0, 0, 0, 0, 0, 0, -1])
    >>> f([[0, 0, 0], [2, 0, 0]]).round(3)
    array([-1.  ,  1.56])
    >>> f.max_residual() < 1e-12
    True
    """

    __slots__ = ("_core", "_values")

    def __init__(
        self,
        points: Numbers,
        values: Numbers,
        progress: Callable[[float], object] | None = None,
    ) -> None:
        self._core = _core.Field(points, values, progress)
        self._values = np.array(values, dtype=np.float64)

    def __call__(self, points: Numbers, workers: int = 1) -> Float64:
        """Return the field at points of shape (..., 3), in shape (...).

        ``workers`` threads share the points, all processors for -1; the answers are the same.
        """
        return self._core.values(points, workers)[()]

    def gradient(self, points: Numbers, workers: int = 1) -> Float64:
        """Return the gradients at points of shape (..., 3), in the same shape."""
        return self._core.gradients(points, workers)

    @property
    def centers(self) -> Float64:
        """The sample points, (n, 3), for reading."""
        return self._core.centers

    @property
    def weights(self) -> Float64:
        """One weight a sample, (n,), for reading."""
        return self._core.weights

    @property
    def linear(self) -> Float64:
        """The coefficients of x, y and z, (3,), for reading."""
        return self._core.linear

    @property
    def offset(self) -> float:
        """The constant term."""
        return self._core.offset

    @property
    def met_zero_pivot(self) -> bool:
        """Whether the fit found that the samples determine no field, which then means nothing.

        False proves little, since rounding hides it: ask `max_residual` too.
        """
        return self._core.met_zero_pivot

    def max_residual(self, workers: int = 1) -> float:
        """Return the largest difference from a sample's value; NaN if there is one.

        A result that is not small beside the values condemns the field. It is 0 for no samples.
        """
        differences = np.abs(self._core.values(self.centers, workers) - self._values)
        return float(differences.max(initial=0.0))

    def __getstate__(self) -> _State:
        f = self._core
        return (
            f.centers,
            f.weights,
            f.linear,
            f.offset,
            f.met_zero_pivot,
            self._values,
        )

    def __setstate__(self, state: _State) -> None:
        self._core = _core.Field.restore(*state[:5])
        self._values = state[5]

    def __repr__(self) -> str:
        return f"Implicit({len(self.centers)} samples)"


class ImplEllipsoid:
    """An ellipsoid around points: the surface f = 1 of f(p) = sqrt((p - c)^T M (p - c)).

    f <= 1 at each of the points, to rounding, and f = 1 at the farthest. The axes come from the
    second moments about the centre; it is not the smallest ellipsoid. Moments below 1e-6 count as
    1e-6 and above 1e6 as 1e6: choose units in which the points measure about 1 to 100. No points,
    or points that are not finite, give numbers without meaning.

    Parameters
    ----------
    points : (n, 3) array
        What it holds.
    center : (3,) array, optional
        The mean of the points by default.

    Examples
    --------
    >>> import geomkit
    >>> corners = [[x, y, z] for x in (-2, 2) for y in (-1, 1) for z in (-1, 1)]
    >>> ellipsoid = geomkit.ImplEllipsoid(corners)
    >>> ellipsoid([[0, 0, 0], [2, 1, 1], [4, 2, 2]]).round(6)
    array([0., 1., 2.])
    >>> (1 / ellipsoid.thicken(0.5).matrix.diagonal() ** 0.5).round(3)
    array([3.964, 2.232, 2.232])
    """

    __slots__ = ("_core",)

    def __init__(self, points: Numbers, center: Numbers | None = None) -> None:
        self._core = _core.Ellipsoid(points, center)

    def __call__(self, points: Numbers, workers: int = 1) -> Float64:
        """Return the field at points of shape (..., 3), in shape (...).

        ``workers`` threads share the points, all processors for -1; the answers are the same.
        """
        return self._core.values(points, workers)[()]

    @property
    def center(self) -> Float64:
        """The centre, (3,), for reading."""
        return self._core.center

    @property
    def matrix(self) -> Float64:
        """The matrix M, (3, 3), for reading."""
        return self._core.matrix

    def thicken(self, distance: float) -> ImplEllipsoid:
        """Return the ellipsoid whose semi-axes are longer by ``distance``; this one stays.

        A negative distance shrinks. Semi-axes above 1000 count as 1000. Minus a semi-axis gives
        NaN and infinities.
        """
        made = ImplEllipsoid.__new__(ImplEllipsoid)
        made._core = self._core.thickened(distance)
        return made

    def __getstate__(self) -> tuple[Float64, Float64]:
        return (self.center, self.matrix)

    def __setstate__(self, state: tuple[Float64, Float64]) -> None:
        self._core = _core.Ellipsoid.restore(*state)

    def __eq__(self, other: object) -> bool:
        """Whether centre and matrix are equal, without tolerance."""
        if not isinstance(other, ImplEllipsoid):
            return NotImplemented
        return np.array_equal(self.center, other.center) and np.array_equal(
            self.matrix, other.matrix
        )

    def __hash__(self) -> int:
        return hash((*self.center.tolist(), *self.matrix.ravel().tolist()))

    def __repr__(self) -> str:
        return f"ImplEllipsoid(center={self.center.tolist()}, matrix={self.matrix.tolist()})"
