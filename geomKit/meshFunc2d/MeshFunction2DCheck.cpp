#include "geomKit/meshFunc2d/MeshFunction2DCheck.h"

#include <algorithm>
#include <cmath>

#include "geomKit/internal/toIndex.h"
#include "geomKit/meshFunc2d/MeshFunction2D.h"
#include "geomKit/meshFunc2d/barycentric.h"

namespace geomKit {

namespace {

using Fault = MeshFunction2DCheck::Fault;
using Point = MeshFunction2D::Point;

/// The index of the first point that is not finite; the size if all are.
std::size_t _firstNotFinite(const std::vector<Point>& points) {
    const auto found = std::find_if(points.begin(), points.end(), [](const Point& p) {
        return !std::isfinite(p.u) || !std::isfinite(p.v);
    });
    return static_cast<std::size_t>(found - points.begin());
}

/// Of facets whose indices are all valid.
MeshFunction2DCheck _findTooSmall(const std::vector<Point>& params,
                                  const std::vector<int>& facets) {
    MeshFunction2DCheck found;
    for (std::size_t f = 0; 3 * f < facets.size(); ++f) {
        const int* corner = &facets[3 * f];
        const auto at = [&](int k) { return params[detail::toIndex(corner[k])]; };
        if (!detail::FacetEdges(at(0), at(1), at(2)).isDegenerate()) continue;
        if (found) found = {Fault::TooSmall, f, 0};
        ++found.count;
    }
    return found;
}

}  // namespace

std::string MeshFunction2DCheck::text() const {
    const std::string at = "[" + std::to_string(index) + "]";
    switch (fault) {
        case Fault::LengthsDiffer:
            return "params and values differ in length from " + at + " on";
        case Fault::PartialTriple:
            return "the triple at facets" + at + " is not whole";
        case Fault::IndexOutOfRange:
            return "facets" + at + " is not the index of a vertex";
        case Fault::ParamNotFinite:
            return "params" + at + " is not finite";
        case Fault::ValueNotFinite:
            return "values" + at + " is not finite";
        case Fault::TooSmall:
            return "facet " + std::to_string(index) +
                   " is too small to answer: its determinant is below 1e-8" +
                   (count > 1 ? ", as in " + std::to_string(count - 1) + " more" : "");
        case Fault::None:
            break;
    }
    return "no fault";
}

MeshFunction2DCheck MeshFunction2D::check() const {
    if (params.size() != values.size()) {
        return {Fault::LengthsDiffer, (std::min)(params.size(), values.size()), 0};
    }
    if (facets.size() % 3 != 0) return {Fault::PartialTriple, facets.size() / 3 * 3, 0};
    for (std::size_t i = 0; i < facets.size(); ++i) {
        if (facets[i] < 0 || static_cast<std::size_t>(facets[i]) >= params.size()) {
            return {Fault::IndexOutOfRange, i, 0};
        }
    }
    if (const std::size_t i = _firstNotFinite(params); i < params.size()) {
        return {Fault::ParamNotFinite, i, 0};
    }
    if (const std::size_t i = _firstNotFinite(values); i < values.size()) {
        return {Fault::ValueNotFinite, i, 0};
    }
    return _findTooSmall(params, facets);
}

}  // namespace geomKit
