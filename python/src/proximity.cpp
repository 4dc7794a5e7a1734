// The quick test for being near to a set of points.
#include <cstddef>
#include <vector>

#include "families.h"
#include "forEachItem.h"
#include "geomKit/queries/ProximityTester.h"

namespace geomkitPython {

namespace {

using geomKit::ProximityTester;
using geomKit::Vector3;

ProximityTester _make(const py::handle& points, const py::handle& radius) {
    const Numbers<double> numbers(points, "points", {kAnyLength, 3});
    const Numbers<double> number(radius, "radius", Shape{});
    const auto* first = numbers.as<Vector3>();
    const py::gil_scoped_release unlocked;
    return ProximityTester(std::vector<Vector3>(first, first + numbers.count()), *number.data());
}

py::array _test(const ProximityTester& tester, const py::handle& queries, int workers) {
    const std::size_t threads = workerCount(workers);
    const Input<Vector3> input("queries", queries);
    const Output<bool> answers(input.numbers().leading());
    inPieces(input.numbers().count(), kItemsPerPiece, threads,
             [&](std::size_t first, std::size_t last) {
                 tester.test(input.items() + first, last - first, answers.items() + first);
             });
    return answers.array();
}

}  // namespace

void addProximity(py::module_& module) {
    py::class_<ProximityTester>(module, "ProximityTester")
        .def(py::init(&_make))
        .def("test", &_test)
        .def_property_readonly(
            "shape", [](const ProximityTester& t) { return py::make_tuple(t.nx, t.ny, t.nz); })
        .def_property_readonly("cell", [](const ProximityTester& t) {
            return py::make_tuple(t.cellX, t.cellY, t.cellZ);
        });
}

}  // namespace geomkitPython
