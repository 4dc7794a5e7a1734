/// @file
/// `XmlSource`, a parsed document and where its parts lie in the text. Internal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <pugixml.hpp>

#include "host/tags/LoadReport.h"

/// Parses a document and takes down the problems that are found in it.
class XmlSource {
public:
    /// The text and the report must outlive it.
    XmlSource(std::string_view text, LoadReport& report);

    /// The root tag; null, with the reason reported, when the document is not well-formed.
    pugi::xml_node root();

    /// False when further problems are only counted.
    bool hasRoom() const;
    /// Adds a problem at a node, or counts it.
    void report(pugi::xml_node node, std::string path, std::string what, std::string done);

private:
    /// A place in the text, and how many bytes of UTF-8 the text before it makes: the parser counts
    /// in those, whatever the encoding of the document.
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
    Place last_;  // where the latest problem was: the next one is usually further on
};
