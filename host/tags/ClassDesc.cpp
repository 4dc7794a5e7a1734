#include "host/tags/ClassDesc.h"

#include <utility>

void ClassDescBase::add(boost::intrusive_ptr<Field> field) {
    fields_.push_back(std::move(field));
}

ClassDesc::ClassDesc(std::string className) : className_(std::move(className)) {}
