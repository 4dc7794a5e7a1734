"""Roots of polynomials, eigensystems, and the planes and lines that fit points best."""

from __future__ import annotations

from typing import NamedTuple

from . import _core
from ._arrays import Float64, Int32, Numbers


class Fit(NamedTuple):
    """A plane or a line through the middle of points.

    Attributes
    ----------
    center : (..., 3) array
        The mean of the points.
    direction : (..., 3) array
        The unit normal of a plane, the unit direction of a line.
    """

    center: Float64
    direction: Float64


class Eigensystem(NamedTuple):
    """Eigenvalues and eigenvectors.

    Attributes
    ----------
    values : (..., 3) array
        Ascending.
    vectors : (..., 3, 3) array
        Column k is the unit vector of value k, ``vectors[..., :, k]``.
    """

    values: Float64
    vectors: Float64


class Roots(NamedTuple):
    """Real roots of polynomials.

    Attributes
    ----------
    count : (...) array
        How many there are, counted with multiplicity.
    roots : (..., 2) or (..., 3) array
        NaN in what is not a root.
    """

    count: Int32  # type: ignore[assignment]
    roots: Float64


def best_fit_plane(points: Numbers, workers: int = 1) -> Fit:
    """Return the plane that minimizes the sum of squared distances, for each set of points.

    Parameters
    ----------
    points : (..., n, 3) array
        Sets of n points, two or more. They should be about a unit wide: below 1e-3, a normal is off
        by degrees, and scaling the points up does not change it.
    workers : int
        How many threads share the sets, all processors for -1. The answers are the same.

    Returns
    -------
    Fit
        ``center`` and ``direction``, the normal, of either sign. Points on a line give one of the
        planes through it, points that coincide the normal (1, 0, 0), bad ones NaN.

    Examples
    --------
    >>> import geomkit
    >>> center, normal = geomkit.best_fit_plane([[0, 0, 1], [4, 0, 1], [0, 4, 1], [4, 4, 1]])
    >>> center, abs(normal)
    (array([2., 2., 1.]), array([0., 0., 1.]))
    """
    return Fit._make(_core.best_fit_plane(points, workers))


def best_fit_line(points: Numbers, workers: int = 1) -> Fit:
    """Return the line that minimizes the sum of squared distances, for each set of points.

    Parameters
    ----------
    points : (..., n, 3) array
        Sets of n points, two or more. They should be about a unit wide: below 1e-3, a direction is
        off by degrees, and scaling the points up does not change it.
    workers : int
        How many threads share the sets, all processors for -1. The answers are the same.

    Returns
    -------
    Fit
        ``center`` and ``direction``, of either sign. Points that coincide give the direction
        (0, 0, 1), points that are not finite may give NaN.

    Examples
    --------
    >>> import geomkit
    >>> center, direction = geomkit.best_fit_line([[0, 0, 1], [2, 0, 1], [4, 0, 1]])
    >>> center, abs(direction)
    (array([2., 0., 1.]), array([1., 0., 0.]))
    """
    return Fit._make(_core.best_fit_line(points, workers))


def eigensystem(matrices: Numbers, workers: int = 1) -> Eigensystem:
    """Return eigenvalues and eigenvectors of symmetric matrices.

    Parameters
    ----------
    matrices : (..., 3, 3) array
        Of a matrix that is not symmetric, the symmetric part is taken. Values are right to 1e-8,
        whatever their size.
    workers : int
        How many threads share the matrices, all processors for -1. The answers are the same.

    Returns
    -------
    Eigensystem
        ``values``, ascending, and ``vectors``, unit columns of either sign. NaN may go unnoticed:
        test the matrices where they may hold it.

    Examples
    --------
    >>> import geomkit
    >>> values, vectors = geomkit.eigensystem([[2, 1, 0], [1, 2, 0], [0, 0, 5]])
    >>> values
    array([1., 3., 5.])
    >>> abs(vectors[:, 2])
    array([0., 0., 1.])
    """
    return Eigensystem._make(_core.eigensystem(matrices, workers))


def solve_quadratic(coefficients: Numbers, workers: int = 1) -> Roots:
    """Return the real roots of a x^2 + b x + c.

    Parameters
    ----------
    coefficients : (..., 3) array
        a, b and c, best of the order of 1: below 1e-13, a and b and the discriminant count as 0.
    workers : int
        How many threads share the polynomials, all processors for -1. The answers are the same.

    Returns
    -------
    Roots
        ``count``, 0, 1 or 2, and ``roots``. Two ascend for a > 0 and descend for a < 0; a double
        one is there twice. NaN in a coefficient gives NaN roots, or none.

    Examples
    --------
    >>> import geomkit
    >>> count, roots = geomkit.solve_quadratic([[1, -3, 2], [0, 2, -1], [1, 0, 1]])
    >>> count
    array([2, 1, 0], dtype=int32)
    >>> roots
    array([[1. , 2. ],
           [0.5, nan],
           [nan, nan]])
    """
    return Roots._make(_core.solve_quadratic(coefficients, workers))


def solve_cubic(coefficients: Numbers, workers: int = 1) -> Roots:
    """Return the real roots of a x^3 + b x^2 + c x + d.

    Parameters
    ----------
    coefficients : (..., 4) array
        a, b, c and d, best of the order of 1: with a below 1e-13, the quadratic is solved.
    workers : int
        How many threads share the polynomials, all processors for -1. The answers are the same.

    Returns
    -------
    Roots
        ``count`` and ``roots``: 1, or 3 that ascend, counted with multiplicity; of a quadratic 0, 1
        or 2. Rounding decides whether a nearly double pair is found. Coefficients that are not
        finite give roots without meaning, and an end.

    Examples
    --------
    >>> import geomkit
    >>> count, roots = geomkit.solve_cubic([[1, 0, -4, 0], [1, 0, 1, 0]])
    >>> count
    array([3, 1], dtype=int32)
    >>> roots.round(12) + 0.0
    array([[-2.,  0.,  2.],
           [ 0., nan, nan]])
    """
    return Roots._make(_core.solve_cubic(coefficients, workers))
