#include "geomKit/tags/Serializable.h"

namespace geomKit {

void Serializable::save(OutTag& tag) const {
    classField()->saveInto(*this, tag);
}

void Serializable::load(InTag& tag, boost::intrusive_ptr<Field> field) {
    if (field == nullptr) field = classField();
    field->load(*this, tag);
}

const boost::intrusive_ptr<CompositeField>& Serializable::classField() const {
    static const boost::intrusive_ptr<CompositeField> field(
        new CompositeField("Serializable", ClassDesc("Serializable")));
    return field;
}

Serializable::~Serializable() = default;

}  // namespace geomKit
