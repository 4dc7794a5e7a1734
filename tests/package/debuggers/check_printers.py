"""Run by GDB: what the printers show of show.cpp, and the names that the .natvis file uses.

`arguments` is set beforehand: the printers, the .natvis file.
"""
import re
import xml.etree.ElementTree
from typing import List

import gdb
import gdb.types

IDENTITY = "[(1, 0, 0), (0, 1, 0), (0, 0, 1)]"
NINE = "[(1, 4, 7), (2, 5, 8), (3, 6, 9)]"
SHOWN = {
    "vector": "(1, -2.5, 0.1)",
    "notNumbers": "(nan, 1e+300, -inf)",
    "unit": "(0, 0, 1)",
    "point": "(0.25, 3)",
    "counts": "(20, -1)",
    "rotation": NINE,
    "matrix": "[(1, 4, 7, 1), (2, 5, 8, -2.5), (3, 6, 9, 0.1), (0, 0, 0, 1)]",
    "matrixf": "[(1, 2, 3, 4), (5, 6, 7, 8), (9, 10, 11, 12), (13, 14, 15, 16)]",
    "transform": f"rotation {IDENTITY}, translation (1, -2.5, 0.1), scale 2",
    "bone": f"linear {NINE}, translation (1, -2.5, 0.1)",
    "box": "(0, 1, 2) to (3, 4, 5)",
    "thin": "(0, 0, 0) to (-9e-14, 0, 0)",
    "crossed": "empty",
    "mesh": "3 points, 1 facets, 1 boundaries = {",
    "mesh.params": "(1, 0)",
}


def wrong_prints() -> List[str]:
    wrong = []
    for expression, expected in SHOWN.items():
        shown = gdb.execute(f"output {expression}", to_string=True)
        if expected != shown and not ("mesh" in expression and expected in shown):
            wrong.append(f"{expression} is shown as {shown}, not {expected}")
    return wrong


def unknown_names(path: str) -> List[str]:
    """Names in the .natvis file's expressions that are no members of the type."""
    unknown = []
    space = "{http://schemas.microsoft.com/vstudio/debugger/natvis/2010}"
    types = xml.etree.ElementTree.parse(path).getroot().findall(f"{space}Type")
    for entry in types:
        name = entry.attrib["Name"].replace("<*>", "<double>")
        fields = gdb.lookup_type(name)
        expressions = [text.attrib.get("Condition", "") for text in entry]
        expressions += re.findall(
            "{(.*?)}", " ".join(text.text or "" for text in entry)
        )
        items = ("Item", "ValuePointer")
        expressions += [
            item.text or "" for tag in items for item in entry.iter(space + tag)
        ]
        for expression in expressions:
            for member in re.findall(r"(?<![\w.,])[A-Za-z]\w*", expression):
                if not gdb.types.has_field(fields, member):
                    unknown.append(f"{path}: {name} has no member {member}")
    return unknown if types else [f"{path} has no types"]


def main(printers: str, natvis: str) -> int:
    gdb.execute("set print elements 0")
    gdb.execute("set debuginfod enabled off")
    gdb.execute(f"source {printers}")
    gdb.execute("set confirm off")
    gdb.execute("break stopHere", to_string=True)
    gdb.execute("run", to_string=True)
    gdb.execute("up", to_string=True)
    wrong = wrong_prints() + unknown_names(natvis)
    for line in wrong:
        print("wrong:", line)
    return 1 if wrong else 0


try:
    STATUS = main(*arguments)  # type: ignore[name-defined]  # noqa
except gdb.error as trouble:
    print("wrong:", trouble)
    STATUS = 1
gdb.execute(f"quit {STATUS}")
