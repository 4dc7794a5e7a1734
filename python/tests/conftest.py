"""What several tests share."""

from __future__ import annotations

import locale
import shutil
import subprocess
from collections.abc import Iterator
from pathlib import Path

import pytest


@pytest.fixture(scope="session")
def locale_folder(tmp_path_factory: pytest.TempPathFactory) -> Path:
    if not shutil.which("localedef"):
        pytest.skip("no program makes locales")
    folder = tmp_path_factory.mktemp("locales")
    command = ["localedef", "-i", "de_DE", "-f", "UTF-8", folder / "de_DE.UTF-8"]
    if subprocess.run(command, capture_output=True, check=False).returncode != 0:
        pytest.skip("no sources of locales")
    return folder


@pytest.fixture
def decimal_comma(
    locale_folder: Path, monkeypatch: pytest.MonkeyPatch
) -> Iterator[None]:
    """A locale that writes 0,5, in the whole process."""
    monkeypatch.setenv("LOCPATH", str(locale_folder))
    before = locale.setlocale(locale.LC_ALL)
    locale.setlocale(locale.LC_ALL, "de_DE.UTF-8")
    assert locale.localeconv()["decimal_point"] == ","
    yield
    locale.setlocale(locale.LC_ALL, before)
