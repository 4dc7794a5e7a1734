"""The package and its examples pass the strictest check of types."""

from __future__ import annotations

import subprocess
import sys
from pathlib import Path

import pytest

ROOT = Path(__file__).parents[2]


@pytest.mark.parametrize("what", ["package", "examples"])
def test_types_are_strict(what: str) -> None:
    pytest.importorskip("mypy")
    examples = sorted(map(str, ROOT.glob("python/examples/*.py")))
    command = [sys.executable, "-m", "mypy", "--strict", "--cache-dir"]
    command += [str(ROOT / "build" / "python" / "mypy")]
    command += ["-p", "geomkit"] if what == "package" else examples
    answer = subprocess.run(command, cwd=ROOT, capture_output=True, text=True)
    assert answer.returncode == 0, answer.stdout + answer.stderr
