/// @file
/// The names of the elements of a sequence.
#pragma once

#include <string>

#include "host/tags/export.h"

/// The singular of an English plural, by its ending: "params" gives "param", "vertices" "vertex",
/// "bodies" "body", "boxes" "box", "children" "child". Only the last word of a compound such as
/// "boneIndices" changes. A name that is no plural is returned as it is.
GEOMKIT_TAGS_API std::string getSingularName(const std::string& name);
