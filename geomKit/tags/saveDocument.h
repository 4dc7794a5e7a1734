/// @file
/// Saving an object as a document.
#pragma once

#include <filesystem>
#include <iosfwd>

#include "geomKit/tags/SavedDocument.h"
#include "geomKit/tags/Serializable.h"
#include "geomKit/tags/export.h"

namespace geomKit {

/// Writes an object as a document whose root tag has the name of its class.
///
/// There must be a factory for the object's own type; nothing is written otherwise. The result
/// tells of every failure. Nothing is thrown but `std::bad_alloc`, whatever the stream is set to
/// throw; exceptions of a class's own `save` pass through. Distinct objects may be saved in
/// distinct threads.
[[nodiscard]] GEOMKIT_TAGS_API SavedDocument saveDocument(const Serializable& object,
                                                          std::ostream& document);

/// The same, to memory.
[[nodiscard]] GEOMKIT_TAGS_API SavedDocumentText saveDocumentText(const Serializable& object);

/// Writes a file: a temporary one beside it, which replaces the file at the end.
///
/// When anything fails, also by an exception, an older file of that name stays as it was and the
/// temporary file is removed. On POSIX systems the new file has the permissions of the old one, and
/// its owner and group where the process may set them; if it may not set the group, the permissions
/// of the group and of others shrink to what both had. A symbolic link is followed. Devices, pipes
/// and links to a file that is not there yet are written directly.
[[nodiscard]] GEOMKIT_TAGS_API SavedDocument saveDocumentFile(const Serializable& object,
                                                              const std::filesystem::path& path);

}  // namespace geomKit
