#include "host/tags/CompositeField.h"

#include "host/tags/InTag.h"
#include "host/tags/OutTag.h"

CompositeField::CompositeField(const std::string& name, const ClassDesc& desc)
    : Field(name), desc_(desc) {}

void CompositeField::save(const Serializable& object, OutTag& parent) const {
    OutTag tag(parent, name());
    saveInto(object, tag);
}

void CompositeField::saveInto(const Serializable& object, OutTag& tag) const {
    if (desc_.fields().empty()) {
        tag.writeSingleTag();
        return;
    }
    tag.writeOpenTag(true);
    for (const auto& field : desc_.fields()) {
        field->save(object, tag);
    }
    tag.writeCloseTag(true);
}

void CompositeField::load(Serializable& object, InTag& tag) const {
    InTag::NameMap names;
    names.reserve(desc_.fields().size());
    for (const auto& field : desc_.fields()) {
        names.emplace_back(field->name(), [&object, part = field.get()](InTag& child) {
            part->load(object, child);
        });
    }
    tag.readBody(this, names);
}
