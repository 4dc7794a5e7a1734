/// @file
/// `InTag`, a tag that is being read.
#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/tags/Tag.h"
#include "host/tags/export.h"

class Field;

/// A tag of a document that is loaded, with its attributes, its text and its child tags.
///
/// Whoever a tag is handed to reads its attributes first and then consumes the tag to its end, by
/// `readBody` or, if it holds text, by `readText` or `readValue`. Whatever is found amiss is
/// reported, never thrown, and reading goes on.
class GEOMKIT_TAGS_API InTag : public Tag {
public:
    /// Reads one child tag.
    using ChildReader = std::function<void(InTag&)>;
    /// The child tags that a tag may hold.
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

    /// True when the value was read and nothing but blanks follows it in the stream; a malformed
    /// value is reported otherwise.
    bool checkEndText(std::istream& is) const;

protected:
    /// The attribute that is being read, for reports; empty between attributes.
    std::string_view attributeInReading() const { return attribute_; }

private:
    mutable std::string_view attribute_;
};
