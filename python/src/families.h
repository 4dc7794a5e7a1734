// What each source file adds to the extension.
#pragma once

#include <pybind11/pybind11.h>

namespace geomkitPython {

void addDocuments(pybind11::module_& module);
void addDrawing(pybind11::module_& module);
void addImplicits(pybind11::module_& module);
void addMeshFunctions(pybind11::module_& module);
void addSkinning(pybind11::module_& module);
void addTransforms(pybind11::module_& module);
void addNumerics(pybind11::module_& module);
void addProjector(pybind11::module_& module);
void addProximity(pybind11::module_& module);
void addQueries(pybind11::module_& module);
void addSegments(pybind11::module_& module);

}  // namespace geomkitPython
