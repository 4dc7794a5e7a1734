/// @file
/// Pictures to files.
#pragma once

#include <string>

#include "examples/common/Image.h"

namespace demo {

/// Writes 8-bit sRGB with opacity. False, with a message for the user, when the file cannot be
/// written.
bool writePng(const Image& image, const std::string& path, std::string* error);

}  // namespace demo
