// Lines, planes, triangles, spheres and boxes.
#include <array>
#include <cstddef>
#include <cstdint>
#include <tuple>

#include "families.h"
#include "forEachItem.h"
#include "geomKit/queries/Bbox.h"
#include "geomKit/queries/LineLineInt.h"
#include "geomKit/queries/LinePlaneInt.h"
#include "geomKit/queries/LineSphereInt.h"
#include "geomKit/queries/LineTriangleInt.h"
#include "geomKit/queries/PlanePlaneInt.h"
#include "geomKit/queries/TriangleWeightsFinder.h"

namespace geomkitPython {

namespace {

using geomKit::Bbox;
using geomKit::LineLineInt;
using geomKit::LinePlaneInt;
using geomKit::LineSphereInt;
using geomKit::LineTriangleInt;
using geomKit::PlanePlaneInt;
using geomKit::TriangleWeightsFinder;
using geomKit::UVector3;
using geomKit::Vector3;
using Triangle = std::array<Vector3, 3>;
using Corners = std::array<Vector3, 2>;

/// One line and many triangles: the library has a call for these that is quicker than a loop.
py::tuple _oneLineTriangles(int workers, const Shape& shape, const Vector3& origin,
                            const Vector3& direction, const Input<Triangle>& triangles,
                            double tol) {
    const std::size_t threads = workerCount(workers);
    const Output<std::int32_t> statuses(shape);
    const Output<Vector3> points(shape);
    const Output<double> params(shape);
    const UVector3 d(direction);
    inPieces(triangles.numbers().count(), kItemsPerPiece, threads,
             [&](std::size_t first, std::size_t last) {
                 LineTriangleInt::intersect(origin, d, tol, triangles.items()[first].data(),
                                            last - first, statuses.items() + first,
                                            params.items() + first, points.items() + first);
             });
    return py::make_tuple(statuses.array(), points.array(), params.array());
}

py::tuple _lineTriangle(const py::handle& origin, const py::handle& direction,
                        const py::handle& triangles, const py::handle& tol, int workers) {
    const Input<Vector3> p("origin", origin);
    const Input<Vector3> d("direction", direction);
    const Input<Triangle> t("triangles", triangles);
    const Input<double> margin("tol", tol);
    if (p.numbers().count() == 1 && d.numbers().count() == 1 && margin.numbers().count() == 1) {
        const Broadcast plan({{"origin", &p.numbers().leading()},
                              {"direction", &d.numbers().leading()},
                              {"triangles", &t.numbers().leading()},
                              {"tol", &margin.numbers().leading()}});
        return _oneLineTriangles(workers, plan.shape(), *p.items(), *d.items(), t, *margin.items());
    }
    const auto single = [](const Vector3& o, const Vector3& along, const Triangle& corners,
                           double slack) {
        const LineTriangleInt hit(o, along, corners[0], corners[1], corners[2], slack);
        return std::make_tuple(hit.status, hit.point, hit.param);
    };
    return forEachItem({workers}, single, p, d, t, margin);
}

std::tuple<std::int32_t, Vector3, double, double> _fieldsOf(const LineLineInt& lines) {
    return {lines.status, lines.point, lines.param1, lines.param2};
}

void _addLines(py::module_& module) {
    module.def("line_triangle", &_lineTriangle);
    addLoop(module, "line_line", {"origin1", "direction1", "origin2", "direction2", "tol"},
            [](const Vector3& p1, const Vector3& d1, const Vector3& p2, const Vector3& d2,
               double tol) { return _fieldsOf(LineLineInt(p1, d1, p2, d2, tol)); });
    addLoop(
        module, "unit_line_line", {"origin1", "direction1", "origin2", "direction2", "tol"},
        [](const Vector3& p1, const Vector3& d1, const Vector3& p2, const Vector3& d2, double tol) {
            return _fieldsOf(LineLineInt(p1, UVector3(d1), p2, UVector3(d2), tol));
        });
    addLoop(module, "line_plane", {"origin", "direction", "point", "normal", "tol"},
            [](const Vector3& p, const Vector3& d, const Vector3& q, const Vector3& n, double tol) {
                const LinePlaneInt hit(p, d, q, n, tol);
                return std::make_tuple(hit.status, hit.point, hit.param);
            });
    addLoop(
        module, "line_sphere", {"origin", "direction", "center", "radius", "tol"},
        [](const Vector3& p, const Vector3& d, const Vector3& centre, double radius, double tol) {
            const LineSphereInt hits(p, d, centre, radius, tol);
            return std::make_tuple(hits.numHits, hits.point1, hits.point2, hits.param1,
                                   hits.param2);
        });
    addLoop(
        module, "plane_plane", {"point1", "normal1", "point2", "normal2", "tol"},
        [](const Vector3& p1, const Vector3& n1, const Vector3& p2, const Vector3& n2, double tol) {
            const PlanePlaneInt planes(p1, n1, p2, n2, tol);
            return std::make_tuple(planes.status, planes.point, planes.dir);
        });
    addLoop(module, "triangle_weights", {"points", "triangles"},
            [](const Vector3& p, const Triangle& t) {
                return std::make_tuple(TriangleWeightsFinder(p, t[0], t[1], t[2]).weights);
            });
}

/// In braces it would be the box of two points, which is valid in any case.
Bbox _box(const Corners& corners) {
    return Bbox(corners[0], corners[1]);
}

std::tuple<Corners> _cornersOf(const Bbox& box) {
    return {{box.minPt, box.maxPt}};
}

/// The box of each list of points.
py::tuple _boxesOfPoints(const py::handle& points, int workers) {
    const std::size_t threads = workerCount(workers);
    const Numbers<double> numbers(points, "points", {kAnyShape, kAnyLength, 3});
    const Output<Corners> boxes(numbers.leading());
    const auto length =
        static_cast<std::size_t>(numbers.length(static_cast<int>(numbers.leading().size())));
    const std::size_t count = Broadcast({{"points", &numbers.leading()}}).count();
    inPieces(count, 1 + kItemsPerPiece / (1 + length), threads,
             [&](std::size_t first, std::size_t last) {
                 for (std::size_t i = first; i < last; ++i) {
                     const Bbox box(numbers.as<Vector3>() + i * length, length);
                     boxes.items()[i] = {box.minPt, box.maxPt};
                 }
             });
    return py::make_tuple(boxes.array());
}

void _addBoxes(py::module_& module) {
    module.def("boxes_of_points", &_boxesOfPoints);
    module.def("empty_box", [] {
        const Output<Corners> box(Shape{});
        *box.items() = {Bbox().minPt, Bbox().maxPt};
        return box.array();
    });
    addLoop(module, "box_of_corners", {"min_pt", "max_pt"}, [](const Vector3& a, const Vector3& b) {
        return std::make_tuple(Corners{a, b});
    });
    addLoop(module, "box_is_valid", {"box"},
            [](const Corners& c) { return std::make_tuple(_box(c).isValid()); });
    addLoop(module, "box_center", {"box"},
            [](const Corners& c) { return std::make_tuple(_box(c).center()); });
    addLoop(module, "box_size", {"box"},
            [](const Corners& c) { return std::make_tuple(_box(c).size()); });
    addLoop(module, "box_volume", {"box"},
            [](const Corners& c) { return std::make_tuple(_box(c).volume()); });
    addLoop(module, "box_filter", {"box", "points"},
            [](const Corners& c, const Vector3& p) { return std::make_tuple(_box(c).filter(p)); });
    addLoop(module, "box_update", {"box", "points"}, [](const Corners& c, const Vector3& p) {
        Bbox box = _box(c);
        box.update(p);
        return _cornersOf(box);
    });
    addLoop(module, "box_add", {"box", "other"},
            [](const Corners& a, const Corners& b) { return _cornersOf(_box(a) + _box(b)); });
    addLoop(module, "box_isec", {"box", "other"}, [](const Corners& a, const Corners& b) {
        Bbox box = _box(a);
        box.isec(_box(b));
        return _cornersOf(box);
    });
    addLoop(module, "box_bounds_in_dir", {"box", "direction"},
            [](const Corners& c, const Vector3& direction) {
                std::tuple<Vector3, Vector3> bounds;
                _box(c).boundsInDir(direction, &std::get<0>(bounds), &std::get<1>(bounds));
                return bounds;
            });
}

}  // namespace

void addQueries(py::module_& module) {
    _addLines(module);
    _addBoxes(module);
}

}  // namespace geomkitPython
