/// @file
/// A mesh as one camera sees it.
#pragma once

#include <vector>

#include "examples/common/Camera.h"
#include "examples/common/Mesh.h"

namespace demo {

/// The vertices and facets that a mesh function over the picture is built from.
struct View {
    /// The part of the mesh that is seen, its normals turned towards the viewer and its facets
    /// front to back: wherever several cover a point of the picture, the front one is first.
    Mesh mesh;
    /// Where each vertex appears.
    std::vector<ScreenPoint> at;
    /// Cosine between the normal and the direction to the eye at each vertex.
    std::vector<float> cosines;
};

/// What `camera` sees of `mesh` in a picture of the given size.
///
/// Where the surface turns away it is cut along the line on which the cosine is `grazingCosine`,
/// somewhat above 0: a facet seen edge-on maps a narrow strip of the picture to a wide stretch of
/// texture, and its continuation beyond the outline grows very fast. Facets that are seen inside
/// the outline stay whole: cutting them would open holes. Facets that show
/// their back are kept only where they are seen, as through an opening.
View viewMesh(const Mesh& mesh, const Camera& camera, int width, int height, double grazingCosine);

}  // namespace demo
