/// @file
/// `OutTag`, a tag that is being written.
#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

#include "host/tags/Tag.h"
#include "host/tags/export.h"

class AttrMap;
class TagWriter;

/// A tag of a document that is written as a stream: what is written is not kept.
///
/// A tag is written whole by whoever it is handed to: either `writeSingleTag`, or `writeOpenTag`,
/// then text or child tags, then `writeCloseTag`. Attributes are set before either. A child tag
/// must be written before anything else is written under the same parent. Text may hold any
/// characters; it is escaped. Numbers do not depend on any locale. Not for two threads at once.
class GEOMKIT_TAGS_API OutTag final : public Tag {
public:
    /// The root tag of a new document, which starts at once with its declaration. The stream must
    /// outlive the tag; everything has reached it once the tag is destroyed.
    OutTag(std::ostream& document, const std::string& name);
    /// A child tag. The parent must outlive it.
    OutTag(OutTag& parent, const std::string& name);
    ~OutTag() override;

    std::string_view name() const override { return name_; }
    std::string_view getAttr(const std::string& name) const override;

    /// Adds an attribute, or replaces its text. The attributes are written in the order in which
    /// their names were first set.
    void setAttr(const std::string& name, std::string_view text);
    /// The number as a stream of precision 15 in the classic locale writes it.
    void setAttr(const std::string& name, double value);

    /// The flag tells that the tag holds child tags, and no text.
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

    std::unique_ptr<TagWriter> owned_;  // of a root tag only
    TagWriter* writer_;
    std::string name_;
    std::unique_ptr<AttrMap> attrs_;  // null until an attribute is set
};
