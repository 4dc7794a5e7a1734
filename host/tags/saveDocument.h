/// @file
/// Saving an object as a document.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>

#include "host/tags/Serializable.h"
#include "host/tags/export.h"

/// Writes an object as a document whose root tag has the name of its class.
///
/// False when the stream failed, or when no factory is registered for the object's own type, since
/// the document could not be loaded; nothing is written then.
GEOMKIT_TAGS_API bool saveDocument(const Serializable& object, std::ostream& document);

/// Writes a file: to a temporary name beside it, which replaces the file at the end. When anything
/// fails, an older file of that name stays as it was; false is returned and the reason stored in
/// `problem` if it is not null. A symbolic link is followed; permissions are kept. Devices, pipes
/// and links to a file that is not there yet are written directly.
GEOMKIT_TAGS_API bool saveDocumentFile(const Serializable& object,
                                       const std::filesystem::path& path,
                                       std::string* problem = nullptr);
