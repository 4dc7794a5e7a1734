/// @file
/// `CompositeField`, the fields of a class under one name.
#pragma once

#include <string>

#include "host/tags/ClassDesc.h"
#include "host/tags/Field.h"
#include "host/tags/export.h"

/// A field that embeds the description of a class: its tag holds the tags of that class's fields,
/// all of them parts of the same object. It serves a class as the description of its whole, and the
/// classes derived from it as their base part.
class GEOMKIT_TAGS_API CompositeField : public Field {
public:
    CompositeField(const std::string& name, const ClassDesc& desc);

    const ClassDesc& desc() const { return desc_; }

    void save(const Serializable& object, OutTag& parent) const override;
    void load(Serializable& object, InTag& tag) const override;
    /// False when the class has no fields.
    bool isNeeded() const override;

    /// Writes the fields into a tag that exists already; a single tag when there are none.
    void saveInto(const Serializable& object, OutTag& tag) const;

private:
    ClassDesc desc_;
};
