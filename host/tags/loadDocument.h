/// @file
/// Loading an object from a document.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <memory>
#include <string_view>

#include "host/tags/LoadReport.h"
#include "host/tags/Serializable.h"
#include "host/tags/export.h"

/// What came of a document: the object, or null when there is none to be had, and the report.
struct LoadedDocument {
    std::unique_ptr<Serializable> object;
    LoadReport report;
};

/// Makes the object whose class the root tag names, by the factory of that name, and loads it.
///
/// There is no object when the document cannot be read, is not well-formed (a truncated one is
/// not) or names a class that is not registered. Every other fault is reported and passed over: the
/// object then has all that could be read. Nothing is thrown for any content; memory is in
/// proportion to the document. Safe from any number of threads.
GEOMKIT_TAGS_API LoadedDocument loadDocument(std::string_view document);
GEOMKIT_TAGS_API LoadedDocument loadDocument(std::istream& document);
/// From a file.
GEOMKIT_TAGS_API LoadedDocument loadDocumentFile(const std::filesystem::path& path);
