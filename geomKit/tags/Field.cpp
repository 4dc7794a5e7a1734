#include "geomKit/tags/Field.h"

#include <utility>

namespace geomKit {

Field::Field(std::string name) : name_(std::move(name)) {}

Field::~Field() = default;

}  // namespace geomKit
