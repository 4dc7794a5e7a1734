#include "geomKit/tags/CompositeField.h"

#include <vector>

#include "geomKit/tags/InTag.h"
#include "geomKit/tags/OutTag.h"

namespace geomKit {

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
    struct Part {
        const Field& field;
        Serializable& object;
        bool wasMet;
    };
    std::vector<Part> parts;
    parts.reserve(desc_.fields().size());
    InTag::NameMap names;
    names.reserve(desc_.fields().size());
    for (const auto& field : desc_.fields()) {
        Part& part = parts.emplace_back(Part{*field, object, false});
        names.emplace_back(field->name(), [&part](InTag& child) {
            part.wasMet = true;
            part.field.load(part.object, child);
        });
    }
    tag.readBody(this, names);
    for (const Part& part : parts) {
        if (part.wasMet || !part.field.isNeeded()) continue;
        tag.report("missing tag \"" + part.field.name() + "\"", "the field keeps its value");
    }
}

bool CompositeField::isNeeded() const {
    return !desc_.fields().empty();
}

}  // namespace geomKit
