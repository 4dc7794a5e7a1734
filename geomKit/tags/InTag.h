/// @file
/// `InTag`, a tag that is being read.
#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "geomKit/tags/Tag.h"
#include "geomKit/tags/export.h"

namespace geomKit {

class Field;

/// A tag of a document that is loaded, with its attributes, its text and its child tags.
///
/// Code that is handed a tag reads its attributes first. Then it reads the tag to its end: by
/// `readBody`, or by `readText` or `readValue` if the tag holds text. Faults of the document are
/// reported, never thrown, and reading goes on.
class GEOMKIT_TAGS_API InTag : public Tag {
public:
    /// Reads one child tag.
    using ChildReader = std::function<void(InTag&)>;
    /// The child tags that a tag may hold. A tag whose reader is empty is skipped without a report.
    using NameMap = std::vector<std::pair<std::string, ChildReader>>;

    /// Hands each child tag to the reader of its name and consumes this tag to its end.
    ///
    /// With a field, the one whose parts the children are, a name that comes again is reported and
    /// skipped. With none, children may come in any number. Reported and skipped in either case:
    /// child tags of other names, attributes that were not read, text, and what is nested more than
    /// 256 deep.
    virtual void readBody(const Field* field, const NameMap& names) = 0;

    /// The text of the tag, which lives as long as the tag, without the comments in it. Consumes
    /// the tag: child tags and attributes that were not read are reported and skipped.
    virtual std::string_view readText() = 0;

    /// Adds a problem at the place of this tag: what is wrong, and what was done about it.
    virtual void report(std::string what, std::string done) const = 0;

    /// Reads the number in an attribute as a stream in the classic locale would. A missing
    /// attribute and a malformed number are reported; the value is then what the stream stored:
    /// unchanged when there was no text, 0 when no number could be read, else the number before the
    /// text that did not belong.
    void readAttr(const std::string& name, double& value) const;

    /// Consume the tag and read its whole text as one value. Malformed text is reported, and the
    /// value is then what the stream stored, as above.
    void readValue(int& value);
    /// Takes everything that `OutTag::writeValue` wrote, bit for bit.
    void readValue(float& value);
    /// Takes "true", "false", "1" and "0". Any other text leaves the value unchanged.
    void readValue(bool& value);

    /// For values that a host reads from a stream over their text: call it after `is >> value`.
    /// True if the value was read and only blanks follow it. Otherwise reports the malformed value,
    /// or the text after it.
    bool checkEndText(std::istream& is) const;

protected:
    /// The attribute that is being read, for reports; empty between attributes.
    [[nodiscard]] std::string_view attributeInReading() const noexcept { return attribute_; }

private:
    mutable std::string_view attribute_;
};

}  // namespace geomKit
