// The nearest points on a polyline.
#include <tuple>
#include <vector>

#include "families.h"
#include "forEachItem.h"
#include "geomKit/queries/PolylineProjector.h"

namespace geomkitPython {

namespace {

using geomKit::PolylineProjection;
using geomKit::PolylineProjector;
using geomKit::Vector3;

/// A query takes less than a microsecond as a rule, and some milliseconds where very many segments
/// are nearly as near.
constexpr std::size_t kQueriesPerPiece = 32;

PolylineProjector _make(const py::handle& points) {
    const Numbers<double> numbers(points, "points", {kAnyLength, 3});
    const auto* first = numbers.as<Vector3>();
    const py::gil_scoped_release unlocked;
    return PolylineProjector(std::vector<Vector3>(first, first + numbers.count()));
}

py::tuple _nearest(const PolylineProjector& line, const py::handle& queries, int workers) {
    const auto single = [&line](const Vector3& query) {
        const PolylineProjection nearest = line.nearest(query);
        return std::make_tuple(nearest.segment, nearest.param, nearest.point);
    };
    return forEachItem({workers, kQueriesPerPiece}, single, Input<Vector3>("queries", queries));
}

py::array_t<double> _points(const py::object& self) {
    const auto& points = self.cast<const PolylineProjector&>().points;
    const Shape shape = {static_cast<py::ssize_t>(points.size()), 3};
    return readOnlyView(shape, reinterpret_cast<const double*>(points.data()), self);
}

py::array_t<double> _arcLength(const py::object& self) {
    const auto& lengths = self.cast<const PolylineProjector&>().arcLength;
    return readOnlyView({static_cast<py::ssize_t>(lengths.size())}, lengths.data(), self);
}

}  // namespace

void addProjector(py::module_& module) {
    py::class_<PolylineProjector>(module, "PolylineProjector")
        .def(py::init(&_make))
        .def("nearest", &_nearest)
        .def_property_readonly("points", &_points)
        .def_property_readonly("arc_length", &_arcLength);
}

}  // namespace geomkitPython
