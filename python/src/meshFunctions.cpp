// Mesh functions: building them from arrays, and evaluating them at arrays of points.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "Numbers.h"
#include "families.h"
#include "geomKit/internal/outputs.h"
#include "geomKit/meshFunc2d/MeshFunction2D.h"
#include "geomKit/meshFunc2d/barycentric.h"
#include "inPieces.h"

namespace geomkitPython {

namespace {

using geomKit::MeshFunction2D;
using geomKit::PolylineProjector;
using Point = MeshFunction2D::Point;
using Function = std::unique_ptr<MeshFunction2D>;

/// Some hundred microseconds of work.
constexpr std::size_t kPiece = 4096;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// The vertex numbers of facets, each of which must be valid.
std::vector<int> facetsOf(const py::object& argument, std::size_t vertices) {
    const Numbers<std::int64_t> facets(argument, "facets", {kAnyLength, 3});
    std::vector<int> numbers(3 * facets.count());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const std::int64_t vertex = facets.data()[i];
        if (vertex < 0 || static_cast<std::uint64_t>(vertex) >= vertices) {
            throw py::value_error("facets: facet " + std::to_string(i / 3) + " has vertex " +
                                  std::to_string(vertex) + " of " + std::to_string(vertices));
        }
        numbers[i] = static_cast<int>(vertex);
    }
    return numbers;
}

/// One item for each vertex.
template <typename T, typename Item>
void assign(std::vector<Item>& items, const Numbers<T>& numbers, const char* name,
            std::size_t vertices) {
    if (numbers.count() != vertices) {
        throw py::value_error(std::string(name) + ": length " + std::to_string(numbers.count()) +
                              ", wanted that of params, " + std::to_string(vertices));
    }
    const Item* first = numbers.template as<Item>();
    items.assign(first, first + vertices);
}

Function make(const py::object& params, const py::object& values, const py::object& facets,
              const py::object& floats, bool extrapolate) {
    auto function = std::make_unique<MeshFunction2D>(extrapolate);
    const Numbers<double> paramNumbers(params, "params", {kAnyLength, 2});
    const std::size_t vertices = paramNumbers.count();
    assign(function->params, paramNumbers, "params", vertices);
    assign(function->values, Numbers<double>(values, "values", {kAnyLength, 2}), "values",
           vertices);
    function->facets = facetsOf(facets, vertices);
    if (!floats.is_none()) {
        assign(function->normaldots, Numbers<float>(floats, "floats", {kAnyLength}), "floats",
               vertices);
    }
    const py::gil_scoped_release unlocked;
    function->initEvaluatorHelper();
    return function;
}

template <typename T, typename Item>
void assignAll(std::vector<Item>& items, const Numbers<T>& numbers) {
    items.assign(numbers.template as<Item>(), numbers.template as<Item>() + numbers.count());
}

/// A function as it was read from another one, also one whose data do not hold together.
Function restore(const py::object& params, const py::object& values, const py::object& facetList,
                 const py::object& floats, bool extrapolate) {
    auto function = std::make_unique<MeshFunction2D>(extrapolate);
    assignAll(function->params, Numbers<double>(params, "params", {kAnyLength, 2}));
    assignAll(function->values, Numbers<double>(values, "values", {kAnyLength, 2}));
    assignAll(function->normaldots, Numbers<float>(floats, "floats", {kAnyLength}));
    const Numbers<std::int64_t> vertices(facetList, "facets", {kAnyLength});
    for (std::size_t i = 0; i < vertices.count(); ++i)
        function->facets.push_back(static_cast<int>(vertices.data()[i]));
    const py::gil_scoped_release unlocked;
    function->initEvaluatorHelper();
    return function;
}

/// How many facets can never answer: those without three vertices, and those whose determinant is
/// below 1e-8 in absolute value or not a number.
std::size_t silentFacets(const MeshFunction2D& function) {
    const auto isVertex = [&](int i) {
        return i >= 0 && static_cast<std::size_t>(i) <
                             (std::min)(function.params.size(), function.values.size());
    };
    const auto corner = [&](int i) { return function.params[static_cast<std::size_t>(i)]; };
    std::size_t count = 0;
    for (std::size_t f = 0; f + 3 <= function.facets.size(); f += 3) {
        const int* const v = &function.facets[f];
        if (!isVertex(v[0]) || !isVertex(v[1]) || !isVertex(v[2])) {
            ++count;
            continue;
        }
        const geomKit::detail::FacetEdges edges(corner(v[0]), corner(v[1]), corner(v[2]));
        if (edges.isDegenerate() || std::isnan(edges.det)) ++count;
    }
    return count;
}

/// (fault, index, silent facets, text).
py::tuple check(const MeshFunction2D& function) {
    const geomKit::MeshFunction2DCheck result = function.check();
    return py::make_tuple(static_cast<int>(result.fault), result.index, silentFacets(function),
                          result.text());
}

/// The same mesh with other values: nothing is built again.
Function withValues(const MeshFunction2D& function, const py::object& values) {
    const Numbers<double> numbers(values, "values", {kAnyLength, 2});
    Function other(function.copy());
    assign(other->values, numbers, "values", function.params.size());
    return other;
}

/// Where the answers for an array of points go. Null: they are not wanted.
struct Answers {
    Point* values;
    float* floats;
    bool* found;
};

void evaluate(const MeshFunction2D& function, const Point* points, std::size_t first,
              std::size_t last, bool extrapolate, const Answers& answers) {
    float* const floats = geomKit::detail::offset(answers.floats, first);
    if (extrapolate) {
        function.extrapolate(points + first, last - first, answers.values + first, floats,
                             answers.found + first);
    } else {
        function.evaluate(points + first, last - first, answers.values + first, floats,
                          answers.found + first);
    }
    for (std::size_t i = first; i < last; ++i) {
        if (answers.found[i]) continue;
        answers.values[i] = {kNaN, kNaN};
        if (floats != nullptr) answers.floats[i] = std::numeric_limits<float>::quiet_NaN();
    }
}

py::tuple evaluateArray(const MeshFunction2D& function, const py::object& points, bool extrapolate,
                        bool wantsFloats, int workers) {
    const std::size_t threads = workerCount(workers);
    const Numbers<double> numbers(points, "points", {kAnyShape, 2});
    py::array_t<double> values(numbers.shapeWith({2}));
    py::array_t<bool> found(numbers.leading());
    py::object floats = py::none();
    Answers answers = {itemsOf<Point>(values), nullptr, found.mutable_data()};
    if (wantsFloats) {
        py::array_t<float> array(numbers.leading());
        answers.floats = array.mutable_data();
        floats = array;
    }
    const Point* const first = numbers.as<Point>();
    inPieces(numbers.count(), kPiece, threads, [&](std::size_t begin, std::size_t end) {
        evaluate(function, first, begin, end, extrapolate, answers);
    });
    return py::make_tuple(values, floats, found);
}

template <typename Item>
auto viewOf(std::vector<Item> MeshFunction2D::*items, py::ssize_t columns) {
    return [items, columns](const py::object& self) {
        const auto& function = self.cast<const MeshFunction2D&>();
        const std::vector<Item>& list = function.*items;
        using T = std::conditional_t<std::is_same_v<Item, Point>, double, Item>;
        const auto numbers = static_cast<py::ssize_t>(list.size() * sizeof(Item) / sizeof(T));
        const Shape shape = columns == 1 ? Shape{numbers} : Shape{numbers / columns, columns};
        return readOnlyView(shape, reinterpret_cast<const T*>(list.data()), self);
    };
}

py::list boundaries(const MeshFunction2D& function) {
    py::list chains;
    for (const std::unique_ptr<PolylineProjector>& chain : function.boundaries) {
        py::array_t<double> array(Shape{static_cast<py::ssize_t>(chain->points.size()), 2});
        Point* point = itemsOf<Point>(array);
        for (const geomKit::Vector3& p : chain->points)
            *point++ = {p.x, p.y};
        chains.append(array);
    }
    return chains;
}

}  // namespace

