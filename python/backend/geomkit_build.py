"""Build the wheel: CMake makes the extension, and the wheel is a zip file of it and the package.

A build backend in the sense of PEP 517 that needs nothing but the standard library, so that
`pip install .` works without a network.
"""

from __future__ import annotations

import base64
import hashlib
import os
import subprocess
import sys
import sysconfig
import tomllib
import zipfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
PACKAGE = ROOT / "python" / "geomkit"
BUILD = ROOT / "build" / "python" / "extension"
# Zip files know no time before 1980; a fixed one makes equal wheels of equal trees.
EPOCH = (1980, 1, 1, 0, 0, 0)


def _project() -> dict[str, str]:
    with open(ROOT / "pyproject.toml", "rb") as file:
        project: dict[str, str] = tomllib.load(file)["project"]
    return project


def _tag() -> str:
    python = f"cp{sys.version_info.major}{sys.version_info.minor}"
    platform = sysconfig.get_platform().replace("-", "_").replace(".", "_")
    return f"{python}-{python}-{platform}"


def _build_extension() -> Path:
    jobs = str(os.cpu_count() or 2)
    configure = [
        "cmake",
        *("-S", str(ROOT), "-B", str(BUILD), "--log-level=WARNING"),
        *("-D", "CMAKE_BUILD_TYPE=Release", "-D", "BUILD_SHARED_LIBS=OFF"),
        *(
            "-D",
            "GEOMKIT_BUILD_PYTHON=ON",
            "-D",
            f"Python3_EXECUTABLE={sys.executable}",
        ),
        *("-D", "GEOMKIT_BUILD_TESTS=OFF", "-D", "GEOMKIT_BUILD_EXAMPLES=OFF"),
        *("-D", "GEOMKIT_INSTALL=OFF"),
    ]
    subprocess.run(configure, check=True)
    build = [
        "cmake",
        "--build",
        str(BUILD),
        "--parallel",
        jobs,
        "--target",
        "geomkit_python",
    ]
    subprocess.run(build, check=True)
    suffix = sysconfig.get_config_var("EXT_SUFFIX")
    return BUILD / "python" / f"_core{suffix}"


def _metadata() -> str:
    project = _project()
    return "\n".join(
        [
            "Metadata-Version: 2.1",
            f"Name: {project['name']}",
            f"Version: {project['version']}",
            f"Summary: {project['description']}",
            f"Requires-Python: {project['requires-python']}",
            *(f"Requires-Dist: {name}" for name in project["dependencies"]),
            "License: MIT",
            "Description-Content-Type: text/markdown",
            "",
            (ROOT / project["readme"]).read_text(encoding="utf-8"),
        ]
    )


def _record_line(name: str, data: bytes) -> str:
    digest = (
        base64.urlsafe_b64encode(hashlib.sha256(data).digest()).rstrip(b"=").decode()
    )
    return f"{name},sha256={digest},{len(data)}"


def build_wheel(
    wheel_directory: str,
    config_settings: dict[str, str] | None = None,
    metadata_directory: str | None = None,
) -> str:
    project = _project()
    info = f"{project['name']}-{project['version']}.dist-info"
    extension = _build_extension()
    files = {f"geomkit/{extension.name}": extension.read_bytes()}
    for path in sorted(PACKAGE.rglob("*")):
        if path.suffix in (".py", ".pyi", ".typed"):
            files[f"geomkit/{path.relative_to(PACKAGE).as_posix()}"] = path.read_bytes()
    files[f"{info}/METADATA"] = _metadata().encode()
    files[f"{info}/LICENSE"] = (ROOT / "LICENSE").read_bytes()
    wheel = f"Wheel-Version: 1.0\nGenerator: geomkit\nRoot-Is-Purelib: false\nTag: {_tag()}\n"
    files[f"{info}/WHEEL"] = wheel.encode()
    record = [_record_line(name, data) for name, data in files.items()]
    files[f"{info}/RECORD"] = "\n".join([*record, f"{info}/RECORD,,", ""]).encode()

    name = f"{project['name']}-{project['version']}-{_tag()}.whl"
    with zipfile.ZipFile(
        Path(wheel_directory) / name, "w", zipfile.ZIP_DEFLATED
    ) as archive:
        for path_in_wheel, data in files.items():
            archive.writestr(
                zipfile.ZipInfo(path_in_wheel, EPOCH), data, zipfile.ZIP_DEFLATED
            )
    return name
