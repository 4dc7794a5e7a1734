"""Saved mesh functions, broken ones, and what is wrong with a mesh."""

from __future__ import annotations

import copy
import errno
import os
import pickle
import warnings
import xml.etree.ElementTree as ET
from pathlib import Path

import geomkit
import numpy as np
import pytest

RANDOM = np.random.default_rng(31)
PARAMS = RANDOM.random((30, 2))
FUNCTION = geomkit.MeshFunction2D(
    PARAMS.round(6),
    RANDOM.normal(size=(30, 2)).round(6),
    [[i, i + 1, i + 2] for i in range(28)],
    RANDOM.random(30),
)
TEXT = geomkit.dumps(FUNCTION)
POINTS = RANDOM.random((500, 2)) * 2


def same(a: geomkit.MeshFunction2D, b: geomkit.MeshFunction2D) -> bool:
    answers = [f.evaluate(POINTS, extrapolate=True) for f in (a, b)]
    return all(x.tobytes() == y.tobytes() for x, y in zip(*answers))


def test_documents_are_xml_and_load_back(tmp_path: Path) -> None:
    root = ET.fromstring(TEXT)
    read = [[float(p.get("u")), float(p.get("v"))] for p in root.find("params")]
    assert np.array_equal(read, FUNCTION.params)
    path = tmp_path / "möbius.xml"
    geomkit.save(path, FUNCTION)
    assert path.read_text() == TEXT
    documents = {
        "str": TEXT,
        "bytes": TEXT.encode(),
        "utf-16": TEXT.replace("UTF-8", "UTF-16"),
    }
    documents["utf-16"] = documents["utf-16"].encode("utf-16")
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        for kind, loaded in [
            ("path", geomkit.load(path)),
            ("name", geomkit.load(path=str(path))),
            *((kind, geomkit.loads(document)) for kind, document in documents.items()),
        ]:
            assert same(loaded, FUNCTION), kind


def test_no_locale_changes_a_document(decimal_comma: None) -> None:
    assert geomkit.dumps(FUNCTION) == TEXT
    assert same(geomkit.loads(TEXT), FUNCTION)


@pytest.mark.parametrize(
    ("document", "line", "column", "reason"),
    [
        ("mesh.xml", 0, 0, "it has no tag"),
        (b"", 0, 0, "no document"),
        (
            TEXT[: TEXT.index("</params>")],
            TEXT.count("\n", 0, TEXT.index("</params>")) + 1,
            None,
            "not well-formed",
        ),
        (TEXT.replace("<super/>", "<super>"), None, None, "not well-formed"),
        ("<Other/>", 1, 1, 'Other: unknown class "Other"'),
        (b"\n <\xff\xfe/>", None, None, ""),
    ],
)
def test_broken_documents(document, line, column, reason: str) -> None:
    with pytest.raises(geomkit.DocumentError) as caught:
        geomkit.loads(document)
    error = caught.value
    assert line is None or error.line == line
    assert column is None or error.column == column
    assert reason in error.reason
    copied = pickle.loads(pickle.dumps(error))
    assert (copied.line, copied.column, str(copied)) == (
        error.line,
        error.column,
        str(error),
    )


def test_what_was_passed_over_is_warned_of(tmp_path: Path) -> None:
    lines = TEXT.splitlines()
    lines[4] = '    <param u="zero" v="0"/><other/>'
    path = tmp_path / "mesh.xml"
    path.write_text("\n".join(lines))
    with pytest.warns(geomkit.DocumentWarning) as caught:
        loaded = geomkit.load(path)
    assert np.array_equal(loaded.params[1:], FUNCTION.params[1:])
    texts = [str(warning.message) for warning in caught]
    assert texts[0].startswith(
        f"{path}: line 5, column 5, MeshFunction2D/params/param[1]/@u"
    )
    assert texts[1].startswith(
        f"{path}: line 5, column 28, MeshFunction2D/params/other"
    )
    assert {Path(warning.filename).name for warning in caught} == {Path(__file__).name}
    many = (
        TEXT.replace("<param ", "<wrong ")
        .replace("<value ", "<wrong ")
        .replace("<facet>", "<x>")
    )
    with pytest.warns(geomkit.DocumentWarning, match="and [0-9]+ more"):
        geomkit.loads(many.replace("</facet>", "</x>"))


