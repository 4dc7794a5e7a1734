/// @file
/// `FileReplacement`, a new file that takes the place of an old one. Internal.
#pragma once

#include <filesystem>
#include <system_error>

#include "geomKit/tags/File.h"

namespace geomKit::detail {

/// A temporary file beside the target, so that renaming it does not copy it. The old file stays as
/// it is until then.
class FileReplacement {
public:
    /// Makes the temporary file; `file().error()` tells whether it could. At no time can anyone
    /// read it who cannot read the old file.
    explicit FileReplacement(const std::filesystem::path& target);
    /// Removes the temporary file unless it has taken the place of the target.
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    /// The temporary file, open for writing. Close it before `replace`.
    [[nodiscard]] File& file() noexcept { return file_; }

    /// Gives the temporary file the name of the target. Returns the system's reason if it fails.
    [[nodiscard]] std::error_code replace() noexcept;

private:
    std::filesystem::path target_;
    std::filesystem::path temporary_;
    File file_;
    bool isTemporary_ = false;
};

}  // namespace geomKit::detail
