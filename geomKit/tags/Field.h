/// @file
/// `Field`, one named part of the saved form of a class.
#pragma once

#include <string>

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <boost/smart_ptr/intrusive_ref_counter.hpp>

#include "geomKit/tags/export.h"

namespace geomKit {

class InTag;
class OutTag;
class Serializable;

/// Writes one part of an object as a child tag of the object's tag, and reads it back. One field
/// serves all objects of a class. Fields are immutable, shared by `boost::intrusive_ptr` and safe
/// in any number of threads.
class GEOMKIT_TAGS_API Field : public boost::intrusive_ref_counter<Field> {
public:
    explicit Field(std::string name);
    virtual ~Field();
    Field(const Field&) = delete;
    Field& operator=(const Field&) = delete;

    /// The name of the field's tag.
    [[nodiscard]] const std::string& name() const noexcept { return name_; }

    /// Writes the field of an object as a child tag.
    virtual void save(const Serializable& object, OutTag& parent) const = 0;
    /// Reads the field's tag into an object.
    virtual void load(Serializable& object, InTag& tag) const = 0;
    /// Whether its absence from a document is reported.
    [[nodiscard]] virtual bool isNeeded() const { return true; }

private:
    std::string name_;
};

}  // namespace geomKit
