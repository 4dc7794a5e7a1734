/// @file
/// `LoadedDocument`, what came of loading a document.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

#include "geomKit/tags/LoadReport.h"
#include "geomKit/tags/Serializable.h"
#include "geomKit/tags/export.h"

namespace geomKit {

namespace detail {

GEOMKIT_TAGS_API std::string textOfLoading(const LoadReport& report,
                                           const std::filesystem::path& file);

}  // namespace detail

/// The object of a document, or why there is none. `T` is `Serializable` or the class that the
/// caller asked for.
template <typename T = Serializable>
struct LoadedDocument {
    /// Null if nothing was loaded; the report then says why.
    std::unique_ptr<T> object;
    /// What was passed over.
    LoadReport report;
    /// The file as the caller named it; empty when the document came from elsewhere.
    std::filesystem::path file;
    /// The system's reason when the file could not be opened or read, such as
    /// `std::errc::no_such_file_or_directory`.
    std::error_code reason;

    /// True when there is an object, even if parts of the document were passed over:
    /// `report.isClean()` tells whether all of it was loaded.
    explicit operator bool() const noexcept { return object != nullptr; }
    /// What a user can be told: a line for each problem, "loaded without problems" when there is
    /// none. Each line begins with the name of the file, if there is one. There is no newline at
    /// the end.
    [[nodiscard]] std::string text() const { return detail::textOfLoading(report, file); }
};

}  // namespace geomKit
