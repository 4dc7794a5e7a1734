/// @file
/// The pictures of the gallery, each a complete SVG document.
#pragma once

#include <string>
#include <vector>

namespace gallery {

struct Picture {
    const char* name;  ///< Of its file, without the ending.
    std::string (*draw)();
};

const std::vector<Picture>& pictures();

std::string lines();
std::string planes();
std::string triangles();
std::string spheres();
std::string weights();
std::string boxes();
std::string clipping();
std::string falloff();
std::string roots();
std::string polyline();
std::string fits();
std::string proximity();
std::string outline();
std::string ellipsoid();
std::string curvature();

}  // namespace gallery
