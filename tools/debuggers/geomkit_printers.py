"""GDB pretty printers for geomKit's value types and its mesh functions.

`source geomkit_printers.py` in GDB registers them. Values read as the library's own `<<` writes
them, doubles with as many digits as tell them apart.
"""
from typing import Iterator, Tuple, Type

import gdb
import gdb.printing

# A box is valid up to this, as in geomKit/vAlgebra/Tolerances.h.
NULL_COMPONENT_TOL = 1e-13


def number(value: gdb.Value) -> str:
    """A double as the shortest text that reads back as the same; any other number as GDB has it."""
    if value.type.strip_typedefs().code == gdb.TYPE_CODE_FLT and value.type.sizeof == 8:
        text = repr(float(value))
        return text[:-2] if text.endswith(".0") else text
    return str(value)


def tuple_of(values: Iterator[gdb.Value]) -> str:
    return f"({', '.join(number(value) for value in values)})"


def vector(value: gdb.Value) -> str:
    return tuple_of(value[name] for name in ("x", "y", "z"))


def matrix(value: gdb.Value, size: int) -> str:
    """The rows of `m_`, which holds them one after the other."""
    elements = value["m_"]
    rows = (
        tuple_of(elements[size * row + column] for column in range(size))
        for row in range(size)
    )
    return f"[{', '.join(rows)}]"


def is_valid(box: gdb.Value) -> bool:
    lower, upper = box["minPt"], box["maxPt"]
    return all(
        float(lower[name]) <= float(upper[name]) + NULL_COMPONENT_TOL
        for name in ("x", "y", "z")
    )


def vector_length(value: gdb.Value) -> int:
    """The number of elements of a `std::vector` of libstdc++."""
    implementation = value["_M_impl"]
    return int(implementation["_M_finish"] - implementation["_M_start"])


class Printer:
    """What all printers share."""

    def __init__(self, value: gdb.Value) -> None:
        self.value = value

    def to_string(self) -> str:
        raise NotImplementedError


class VectorPrinter(Printer):
    def to_string(self) -> str:
        return vector(self.value)


class Vect2Printer(Printer):
    def to_string(self) -> str:
        return tuple_of(self.value[name] for name in ("u", "v"))


class Matrix3Printer(Printer):
    def to_string(self) -> str:
        return matrix(self.value, 3)


class MatrixPrinter(Printer):
    def to_string(self) -> str:
        return matrix(self.value, 4)


class TransformPrinter(Printer):
    def to_string(self) -> str:
        rotation = matrix(self.value["rotation"], 3)
        translation = vector(self.value["translation"])
        scale = number(self.value["scale"])
        return f"rotation {rotation}, translation {translation}, scale {scale}"


class BoneTransformPrinter(Printer):
    def to_string(self) -> str:
        linear = matrix(self.value["linear"], 3)
        return f"linear {linear}, translation {vector(self.value['translation'])}"


class BboxPrinter(Printer):
    def to_string(self) -> str:
        if not is_valid(self.value):
            return "empty"
        return f"{vector(self.value['minPt'])} to {vector(self.value['maxPt'])}"


class MeshFunction2DPrinter(Printer):
    """Counts in a line, the data sequences and the boundaries as children.

    Compilers describe the class where its destructor is compiled, which is in the library.
    """

    NAMES = (
        "params",
        "values",
        "facets",
        "normaldots",
        "extrapolateFlag",
        "boundaryFacets",
    )

    def is_described(self) -> bool:
        return bool(self.value.type.strip_typedefs().fields())

    def to_string(self) -> str:
        if not self.is_described():
            return "no debug information about MeshFunction2D"
        points = vector_length(self.value["params"])
        facets = vector_length(self.value["facets"]) // 3
        boundaries = vector_length(self.value["boundaryFacets"])
        return f"{points} points, {facets} facets, {boundaries} boundaries"

    def children(self) -> Iterator[Tuple[str, gdb.Value]]:
        names = self.NAMES if self.is_described() else ()
        return ((name, self.value[name]) for name in names)


def collection() -> gdb.printing.RegexpCollectionPrettyPrinter:
    printers = gdb.printing.RegexpCollectionPrettyPrinter("geomKit")

    def add(name: str, pattern: str, printer: Type[Printer]) -> None:
        printers.add_printer(name, f"^{pattern}$", printer)

    add("Vector3", "geomKit::U?Vector3", VectorPrinter)
    add("vect2", "ktNM::vect2<.*>", Vect2Printer)
    add("Matrix3", "geomKit::Matrix3", Matrix3Printer)
    add("Matrix", "geomKit::Matrixf?", MatrixPrinter)
    add("Transform", "geomKit::Transform", TransformPrinter)
    add("BoneTransform", "geomKit::BoneTransform", BoneTransformPrinter)
    add("Bbox", "geomKit::Bbox", BboxPrinter)
    add("MeshFunction2D", "geomKit::MeshFunction2D", MeshFunction2DPrinter)
    return printers


gdb.printing.register_pretty_printer(gdb.current_objfile(), collection(), replace=True)
