// Roots, eigensystems, and the planes and lines that fit points best.
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <tuple>

#include "families.h"
#include "forEachItem.h"
#include "geomKit/queries/pointFitting.h"
#include "geomKit/queries/polynomialRoots.h"
#include "geomKit/vAlgebra/eigensystem.h"

namespace geomkitPython {

namespace {

using geomKit::Matrix3;
using geomKit::UVector3;
using geomKit::Vector3;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// The roots, and NaN in the places of those that there are not.
template <std::size_t most, typename Solve>
std::tuple<std::int32_t, std::array<double, most>> _roots(const Solve& solve) {
    std::array<double, most> roots = {};
    const int count = solve(roots.data());
    for (std::size_t i = static_cast<std::size_t>(count); i < most; ++i)
        roots[i] = kNaN;
    return {count, roots};
}

using Fit = bool(const Vector3* pts, std::size_t count, Vector3* center, UVector3* direction);

/// The fit of each list of points.
template <Fit fit>
py::tuple _fitLists(const py::handle& points, int workers) {
    const std::size_t threads = workerCount(workers);
    const Numbers<double> numbers(points, "points", {kAnyShape, kAnyLength, 3});
    const auto length =
        static_cast<std::size_t>(numbers.length(static_cast<int>(numbers.leading().size())));
    if (length < 2) {
        throw py::value_error("points: " + std::to_string(length) + " in a set, wanted 2 or more");
    }
    const Output<Vector3> centers(numbers.leading());
    const Output<Vector3> directions(numbers.leading());
    const std::size_t count = Broadcast({{"points", &numbers.leading()}}).count();
    inPieces(count, 1 + kItemsPerPiece / length, threads, [&](std::size_t first, std::size_t last) {
        for (std::size_t i = first; i < last; ++i) {
            UVector3 direction;
            fit(numbers.as<Vector3>() + i * length, length, &centers.items()[i], &direction);
            directions.items()[i] = direction;
        }
    });
    return py::make_tuple(centers.array(), directions.array());
}

}  // namespace

void addNumerics(py::module_& module) {
    module.def("best_fit_plane", &_fitLists<geomKit::bestFitPlane>);
    module.def("best_fit_line", &_fitLists<geomKit::bestFitLine>);
    addLoop(module, "eigensystem", {"matrices"}, [](const Matrix3& matrix) {
        std::array<double, 3> values = {};
        UVector3 vectors[3];
        geomKit::jacobiMethod(matrix, values.data(), vectors);
        return std::make_tuple(values, Matrix3(vectors[0], vectors[1], vectors[2]));
    });
    addLoop(module, "solve_quadratic", {"coefficients"}, [](const std::array<double, 3>& c) {
        return _roots<2>(
            [&c](double* roots) { return geomKit::solveQuadratic(c[0], c[1], c[2], roots); });
    });
    addLoop(module, "solve_cubic", {"coefficients"}, [](const std::array<double, 4>& c) {
        return _roots<3>(
            [&c](double* roots) { return geomKit::solveCubic(c[0], c[1], c[2], c[3], roots); });
    });
}

}  // namespace geomkitPython
