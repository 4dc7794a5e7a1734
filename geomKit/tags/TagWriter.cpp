#include "geomKit/tags/TagWriter.h"

#include <exception>
#include <ostream>

#include "geomKit/tags/numberText.h"

namespace geomKit::detail {

namespace {

constexpr std::size_t kPieceSize = std::size_t{1} << 16;
constexpr std::size_t kIndent = 2;

/// Characters that mean markup, or that a reader would normalise away.
bool _needsEscape(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == '<' || c == '>' || c == '&' || c == '"';
}

}  // namespace

TagWriter::TagWriter(std::ostream& document) : noThrow_(document), document_(document) {
    buffer_.reserve(kPieceSize + kPieceSize / 8);
    put("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
}

TagWriter::~TagWriter() {
    // A destructor must not throw, so the newline must not need memory.
    if (buffer_.size() == buffer_.capacity()) iHandOver(false);
    put('\n');
    iHandOver(true);
}

void TagWriter::iHandOver(bool isLast) {
    try {
        document_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
        if (isLast) document_.flush();
    } catch (const std::exception&) {
        // Only a stream that is tied to this one, and flushed before it is written to, throws here.
        document_.setstate(std::ios::badbit);
    }
    buffer_.clear();
}

void TagWriter::startLine() {
    if (buffer_.size() >= kPieceSize) iHandOver(false);
    buffer_.push_back('\n');
    buffer_.append(depth_ * kIndent, ' ');
}

void TagWriter::putEscaped(std::string_view text) {
    std::size_t start = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!_needsEscape(text[i])) continue;
        put(text.substr(start, i - start));
        iPutReference(text[i]);
        start = i + 1;
    }
    put(text.substr(start));
}

void TagWriter::iPutReference(char c) {
    if (c == '<') {
        put("&lt;");
    } else if (c == '>') {
        put("&gt;");
    } else if (c == '&') {
        put("&amp;");
    } else if (c == '"') {
        put("&quot;");
    } else if (c == '\0') {
        put("\xEF\xBF\xBD");  // no document can hold it: the replacement character
    } else {
        put("&#");
        put(NumberText(int{c}).view());
        put(';');
    }
}

std::unique_ptr<AttrMap> TagWriter::takeMap() {
    if (spareMaps_.empty()) {
        spareMaps_.reserve(++mapCount_);
        return std::make_unique<AttrMap>();
    }
    std::unique_ptr<AttrMap> map = std::move(spareMaps_.back());
    spareMaps_.pop_back();
    return map;
}

void TagWriter::giveBack(std::unique_ptr<AttrMap> map) noexcept {
    map->clear();
    spareMaps_.push_back(std::move(map));
}

}  // namespace geomKit::detail
