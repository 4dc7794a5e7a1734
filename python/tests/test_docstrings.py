"""Every public name is documented, and the examples of the documentation are true."""

from __future__ import annotations

import doctest
import inspect

import geomkit
import pytest


def _documented() -> list[str]:
    return [name for name in geomkit.__all__ if not name.startswith("_")]


@pytest.mark.parametrize("name", _documented())
def test_documentation(name: str) -> None:
    thing = getattr(geomkit, name)
    assert inspect.getdoc(thing), "it says nothing"
    finder = doctest.DocTestFinder()
    runner = doctest.DocTestRunner(optionflags=doctest.NORMALIZE_WHITESPACE)
    for test in finder.find(thing, name, globs={"geomkit": geomkit}):
        assert runner.run(test).failed == 0, test.name
