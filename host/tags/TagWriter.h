/// @file
/// `TagWriter`, the markup of a document on its way to a stream. Internal.
#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/tags/AttrMap.h"
#include "host/tags/NoThrow.h"

/// Collects markup and hands it to the stream in large pieces. Shared by all tags of a document.
class TagWriter {
public:
    /// Writes the XML declaration.
    explicit TagWriter(std::ostream& document);
    /// Hands over what is left.
    ~TagWriter();
    TagWriter(const TagWriter&) = delete;
    TagWriter& operator=(const TagWriter&) = delete;

    void put(std::string_view markup) { buffer_.append(markup); }
    void put(char markup) { buffer_.push_back(markup); }
    /// Text, or the text of an attribute, with every character escaped that needs it.
    void putEscaped(std::string_view text);

    /// Starts the line of a tag at the present depth.
    void startLine();
    void enter() { ++depth_; }
    void leave() { --depth_; }

    /// Attribute maps are passed on from tag to tag, as an allocation for each tag would cost more
    /// than its markup.
    std::unique_ptr<AttrMap> takeMap();
    void giveBack(std::unique_ptr<AttrMap> map);

private:
    void iPutReference(char c);
    void iFlush();

    NoThrow noThrow_;  // the destructor writes
    std::ostream& document_;
    std::string buffer_;
    std::size_t depth_ = 0;
    std::vector<std::unique_ptr<AttrMap>> spareMaps_;
};
