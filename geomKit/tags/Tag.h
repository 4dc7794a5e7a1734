/// @file
/// `Tag`, what input and output tags have in common: a name and attributes.
#pragma once

#include <string>
#include <string_view>

#include "geomKit/tags/export.h"

namespace geomKit {

/// One tag of a document while it is read or written.
class GEOMKIT_TAGS_API Tag {
public:
    virtual ~Tag();
    Tag(const Tag&) = delete;
    Tag& operator=(const Tag&) = delete;

    [[nodiscard]] virtual std::string_view name() const = 0;

    /// The text of the named attribute; empty, with a null `data()`, when the tag has none of that
    /// name. It lives as long as the tag, or until an attribute is set.
    virtual std::string_view getAttr(const std::string& name) const = 0;

protected:
    Tag() = default;
};

}  // namespace geomKit
