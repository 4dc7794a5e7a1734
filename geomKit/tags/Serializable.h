/// @file
/// `Serializable`, the base of every class that is saved to documents and loaded from them.
#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include "geomKit/tags/CompositeField.h"
#include "geomKit/tags/Field.h"
#include "geomKit/tags/export.h"

namespace geomKit {

class InTag;
class OutTag;

/// An object whose class describes its own fields.
///
/// A class becomes loadable in three steps: it overrides `classField`, it holds a
/// `SerializableFactory` in static storage, and it has a type handler for each of its member types.
/// Distinct objects may be saved and loaded in distinct threads.
class GEOMKIT_TAGS_API Serializable {
public:
    /// Writes the object into the tag: every field of the class description, in order, as child
    /// tags.
    virtual void save(OutTag& tag) const;

    /// Reads the child tags of the tag into the fields of a description: the one given, or that of
    /// the object's class when it is null. A class with derived data overrides it to rebuild them.
    virtual void load(InTag& tag, boost::intrusive_ptr<Field> field);

    /// The description of the class, built on first use and kept for good: a composite of its
    /// fields. This class has none.
    [[nodiscard]] virtual const boost::intrusive_ptr<CompositeField>& classField() const;

    virtual ~Serializable();

protected:
    Serializable() = default;
    Serializable(const Serializable&) = default;
    Serializable& operator=(const Serializable&) = default;
};

}  // namespace geomKit
