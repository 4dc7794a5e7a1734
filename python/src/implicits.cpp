// Implicit surfaces: fits, and fields at arrays of points.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <utility>
#include <vector>

#include "families.h"
#include "forEachItem.h"
#include "geomKit/implicits/ImplEllipsoid.h"
#include "geomKit/implicits/Implicit.h"

namespace geomkitPython {

namespace {

using geomKit::ImplEllipsoid;
using geomKit::Implicit;
using geomKit::Matrix3;
using geomKit::Vector3;
using Samples = std::vector<std::pair<Vector3, double>>;
using Clock = std::chrono::steady_clock;

/// A field and what of it is not its own to restore.
struct Field {
    Implicit implicit;
    bool metZeroPivot;
};

Samples samplesOf(const py::object& points, const py::object& values) {
    const Numbers<double> pointArray(points, "points", {kAnyLength, 3});
    const Numbers<double> valueArray(values, "values", {kAnyLength});
    if (valueArray.count() != pointArray.count()) {
        throw py::value_error("values: length " + std::to_string(valueArray.count()) +
                              ", wanted that of points, " + std::to_string(pointArray.count()));
    }
    Samples samples(pointArray.count());
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = {pointArray.as<Vector3>()[i], valueArray.data()[i]};
    return samples;
}

/// Takes the lock now and then to ask for interrupts and to tell Python how far the fit is.
class Telling {
public:
    explicit Telling(const py::object& listener) : listener_(listener) {}