void addMeshFunctions(py::module_& module) {
    py::class_<MeshFunction2D>(module, "MeshFunction")
        .def(py::init(&make), py::arg("params"), py::arg("values"), py::arg("facets"),
             py::arg("floats"), py::arg("extrapolate"))
        .def_static("restore", &restore, py::arg("params"), py::arg("values"),
                    py::arg("facet_list"), py::arg("floats"), py::arg("extrapolate"))
        .def("check", &check)
        .def("with_values", &withValues, py::arg("values"))
        .def("evaluate", &evaluateArray, py::arg("points"), py::arg("extrapolate"),
             py::arg("wants_floats"), py::arg("workers"))
        .def_property_readonly("params", viewOf(&MeshFunction2D::params, 2))
        .def_property_readonly("values", viewOf(&MeshFunction2D::values, 2))
        .def_property_readonly("facets", viewOf(&MeshFunction2D::facets, 3))
        .def_property_readonly("facet_list", viewOf(&MeshFunction2D::facets, 1))
        .def_property_readonly("floats", viewOf(&MeshFunction2D::normaldots, 1))
        .def_property_readonly("extrapolates",
                               [](const MeshFunction2D& f) { return f.extrapolateFlag; })
        .def_property_readonly("boundaries", &boundaries);
}

}  // namespace geomkitPython
