/// @file
/// A Boost.Geometry R-tree over the boxes of a scene's facets.
#pragma once

#include <memory>
#include <utility>
#include <vector>

#include <boost/geometry.hpp>
#include <boost/geometry/index/rtree.hpp>

#include "bench/meshFunc2d/TriangulationScene.h"

using BoostPoint = boost::geometry::model::point<double, 2, boost::geometry::cs::cartesian>;
using BoostBox = boost::geometry::model::box<BoostPoint>;
using FacetTree =
    boost::geometry::index::rtree<std::pair<BoostBox, int>, boost::geometry::index::rstar<16>>;

inline std::unique_ptr<FacetTree> facetTree(const TriangulationScene& scene) {
    std::vector<std::pair<BoostBox, int>> boxes;
    boxes.reserve(scene.facets.size() / 3);
    for (std::size_t f = 0; 3 * f < scene.facets.size(); ++f) {
        BoostBox box = boost::geometry::make_inverse<BoostBox>();
        for (std::size_t k = 0; k < 3; ++k) {
            const auto& p = scene.params[static_cast<std::size_t>(scene.facets[3 * f + k])];
            boost::geometry::expand(box, BoostPoint(p.u, p.v));
        }
        boxes.emplace_back(box, static_cast<int>(f));
    }
    return std::make_unique<FacetTree>(boxes);
}
