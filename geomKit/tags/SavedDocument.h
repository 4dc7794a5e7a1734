/// @file
/// `SavedDocument`, what came of saving an object.
#pragma once

#include <filesystem>
#include <string>
#include <system_error>

#include "geomKit/tags/export.h"

namespace geomKit {

/// Whether an object was saved, and if not, what failed, where and why.
struct SavedDocument {
    enum class Fault {
        None,
        /// No factory is registered for the object's own type, so that the document could not be
        /// loaded. Nothing was written.
        ClassNotRegistered,
        /// The stream failed. What it got may be part of a document.
        StreamFailed,
        /// The file could not be opened: it is a folder, or a device or pipe that is written
        /// directly.
        FileNotOpened,
        /// No temporary file could be made in the file's folder.
        TemporaryNotCreated,
        /// The disk is full, for example.
        FileNotWritten,
        /// The temporary file is complete, but could not take the name of the file.
        FileNotRenamed,
    };

    Fault fault = Fault::None;
    /// The file as the caller named it; empty when the document went elsewhere.
    std::filesystem::path file;
    /// The system's reason, such as `std::errc::permission_denied`; none where the system was not
    /// asked.
    std::error_code reason;

    /// True when the whole document was saved.
    explicit operator bool() const noexcept { return fault == Fault::None; }
    /// What a user can be told, in one line without a newline at its end, such as "scene.xml: no
    /// temporary file could be made in its folder: Permission denied".
    [[nodiscard]] GEOMKIT_TAGS_API std::string text() const;
};

/// The same for an object that was saved to memory.
struct SavedDocumentText : SavedDocument {
    /// Empty when nothing was saved.
    std::string document;
};

}  // namespace geomKit
