/// @file
/// `OutTag`, a tag that is being written.
#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

#include "geomKit/tags/Tag.h"
#include "geomKit/tags/export.h"

namespace geomKit {

namespace detail {
class AttrMap;
class TagWriter;
}  // namespace detail

/// A tag of a document that is written to a stream as it comes: nothing of it is kept.
///
/// Code that is handed a tag sets its attributes first. Then it writes the whole tag: by
/// `writeSingleTag`, or by `writeOpenTag`, text or child tags, and `writeCloseTag`. A child tag
/// must be complete before anything else is written under the same parent. Text may hold any
/// characters; it is escaped. Numbers do not depend on any locale. Not for two threads at once.
class GEOMKIT_TAGS_API OutTag final : public Tag {
public:
    /// The root tag of a new document, which starts at once with its declaration. The stream must
    /// outlive the tag; everything has reached it once the tag is destroyed. The stream's own state
    /// tells whether it failed: nothing is thrown meanwhile, whatever the stream is set to throw.
    OutTag(std::ostream& document, const std::string& name);
    /// A child tag. The parent must outlive it.
    OutTag(OutTag& parent, const std::string& name);
    ~OutTag() override;

    [[nodiscard]] std::string_view name() const noexcept override { return name_; }
    [[nodiscard]] std::string_view getAttr(const std::string& name) const noexcept override;

    /// Adds an attribute, or replaces its text. The attributes are written in the order in which
    /// their names were first set.
    void setAttr(const std::string& name, std::string_view text);
    /// The number as a stream of precision 15 in the classic locale writes it.
    void setAttr(const std::string& name, double value);

    /// The flag, the same for both: the tag holds child tags and no text.
    void writeOpenTag(bool hasChildren);
    void writeCloseTag(bool hasChildren);
    /// The tag as one empty element, attributes included.
    void writeSingleTag();

    void writeText(std::string_view text);
    void writeValue(int value);
    /// The shortest text from which the same bits load back; for a NaN that is not the usual one,
    /// its bits in hexadecimal within parentheses.
    void writeValue(float value);
    /// "true" or "false".
    void writeValue(bool value);

private:
    void iWriteStart();

    std::unique_ptr<detail::TagWriter> owned_;  // of a root tag only
    detail::TagWriter* writer_;
    std::string name_;
    std::unique_ptr<detail::AttrMap> attrs_;  // null until an attribute is set
};

}  // namespace geomKit
