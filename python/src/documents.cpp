// Documents: saving mesh functions and loading them.
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <utility>

#include <pybind11/stl/filesystem.h>

#include "families.h"
#include "geomKit/meshFunc2d/MeshFunction2D.h"
#include "geomKit/tags/loadDocument.h"
#include "geomKit/tags/saveDocument.h"

namespace geomkitPython {

namespace py = pybind11;

namespace {

using geomKit::LoadedDocument;
using geomKit::LoadProblem;
using geomKit::LoadReport;
using geomKit::MeshFunction2D;

/// Names in documents of strangers may be no UTF-8.
py::str textOf(const std::string& text) {
    PyObject* const decoded = PyUnicode_DecodeUTF8(
        text.data(), static_cast<py::ssize_t>(text.size()), "backslashreplace");
    if (decoded == nullptr) throw py::error_already_set();
    return py::reinterpret_steal<py::str>(decoded);
}

/// (errno, message) of a failure of the system, (0, "") where there was none.
py::tuple reasonOf(const std::error_code& reason) {
    return py::make_tuple(reason.value(), textOf(reason ? reason.message() : std::string()));
}

/// (function or None, [(line, column, text), ...], omitted, reason).
py::tuple resultOf(LoadedDocument<MeshFunction2D>&& loaded) {
    py::list problems;
    for (const LoadProblem& problem : loaded.report.problems)
        problems.append(py::make_tuple(problem.line, problem.column, textOf(problem.text())));
    const std::size_t omitted = loaded.report.omitted;
    const py::tuple reason = reasonOf(loaded.reason);
    return py::make_tuple(std::move(loaded.object), problems, omitted, reason);
}

py::tuple load(const std::filesystem::path& path) {
    LoadedDocument<MeshFunction2D> loaded;
    {
        const py::gil_scoped_release unlocked;
        loaded = geomKit::loadDocumentFile<MeshFunction2D>(path);
    }
    return resultOf(std::move(loaded));
}

py::tuple loads(const py::bytes& document) {
    const std::string_view text = document;
    LoadedDocument<MeshFunction2D> loaded;
    {
        const py::gil_scoped_release unlocked;
        loaded = geomKit::loadDocumentText<MeshFunction2D>(text);
    }
    return resultOf(std::move(loaded));
}

/// (what failed, reason); nothing failed where the first is empty.
py::tuple save(const std::filesystem::path& path, const MeshFunction2D& function) {
    geomKit::SavedDocument saved;
    {
        const py::gil_scoped_release unlocked;
        saved = geomKit::saveDocumentFile(function, path);
    }
    saved.file.clear();  // the exception has a place of its own for the name
    return py::make_tuple(saved ? py::str() : textOf(saved.text()), reasonOf(saved.reason));
}

std::string dumps(const MeshFunction2D& function) {
    const py::gil_scoped_release unlocked;
    return geomKit::saveDocumentText(function).document;
}

}  // namespace

void addDocuments(py::module_& module) {
    module.def("load", &load, py::arg("path"));
    module.def("loads", &loads, py::arg("document"));
    module.def("save", &save, py::arg("path"), py::arg("function"));
    module.def("dumps", &dumps, py::arg("function"));
}

}  // namespace geomkitPython
