/// @file
/// `CompositeField`, the fields of a class under one name.
#pragma once

#include <string>

#include "geomKit/tags/ClassDesc.h"
#include "geomKit/tags/Field.h"
#include "geomKit/tags/export.h"

namespace geomKit {

/// A field whose tag holds the tags of all fields of a class, for one and the same object.
///
/// `Serializable::classField` returns one that describes the whole class. The description of a
/// derived class begins with another one, named "super" by convention, for the fields of the base
/// class.
class GEOMKIT_TAGS_API CompositeField : public Field {
public:
    CompositeField(const std::string& name, const ClassDesc& desc);

    [[nodiscard]] const ClassDesc& desc() const noexcept { return desc_; }

    void save(const Serializable& object, OutTag& parent) const override;
    void load(Serializable& object, InTag& tag) const override;
    /// False when the class has no fields.
    [[nodiscard]] bool isNeeded() const override;

    /// Writes the fields as child tags of a tag that the caller made, or an empty tag when there
    /// are none.
    void saveInto(const Serializable& object, OutTag& tag) const;

private:
    ClassDesc desc_;
};

}  // namespace geomKit
