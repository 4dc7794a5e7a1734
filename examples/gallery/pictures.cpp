#include "examples/gallery/pictures.h"

namespace gallery {

const std::vector<Picture>& pictures() {
    static const std::vector<Picture> all = {
        {"lines", &lines},       {"planes", &planes},       {"triangles", &triangles},
        {"spheres", &spheres},   {"weights", &weights},     {"boxes", &boxes},
        {"clipping", &clipping}, {"falloff", &falloff},     {"roots", &roots},
        {"fits", &fits},         {"polyline", &polyline},   {"proximity", &proximity},
        {"outline", &outline},   {"ellipsoid", &ellipsoid}, {"curvature", &curvature},
    };
    return all;
}

}  // namespace gallery
