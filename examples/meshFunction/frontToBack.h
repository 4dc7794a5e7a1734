/// @file
/// Triangles of a picture from front to back.
#pragma once

#include <vector>

#include "examples/meshFunction/SampledScene.h"

namespace demo {

/// The facet numbers of a scene in an order in which, wherever facets overlap, the visible one
/// comes first. There is no such order for facets that pass through each other or hide each other
/// in a ring: two such facets are ordered as most samples say, a ring begins with its nearest
/// facet. Hidden facets come last.
std::vector<int> frontToBack(const SampledScene& scene);

}  // namespace demo