def test_documents_that_do_not_hold_together_copy_and_pickle() -> None:
    document = TEXT.replace("<facet>3</facet>", "<facet>999</facet>").replace(
        "</facets>", "<facet>1</facet></facets>"
    )
    with pytest.warns(UserWarning) as caught:
        loaded = geomkit.loads(document)
    assert {warning.category for warning in caught} == {
        geomkit.DocumentWarning,
        geomkit.MeshWarning,
    }
    assert loaded.check().fault is geomkit.MeshFault.PARTIAL_TRIPLE
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        for other in (copy.deepcopy(loaded), pickle.loads(pickle.dumps(loaded))):
            assert same(other, loaded)
            assert geomkit.dumps(other) == geomkit.dumps(loaded)


def test_hostile_documents_load_or_are_refused() -> None:
    data = TEXT.encode()
    for _ in range(300):
        broken = bytearray(data)
        for at in RANDOM.integers(0, len(data), 3):
            broken[at] = RANDOM.integers(0, 256)
        with warnings.catch_warnings():
            warnings.simplefilter("ignore")
            try:
                assert geomkit.loads(broken)(POINTS).shape == POINTS.shape
            except geomkit.DocumentError as error:
                assert error.reason


@pytest.mark.parametrize(
    ("call", "error", "number"),
    [
        (lambda p: geomkit.load(p / "none.xml"), FileNotFoundError, errno.ENOENT),
        (lambda p: geomkit.load(p), IsADirectoryError, errno.EISDIR),
        (
            lambda p: geomkit.save(p / "none" / "x.xml", FUNCTION),
            FileNotFoundError,
            errno.ENOENT,
        ),
        (lambda p: geomkit.save(p / "x.xml", 7), TypeError, None),
        (lambda p: geomkit.loads(7), TypeError, None),
        (lambda p: geomkit.load(7), TypeError, None),
    ],
)
def test_files_that_cannot_be(
    call, error: type, number: int | None, tmp_path: Path
) -> None:
    with pytest.raises(error) as caught:
        call(tmp_path)
    assert number is None or caught.value.errno == number
    assert number is None or str(tmp_path) in os.fspath(caught.value.filename)


@pytest.mark.parametrize(
    ("params", "silent", "fault", "index"),
    [
        ([[0, 0], [1, 0], [0, 1], [1, 1]], 0, geomkit.MeshFault.NONE, 0),
        ([[0, 0], [1, 0], [0, 1], [0.5, 0.5]], 1, geomkit.MeshFault.TOO_SMALL, 1),
        ([[0, 0], [1, 0], [0, 1e-8], [1, 1]], 0, geomkit.MeshFault.NONE, 0),
        ([[0, 0], [1, 0], [0, 0.99e-8], [1, 1]], 1, geomkit.MeshFault.TOO_SMALL, 0),
        (
            [[0, 0], [1, 0], [0, 1], [np.nan, 1]],
            1,
            geomkit.MeshFault.PARAM_NOT_FINITE,
            3,
        ),
    ],
)
def test_silent_facets_are_warned_of_once(
    params, silent: int, fault, index: int
) -> None:
    facets = [[0, 1, 2], [1, 3, 2]]
    with warnings.catch_warnings(record=True) as caught:
        warnings.simplefilter("always")
        function = geomkit.MeshFunction2D(params, params, facets)
        geomkit.Field2D(params, np.zeros((4, 5)), facets)
        copy.deepcopy(function).evaluate(POINTS)
    wanted = f"{silent} of 2 facets can never answer"
    assert [str(w.message)[: len(wanted)] for w in caught] == [wanted] * (
        2 if silent else 0
    )
    assert {Path(w.filename).name for w in caught} <= {Path(__file__).name}
    check = function.check()
    assert (check.fault, check.index, check.silent_facets) == (fault, index, silent)
    assert bool(check) == (fault == geomkit.MeshFault.NONE)
    found = function.evaluate(np.random.default_rng(1).random((1000, 2))).found
    assert found.any() or silent == 2
