/// @file
/// The names of the elements of a sequence.
#pragma once

#include <string>

#include "geomKit/tags/export.h"

namespace geomKit {

/// The singular of an English plural, by its ending: "params" gives "param", "vertices" "vertex",
/// "bodies" "body", "boxes" "box", "children" "child". Only the last word of a compound such as
/// "boneIndices" changes. A name that is no plural, or a plural of an unknown kind, is returned as
/// it is.
[[nodiscard]] GEOMKIT_TAGS_API std::string getSingularName(const std::string& name);

}  // namespace geomKit
