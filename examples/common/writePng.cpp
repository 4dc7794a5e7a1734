#include "examples/common/writePng.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include <png.h>

namespace demo {
namespace {

std::uint8_t byteOf(double value) {
    return static_cast<std::uint8_t>(std::lround(255.0 * std::clamp(value, 0.0, 1.0)));
}

bool isOpaque(const Image& image) {
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (byteOf(image.at(x, y).a) != 255) return false;
        }
    }
    return true;
}

}  // namespace

bool writePng(const Image& image, const std::string& path, std::string* error) {
    const bool opaque = isOpaque(image);
    std::vector<std::uint8_t> bytes;
    bytes.reserve(static_cast<std::size_t>(image.width()) *
                  static_cast<std::size_t>(image.height()) * 4);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const Colour& c = image.at(x, y);
            for (const float channel : {c.r, c.g, c.b}) {
                bytes.push_back(byteOf(srgbFromLinear(std::clamp<double>(channel, 0.0, 1.0))));
            }
            if (!opaque) bytes.push_back(byteOf(c.a));
        }
    }

    png_image header{};
    header.version = PNG_IMAGE_VERSION;
    header.width = static_cast<png_uint_32>(image.width());
    header.height = static_cast<png_uint_32>(image.height());
    header.format = opaque ? PNG_FORMAT_RGB : PNG_FORMAT_RGBA;
    if (png_image_write_to_file(&header, path.c_str(), 0, bytes.data(), 0, nullptr) != 0) {
        return true;
    }
    if (error != nullptr) *error = "cannot write " + path + ": " + header.message;
    return false;
}

}  // namespace demo
