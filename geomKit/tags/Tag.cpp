#include "geomKit/tags/Tag.h"

namespace geomKit {

Tag::~Tag() = default;

}  // namespace geomKit
