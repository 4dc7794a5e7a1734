"""What transforms of every kind have in common."""

from __future__ import annotations

from collections.abc import Iterator
from typing import Any, ClassVar, TypeVar, overload

import numpy as np

from ._arrays import Float64, Numbers

_M = TypeVar("_M", bound="Map")


def common_shape(*leading: tuple[str, tuple[int, ...]]) -> tuple[int, ...]:
    """The shape that the leading axes of arguments have together."""
    shape: tuple[int, ...] = ()
    for name, own in leading:
        try:
            shape = np.broadcast_shapes(shape, own)
        except ValueError:
            message = f"{name}: leading shape {own}, wanted one that goes with {shape}"
            raise ValueError(message) from None
    return shape


class Map:
    """Maps of space, of any shape: () for a single one. They are never changed."""

    __slots__ = ("_data",)
    # Lets `array @ transform` fail, rather than apply the transform to single numbers.
    __array_ufunc__ = None
    _loops: ClassVar[Any]
    _data: Float64

    @classmethod
    def _of(cls: type[_M], data: Float64) -> _M:
        made = cls.__new__(cls)
        made._set(data)
        return made

    def _set(self, data: Float64) -> None:
        data.flags.writeable = False
        self._data = data

    def __getstate__(self) -> tuple[Float64]:
        return (self._data,)

    def __setstate__(self, state: tuple[Float64]) -> None:
        self._set(*state)

    @property
    def shape(self) -> tuple[int, ...]:
        """The shape of the array of transforms, () for a single one."""
        return self._data.shape[:-1]

    @property
    def translation(self) -> Float64:
        """Where the origin goes, (..., 3), for reading."""
        return self._data[..., 9:12]

    @property
    def matrix(self) -> Float64:
        """The same map as matrices, (..., 4, 4), the translation in the fourth column."""
        matrix: Float64 = self._loops.matrix(self._data)
        return matrix

    def inverse(self: _M) -> _M:
        """Return the map that leads back; `help` of the class says what a singular one gives."""
        return self._of(self._loops.inverse(self._data))

    @overload
    def __matmul__(self: _M, other: _M) -> _M:
        ...

    @overload
    def __matmul__(self, other: Numbers) -> Float64:
        ...

    def __matmul__(self: _M, other: Any) -> Any:
        if isinstance(other, type(self)):
            return self._of(self._loops.multiply(self._data, other._data))
        if isinstance(other, Map):
            return NotImplemented
        return self._loops.points(self._data, other, 1)

    def transform_points(self, points: Numbers, workers: int = 1) -> Float64:
        """Return the images of points (..., 3), as ``self @ points``.

        Many transforms broadcast with the points. ``workers`` threads share them, all processors
        for -1; the answers are the same.
        """
        images: Float64 = self._loops.points(self._data, points, workers)
        return images

    def transform_directions(self, directions: Numbers, workers: int = 1) -> Float64:
        """Return the images of directions (..., 3), which the translation leaves alone."""
        images: Float64 = self._loops.directions(self._data, directions, workers)
        return images

    @classmethod
    def interpolate(cls: type[_M], a: _M, b: _M, t: Numbers, workers: int = 1) -> _M:
        """Blend from ``a`` (t <= 0 or NaN) to ``b`` (t >= 1), one for each number of ``t``.

        ``a`` and ``b`` broadcast with ``t``; ``workers`` threads share the work.
        """
        for name, end in (("a", a), ("b", b)):
            if not isinstance(end, cls):
                raise TypeError(f"{name}: {type(end).__name__}, wanted {cls.__name__}")
        return cls._of(cls._loops.interpolate(a._data, b._data, t, workers))

    def __len__(self) -> int:
        if not self.shape:
            raise TypeError(f"a single {type(self).__name__} has no length")
        return self.shape[0]

    def __bool__(self) -> bool:
        return True

    def __getitem__(self: _M, key: Any) -> _M:
        if not self.shape:
            raise TypeError(f"a single {type(self).__name__} cannot be indexed")
        keys = key if isinstance(key, tuple) else (key,)
        dots = () if any(part is Ellipsis for part in keys) else (Ellipsis,)
        return self._of(self._data[(*keys, *dots, slice(None))])

    def __iter__(self: _M) -> Iterator[_M]:
        return (self[i] for i in range(len(self)))

    def __eq__(self, other: object) -> bool:
        """Whether every number is equal, without tolerance; NaN equals nothing."""
        if not isinstance(other, type(self)):
            return NotImplemented
        return np.array_equal(self._data, other._data)

    def __hash__(self) -> int:
        return hash((self.shape, tuple(self._data.ravel().tolist())))
