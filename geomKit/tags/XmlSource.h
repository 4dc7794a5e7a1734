/// @file
/// `XmlSource`, a parsed document and where its parts lie in the text. Internal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <pugixml.hpp>

#include "geomKit/tags/LoadReport.h"

namespace geomKit::detail {

/// Parses a document, and adds problems to a report with the line and column of each.
class XmlSource {
public:
    /// The text and the report must outlive it.
    XmlSource(std::string_view text, LoadReport& report);

    /// The root tag; null, with the reason reported, when the document is not well-formed.
    [[nodiscard]] pugi::xml_node root();

    /// False when further problems are only counted.
    [[nodiscard]] bool hasRoom() const noexcept;
    /// Adds a problem at a node, or counts it.
    void report(pugi::xml_node node, std::string path, std::string what, std::string done);

private:
    /// A place in the text. The parser counts in bytes of UTF-8, whatever the encoding of the
    /// document: `utf8` is how many the text before the place makes, `unit` how many bytes it has.
    struct Place {
        std::size_t unit = 0;
        std::ptrdiff_t utf8 = 0;
        std::size_t line = 1;
        std::size_t column = 1;
    };

    std::size_t iFindZero() const;
    void iRefuse(std::ptrdiff_t offset, std::string what);
    void iAdd(std::ptrdiff_t offset, std::string path, std::string what, std::string done);
    Place iPlaceOf(std::ptrdiff_t offset);

    std::string_view text_;
    LoadReport& report_;
    pugi::xml_document document_;
    pugi::xml_encoding encoding_ = pugi::encoding_utf8;
    Place last_;  // of the latest problem: the search for the next place starts here
};

}  // namespace geomKit::detail
