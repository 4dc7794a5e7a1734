// The extension module `geomkit._core`: loops over arrays for the Python code of the package.
#include "families.h"

PYBIND11_MODULE(_core, module) {
    module.doc() = "Loops of the geomKit library over NumPy arrays. Internal to the package.";
    geomkitPython::addImplicits(module);
    geomkitPython::addMeshFunctions(module);
    geomkitPython::addDocuments(module);
    geomkitPython::addDrawing(module);
    geomkitPython::addSkinning(module);
    geomkitPython::addTransforms(module);
    geomkitPython::addNumerics(module);
    geomkitPython::addProjector(module);
    geomkitPython::addProximity(module);
    geomkitPython::addQueries(module);
    geomkitPython::addSegments(module);
}
