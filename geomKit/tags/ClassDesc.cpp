#include "geomKit/tags/ClassDesc.h"

#include <utility>

namespace geomKit {

void ClassDescBase::add(boost::intrusive_ptr<Field> field) {
    fields_.push_back(std::move(field));
}

ClassDesc::ClassDesc(std::string className) : className_(std::move(className)) {}

}  // namespace geomKit
