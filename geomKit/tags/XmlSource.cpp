#include "geomKit/tags/XmlSource.h"

#include <algorithm>
#include <new>
#include <utility>

namespace geomKit::detail {

namespace {

/// Entities of a document type are not expanded, comments and processing instructions are dropped.
/// The text at the start of a tag is kept in the tag's node. This saves a third of the nodes.
constexpr unsigned kParseOptions =
    pugi::parse_default | pugi::parse_embed_pcdata | pugi::parse_fragment;

std::size_t _unitSize(pugi::xml_encoding encoding) {
    switch (encoding) {
        case pugi::encoding_utf16_le:
        case pugi::encoding_utf16_be:
            return 2;
        case pugi::encoding_utf32_le:
        case pugi::encoding_utf32_be:
            return 4;
        default:
            return 1;
    }
}

/// The code unit at the front of the text. What the text lacks of it counts as zero.
char32_t _unitAt(std::string_view text, pugi::xml_encoding encoding) {
    const bool bigEndian =
        encoding == pugi::encoding_utf16_be || encoding == pugi::encoding_utf32_be;
    const std::size_t size = _unitSize(encoding);
    char32_t unit = 0;
    for (std::size_t i = 0; i < size && i < text.size(); ++i) {
        const std::size_t shift = 8 * (bigEndian ? size - 1 - i : i);
        unit |= static_cast<char32_t>(static_cast<unsigned char>(text[i])) << shift;
    }
    return unit;
}

/// How many bytes of UTF-8 the unit makes. The two units of a surrogate pair make two bytes each.
std::ptrdiff_t _utf8Size(char32_t unit, pugi::xml_encoding encoding) {
    if (encoding == pugi::encoding_utf8 || unit < 0x80) return 1;
    if (unit < 0x800) return 2;
    if (_unitSize(encoding) == 2 && unit >= 0xd800 && unit < 0xe000) return 2;
    return unit < 0x10000 ? 3 : 4;
}

/// Whether the unit is not the first one of its character.
bool _continues(char32_t unit, pugi::xml_encoding encoding) {
    if (encoding == pugi::encoding_utf8) return (unit & 0xc0) == 0x80;
    return _unitSize(encoding) == 2 && unit >= 0xdc00 && unit < 0xe000;
}

}  // namespace

XmlSource::XmlSource(std::string_view text, LoadReport& report) : text_(text), report_(report) {}

pugi::xml_node XmlSource::root() {
    const pugi::xml_parse_result parsed =
        document_.load_buffer(text_.data(), text_.size(), kParseOptions);
    if (parsed.status == pugi::status_out_of_memory) throw std::bad_alloc();
    encoding_ = parsed.encoding;
    if (!parsed) {
        iRefuse(parsed.offset, std::string("not well-formed: ") + parsed.description());
        return {};
    }
    if (const std::size_t zero = iFindZero(); zero < text_.size()) {
        iRefuse(static_cast<std::ptrdiff_t>(zero), "not well-formed: a zero byte");
        return {};
    }
    pugi::xml_node found;
    for (const pugi::xml_node node : document_.children()) {
        if (node.type() == pugi::node_element && !found) {
            found = node;
        } else if (node.type() == pugi::node_element) {
            report(node, node.name(), "a second root tag", "it was skipped");
        } else {
            report(node, {}, "text outside the root tag", "it was ignored");
        }
    }
    if (!found) iRefuse(0, "not well-formed: there is no tag");
    return found;
}

/// Where a zero byte is, or the size of the text if there is none. The parser takes one for the end
/// of the text. Up to the last node this makes the document malformed, so only the rest is
/// searched.
std::size_t XmlSource::iFindZero() const {
    if (_unitSize(encoding_) != 1) return text_.size();
    pugi::xml_node last = document_;
    while (last.last_child())
        last = last.last_child();
    const std::ptrdiff_t from = (std::max)(last.offset_debug(), std::ptrdiff_t{0});
    return (std::min)(text_.find('\0', static_cast<std::size_t>(from)), text_.size());
}

bool XmlSource::hasRoom() const noexcept {
    return report_.problems.size() < LoadReport::kMaxProblems;
}

void XmlSource::report(pugi::xml_node node, std::string path, std::string what, std::string done) {
    std::ptrdiff_t offset = node.offset_debug();
    // A tag starts at its bracket; the parser's offset is that of its name.
    if (node.type() == pugi::node_element && offset > 0) --offset;
    iAdd(offset, std::move(path), std::move(what), std::move(done));
}

void XmlSource::iRefuse(std::ptrdiff_t offset, std::string what) {
    iAdd(offset, {}, std::move(what), "nothing was loaded");
}

void XmlSource::iAdd(std::ptrdiff_t offset, std::string path, std::string what, std::string done) {
    if (!hasRoom()) {
        ++report_.omitted;
        return;
    }
    const Place place = iPlaceOf(offset);
    report_.problems.push_back(
        {place.line, place.column, std::move(path), std::move(what), std::move(done)});
}

XmlSource::Place XmlSource::iPlaceOf(std::ptrdiff_t offset) {
    Place place = offset >= last_.utf8 ? last_ : Place();
    const std::size_t size = _unitSize(encoding_);
    while (place.unit < text_.size() && place.utf8 < offset) {
        const char32_t unit = _unitAt(text_.substr(place.unit), encoding_);
        place.unit += size;
        place.utf8 += _utf8Size(unit, encoding_);
        const bool crlf = unit == '\r' && place.unit < text_.size() &&
                          _unitAt(text_.substr(place.unit), encoding_) == '\n';
        if (unit == '\n' || (unit == '\r' && !crlf)) {
            ++place.line;
            place.column = 1;
        } else if (!_continues(unit, encoding_)) {
            ++place.column;
        }
    }
    last_ = place;
    return place;
}

}  // namespace geomKit::detail
