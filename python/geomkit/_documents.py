"""Saving mesh functions as XML documents and loading them."""

from __future__ import annotations

import os
import warnings
from pathlib import Path
from typing import Union

from . import _core
from ._mesh import MeshFunction2D, warn_of_silence

_Loaded = tuple[
    Union[_core.MeshFunction, None], list[tuple[int, int, str]], int, tuple[int, str]
]


class DocumentError(ValueError):
    """A document of which nothing could be loaded.

    Attributes
    ----------
    line, column : int
        Where it is broken, counted from 1; 0 where the fault has no place.
    reason : str
        What is wrong.
    """

    __module__ = "geomkit"

    def __init__(self, line: int, column: int, reason: str) -> None:
        super().__init__(line, column, reason)
        self.line = line
        self.column = column
        self.reason = reason

    def __str__(self) -> str:
        place = f"line {self.line}, column {self.column}, " if self.line else ""
        return place + self.reason


class DocumentWarning(UserWarning):
    """A part of a document that was passed over; its text names line and column."""


def _core_of(function: MeshFunction2D) -> _core.MeshFunction:
    if not isinstance(function, MeshFunction2D):
        kind = type(function).__name__
        raise TypeError(f"function: {kind}, wanted MeshFunction2D")
    return function._core


def _function_of(loaded: _Loaded, prefix: str) -> MeshFunction2D:
    core, problems, omitted, _ = loaded
    if core is None:
        line, column, text = problems[-1]
        place = f"line {line}, column {column}, " if line else ""
        reason = text.removeprefix(place).removesuffix("; nothing was loaded")
        raise DocumentError(line, column, reason)
    texts = [text for _, _, text in problems]
    if omitted > 0:
        texts.append(f"and {omitted} more")
    function = MeshFunction2D._of(core)
    check = function.check()
    if not check:
        texts.append(check.text)
    for text in texts:
        warnings.warn(prefix + text, DocumentWarning, stacklevel=3)
    warn_of_silence(core, stacklevel=4)
    return function


def dumps(function: MeshFunction2D) -> str:
    """Return a mesh function as the text of an XML document.

    Numbers have 15 significant digits: pickle keeps every bit. Vertices that are not finite do not
    load back. No locale changes the text.

    Examples
    --------
    >>> import geomkit
    >>> corners = [[0, 0], [1, 0], [0, 1]]
    >>> f = geomkit.MeshFunction2D(corners, corners, [[0, 1, 2]])
    >>> print(geomkit.dumps(f)[:103])
    <?xml version="1.0" encoding="UTF-8"?>
    <MeshFunction2D>
      <super/>
      <params>
        <param u="0" v="0"/>
    """
    return _core.dumps(_core_of(function))


def loads(document: str | bytes) -> MeshFunction2D:
    """Return the mesh function of an XML document.

    Text that is not well-formed, or is no mesh function, raises `DocumentError`. What is wrong
    within it is passed over with a `DocumentWarning` each, the first hundred of them. Facets that
    do not fit the vertices are kept, with a warning, and take part in nothing: see
    `MeshFunction2D.check`.

    Examples
    --------
    >>> import geomkit
    >>> corners = [[0, 0], [1, 0], [0, 1]]
    >>> f = geomkit.MeshFunction2D(corners, corners, [[0, 1, 2]])
    >>> geomkit.loads(geomkit.dumps(f))([0.25, 0.5])
    array([0.25, 0.5 ])
    >>> geomkit.loads("<MeshFunction2D>")
    Traceback (most recent call last):
    ...
    geomkit.DocumentError: line 1, column 16, not well-formed: Start-end tags mismatch
    """
    if isinstance(document, str):
        if "<" not in document:
            reason = "it has no tag: load takes the name of a file"
            raise DocumentError(0, 0, reason)
        document = document.encode("utf-8", "surrogatepass")
    elif not isinstance(document, (bytes, bytearray, memoryview)):
        raise TypeError(f"document: {type(document).__name__}, wanted str or bytes")
    return _function_of(_core.loads(bytes(document)), "")


def save(path: str | os.PathLike[str], function: MeshFunction2D) -> None:
    """Write a mesh function to a file as an XML document, as `dumps` makes it.

    A file that cannot be written raises ``OSError``, and an older one of that name then stays as it
    was: the new one takes its place when it is whole.

    Examples
    --------
    >>> import geomkit, pathlib, tempfile
    >>> corners = [[0, 0], [1, 0], [0, 1]]
    >>> f = geomkit.MeshFunction2D(corners, corners, [[0, 1, 2]])
    >>> with tempfile.TemporaryDirectory() as folder:
    ...     geomkit.save(pathlib.Path(folder) / "mesh.xml", f)
    ...     geomkit.load(pathlib.Path(folder) / "mesh.xml")
    MeshFunction2D(3 vertices, 1 facets)
    """
    what, (number, _) = _core.save(Path(path), _core_of(function))
    if what:
        raise OSError(number, what, str(path))


def load(path: str | os.PathLike[str]) -> MeshFunction2D:
    """Return the mesh function of a file that holds an XML document.

    A file that cannot be read raises ``OSError``, as ``FileNotFoundError``. Everything else is as
    with `loads`; the warnings begin with the name of the file.

    Examples
    --------
    >>> import geomkit
    >>> geomkit.load("/nowhere/mesh.xml")
    Traceback (most recent call last):
    ...
    FileNotFoundError: [Errno 2] No such file or directory: '/nowhere/mesh.xml'
    """
    loaded = _core.load(Path(path))
    number, reason = loaded[3]
    if number != 0:
        raise OSError(number, reason, str(path))
    return _function_of(loaded, f"{path}: ")
