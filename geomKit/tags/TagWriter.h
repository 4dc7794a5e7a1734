/// @file
/// `TagWriter`, the markup of a document on its way to a stream. Internal.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "geomKit/tags/AttrMap.h"
#include "geomKit/tags/NoThrow.h"

namespace geomKit::detail {

/// Collects markup and hands it to the stream in large pieces. Shared by all tags of a document.
class TagWriter {
public:
    /// Writes the XML declaration.
    explicit TagWriter(std::ostream& document);
    /// Ends the last line and hands over what is left. Does not throw.
    ~TagWriter();
    TagWriter(const TagWriter&) = delete;
    TagWriter& operator=(const TagWriter&) = delete;

    void put(std::string_view markup) { buffer_.append(markup); }
    void put(char markup) { buffer_.push_back(markup); }
    /// Text, or the text of an attribute, with every character escaped that needs it.
    void putEscaped(std::string_view text);

    /// Starts the line of a tag at the present depth.
    void startLine();
    void enter() noexcept { ++depth_; }
    void leave() noexcept { --depth_; }

    /// Attribute maps are passed on from tag to tag, as an allocation for each tag would cost more
    /// than its markup. Only taking one may need memory: tags give theirs back when they die.
    [[nodiscard]] std::unique_ptr<AttrMap> takeMap();
    void giveBack(std::unique_ptr<AttrMap> map) noexcept;

private:
    void iPutReference(char c);
    /// Writes the buffer to the stream, which is flushed at the end of the document.
    void iHandOver(bool isLast);

    NoThrow noThrow_;
    std::ostream& document_;
    std::string buffer_;
    std::size_t depth_ = 0;
    std::vector<std::unique_ptr<AttrMap>> spareMaps_;  // with room for all there are
    std::size_t mapCount_ = 0;
};

}  // namespace geomKit::detail
