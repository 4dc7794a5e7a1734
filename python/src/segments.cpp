// Segments in the plane, with or without a third coordinate.
#include <tuple>

#include "families.h"
#include "forEachItem.h"
#include "geomKit/queries/segments2D.h"

namespace geomkitPython {

namespace {

using geomKit::Vector3;
using Point = ktNM::vect2<double>;

Vector3 _inSpace(const Point& p) {
    return {p.u, p.v, 0.0};
}

const Vector3& _inSpace(const Vector3& p) {
    return p;
}

void _setPoint(Point& point, const Vector3& p) {
    point = {p.x, p.y};
}

void _setPoint(Vector3& point, const Vector3& p) {
    point = p;
}

/// What is left of a segment: whether anything is, and its ends.
template <typename P>
std::tuple<bool, P, P> _remainder(bool remains, const Vector3& a, const Vector3& b) {
    std::tuple<bool, P, P> answer;
    std::get<0>(answer) = remains;
    _setPoint(std::get<1>(answer), a);
    _setPoint(std::get<2>(answer), b);
    return answer;
}

/// For points of one dimension, which ends the functions' names.
template <typename P>
void _addSegments(py::module_& module, const std::string& dimension) {
    addLoop(module, ("segs_intersect" + dimension).c_str(),
            {"a0", "a1", "b0", "b1", "tol", "inclusive"},
            [](const P& a0, const P& a1, const P& b0, const P& b1, double tol, bool inclusive) {
                return std::make_tuple(geomKit::segsIntersect(
                    _inSpace(a0), _inSpace(a1), _inSpace(b0), _inSpace(b1), tol, inclusive));
            });
    addLoop(module, ("seg_intersect_rect" + dimension).c_str(), {"a", "b", "rmin", "rmax"},
            [](const P& a, const P& b, const P& rmin, const P& rmax) {
                return std::make_tuple(geomKit::segIntersectRect2D(_inSpace(a), _inSpace(b),
                                                                   _inSpace(rmin), _inSpace(rmax)));
            });
    addLoop(module, ("seg_clip_half_plane" + dimension).c_str(), {"a", "b", "point", "normal"},
            [](const P& a, const P& b, const P& q, const P& n) {
                Vector3 outA = _inSpace(a);
                Vector3 outB = _inSpace(b);
                const bool remains =
                    geomKit::segClipHalfPlane2D(outA, outB, _inSpace(q), _inSpace(n));
                return _remainder<P>(remains, outA, outB);
            });
    addLoop(module, ("seg_clip_rect" + dimension).c_str(), {"a", "b", "rmin", "rmax"},
            [](const P& a, const P& b, const P& rmin, const P& rmax) {
                Vector3 outA;
                Vector3 outB;
                const bool remains = geomKit::segClipRect2D(
                    _inSpace(a), _inSpace(b), _inSpace(rmin), _inSpace(rmax), outA, outB);
                return _remainder<P>(remains, outA, outB);
            });
}

}  // namespace

void addSegments(py::module_& module) {
    _addSegments<Point>(module, "_2d");
    _addSegments<Vector3>(module, "_3d");
}

}  // namespace geomkitPython
