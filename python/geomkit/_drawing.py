"""Hooks by which code under test shows its geometry."""

from __future__ import annotations

import atexit
from collections.abc import Callable

from . import _core
from ._arrays import Float64, Numbers

PointHook = Callable[[Float64, int], object]
VectorHook = Callable[[Float64, Float64, int, float], object]


def register_drawing(
    point: PointHook | None = None, vector: VectorHook | None = None
) -> None:
    """Have points and vectors drawn by callables; what is not given is drawn by nobody.

    Each call replaces both, so that ``register_drawing()`` unregisters them. Nothing draws by
    itself: the code that one looks at calls `draw_point` and `draw_vector`, or the functions of the
    same meaning in C++.

    They may be called from any thread. What they raise is reported through
    ``sys.unraisablehook`` and ends nothing.

    Parameters
    ----------
    point : callable, optional
        ``point(position, colour)``, with an array of 3 and a number that means what the callable
        makes of it.
    vector : callable, optional
        ``vector(origin, vector, colour, scale)``, with arrays of 3.

    Examples
    --------
    >>> import geomkit
    >>> geomkit.register_drawing(point=lambda position, colour: print(position, colour))
    >>> geomkit.draw_point([1, 2, 3], colour=7)
    [1. 2. 3.] 7
    >>> geomkit.register_drawing()
    >>> geomkit.draw_point([1, 2, 3])
    """
    for name, hook in (("point", point), ("vector", vector)):
        if hook is not None and not callable(hook):
            raise TypeError(f"{name}: {type(hook).__name__}, wanted a callable")
    _core.set_hooks(point, vector)


def draw_point(point: Numbers, colour: int = 0) -> None:
    """Show a point, (3,), by the registered hook; nothing happens where there is none.

    Examples
    --------
    >>> import geomkit
    >>> geomkit.draw_point([1, 2, 3])
    """
    _core.draw_point(point, colour)


def draw_vector(
    origin: Numbers, vector: Numbers, colour: int = 0, scale: float = 0.1
) -> None:
    """Show a vector at an origin, (3,) each; nothing happens where no hook is registered.

    Examples
    --------
    >>> import geomkit
    >>> geomkit.register_drawing(vector=lambda o, v, colour, scale: print(o + scale * v))
    >>> geomkit.draw_vector([1, 0, 0], [0, 10, 0], scale=0.5)
    [1. 5. 0.]
    >>> geomkit.register_drawing()
    """
    _core.draw_vector(origin, vector, colour, scale)


# Threads that still draw must not find a callable whose interpreter is gone.
atexit.register(_core.finish_drawing)