    void operator()(double share) {
        constexpr auto kPatience = std::chrono::milliseconds(50);
        const Clock::time_point now = Clock::now();
        if (now - told_ < kPatience && share < 1.0) return;
        told_ = now;
        // A second pass counts from 0 again.
        share_ = (std::max)(share_, share);
        const py::gil_scoped_acquire lock;
        if (PyErr_CheckSignals() != 0) throw py::error_already_set();
        if (!listener_.is_none()) listener_(share_);
    }

private:
    const py::object& listener_;
    Clock::time_point told_ = Clock::now();
    double share_ = 0.0;
};

Field fit(const py::object& points, const py::object& values, const py::object& progress) {
    if (!progress.is_none() && PyCallable_Check(progress.ptr()) == 0)
        throw py::type_error("progress: not callable");
    const Samples samples = samplesOf(points, values);
    Telling telling(progress);
    const py::gil_scoped_release unlocked;
    Implicit implicit(samples, [&telling](double share) { telling(share); });
    const bool metZeroPivot = implicit.metZeroPivot();
    return {std::move(implicit), metZeroPivot};
}

/// A field as it was read from another one, without a fit.
Field restore(const py::object& centers, const py::object& weights, const py::object& linear,
              double offset, bool metZeroPivot) {
    Field field = {Implicit(Samples()), metZeroPivot};
    for (const auto& [center, weight] : samplesOf(centers, weights)) {
        field.implicit.centers.push_back(center);
        field.implicit.weights.push_back(weight);
    }
    field.implicit.linear = *Input<Vector3>("linear", linear).items();
    field.implicit.offset = offset;
    return field;
}

/// Points whose terms take some milliseconds at the most: whole groups of those that the field
/// takes side by side.
std::size_t pieceOf(const Implicit& implicit) {
    constexpr std::size_t kGroup = 16;
    constexpr std::size_t kTerms = 1000000;
    return kGroup * (kTerms / (kGroup * (implicit.centers.size() + 1)) + 1);
}

template <typename Out, typename Function>
py::array_t<double> evaluate(const Field& field, const py::object& points, int workers,
                             const Function& function) {
    const std::size_t threads = workerCount(workers);
    const Input<Vector3> at("points", points);
    const Output<Out> answers(at.numbers().leading());
    inPieces(at.numbers().count(), pieceOf(field.implicit), threads,
             [&](std::size_t first, std::size_t last) {
                 function(field.implicit, at.items() + first, last - first,
                          answers.items() + first);
             });
    return answers.array();
}

py::array_t<double> values(const Field& field, const py::object& points, int workers) {
    const auto call = [](const Implicit& f, const Vector3* at, std::size_t count, double* out) {
        f.evaluate(at, count, out);
    };
    return evaluate<double>(field, points, workers, call);
}

py::array_t<double> gradients(const Field& field, const py::object& points, int workers) {
    const auto call = [](const Implicit& f, const Vector3* at, std::size_t count, Vector3* out) {
        f.getGradient(at, count, out);
    };
    return evaluate<Vector3>(field, points, workers, call);
}

py::array_t<double> centers(const py::object& self) {
    const std::vector<Vector3>& list = self.cast<const Field&>().implicit.centers;
    const auto count = static_cast<py::ssize_t>(list.size());
    return readOnlyView(Shape{count, 3}, reinterpret_cast<const double*>(list.data()), self);
}

py::array_t<double> weights(const py::object& self) {
    const std::vector<double>& list = self.cast<const Field&>().implicit.weights;
    return readOnlyView(Shape{static_cast<py::ssize_t>(list.size())}, list.data(), self);
}

py::array_t<double> linear(const py::object& self) {
    const Vector3& coefficients = self.cast<const Field&>().implicit.linear;
    return readOnlyView(Shape{3}, coefficients.data(), self);
}

ImplEllipsoid fitEllipsoid(const py::object& points, const py::object& center) {
    const Numbers<double> array(points, "points", {kAnyLength, 3});
    const std::vector<Vector3> list(array.as<Vector3>(), array.as<Vector3>() + array.count());
    if (center.is_none()) {
        const py::gil_scoped_release unlocked;
        return ImplEllipsoid(list);
    }
    const Numbers<double> about(center, "center", {3});
    const Vector3 c = *about.as<Vector3>();
    const py::gil_scoped_release unlocked;
    return {list, c};
}

ImplEllipsoid restoreEllipsoid(const py::object& center, const py::object& matrix) {
    ImplEllipsoid ellipsoid({}, Numbers<double>(center, "center", {3}).as<Vector3>()[0]);
    ellipsoid.matrix = Numbers<double>(matrix, "matrix", {3, 3}).as<Matrix3>()[0];
    return ellipsoid;
}

py::array_t<double> ellipsoidValues(const ImplEllipsoid& ellipsoid, const py::object& points,
                                    int workers) {
    return forEach<double>(
        workers,
        [&ellipsoid](const Vector3& p) {
            double value = 0.0;
            ellipsoid.evaluate(p, &value, nullptr, nullptr);
            return value;
        },
        Input<Vector3>("points", points));
}

py::array_t<double> ellipsoidCenter(const py::object& self) {
    return readOnlyView(Shape{3}, self.cast<const ImplEllipsoid&>().center.data(), self);
}

py::array_t<double> ellipsoidMatrix(const py::object& self) {
    return readOnlyView(Shape{3, 3}, self.cast<const ImplEllipsoid&>().matrix.data(), self);
}

}  // namespace

void addImplicits(py::module_& module) {
    py::class_<Field>(module, "Field")
        .def(py::init(&fit), py::arg("points"), py::arg("values"), py::arg("progress"))
        .def_static("restore", &restore, py::arg("centers"), py::arg("weights"), py::arg("linear"),
                    py::arg("offset"), py::arg("met_zero_pivot"))
        .def("values", &values, py::arg("points"), py::arg("workers"))
        .def("gradients", &gradients, py::arg("points"), py::arg("workers"))
        .def_property_readonly("centers", &centers)
        .def_property_readonly("weights", &weights)
        .def_property_readonly("linear", &linear)
        .def_property_readonly("offset", [](const Field& f) { return f.implicit.offset; })
        .def_readonly("met_zero_pivot", &Field::metZeroPivot);
    py::class_<ImplEllipsoid>(module, "Ellipsoid")
        .def(py::init(&fitEllipsoid), py::arg("points"), py::arg("center"))
        .def_static("restore", &restoreEllipsoid, py::arg("center"), py::arg("matrix"))
        .def("values", &ellipsoidValues, py::arg("points"), py::arg("workers"))
        .def("thickened", &ImplEllipsoid::thickened, py::arg("distance"))
        .def_property_readonly("center", &ellipsoidCenter)
        .def_property_readonly("matrix", &ellipsoidMatrix);
}

}  // namespace geomkitPython
