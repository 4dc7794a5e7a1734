"""The code of the page and of the notebook runs, and their pictures are drawn."""

from __future__ import annotations

import re
import subprocess
import sys
from pathlib import Path

import matplotlib
import matplotlib.image
import pytest

ROOT = Path(__file__).parents[2]
PAGE = ROOT / "docs" / "python.md"
EXAMPLES = ROOT / "python" / "examples"
matplotlib.use("Agg")


def test_page_runs(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.chdir(tmp_path)
    names: dict[str, object] = {}
    for block in re.findall(r"^```python\n(.*?)^```", PAGE.read_text(), re.M | re.S):
        exec(compile(block, f"docs/python.md: {block[:40]!r}", "exec"), names)
    colors = matplotlib.image.imread(tmp_path / "first.png")[..., :3]
    assert len({tuple(color) for color in colors.reshape(-1, 3)}) > 20


def test_pictures_are_those_of_the_page(tmp_path: Path) -> None:
    command = [sys.executable, str(EXAMPLES / "pictures.py"), str(tmp_path)]
    subprocess.run(command, check=True, capture_output=True)
    shown = re.findall(r"\(images/(.*?)\)", PAGE.read_text())
    assert sorted(path.name for path in tmp_path.iterdir()) == sorted(shown)
    for name in shown:
        assert (tmp_path / name).stat().st_size < 150_000, name
        assert (ROOT / "docs" / "images" / name).exists(), name


def test_notebook_runs() -> None:
    nbformat = pytest.importorskip("nbformat")
    nbclient = pytest.importorskip("nbclient")
    jupyter_client = pytest.importorskip("jupyter_client")
    pytest.importorskip("ipykernel")
    notebook = nbformat.read(EXAMPLES / "geomkit.ipynb", as_version=4)
    kernel = jupyter_client.manager.AsyncKernelManager()
    launcher = ["-m", "ipykernel_launcher", "-f", "{connection_file}"]
    kernel.kernel_spec.argv = [sys.executable, *launcher]
    folder = {"metadata": {"path": str(EXAMPLES)}}
    nbclient.NotebookClient(notebook, km=kernel, timeout=60, resources=folder).execute()
    pictures = [
        output
        for cell in notebook.cells
        for output in cell.get("outputs", [])
        if "image/png" in output.get("data", {})
    ]
    assert len(pictures) == 5
