/// @file
/// `File`, a file of the system, read or written without exceptions. Internal.
#pragma once

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace geomKit::detail {

/// An open file. Nothing is thrown: the first failure is kept, with the system's reason.
class File {
public:
    enum class Mode {
        Read,
        /// Makes a file, or empties the one that is there.
        Overwrite,
        /// Makes a file; fails if there is one of that name.
        Create,
        /// The same. Where the system has such permissions, only the owner may open the file.
        CreatePrivate,
    };

    File() = default;
    ~File() { close(); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    /// Opens a file that is not open yet, and forgets an earlier failure.
    void open(const std::filesystem::path& path, Mode mode) noexcept;
    /// Closing may fail too: some systems write as late as that.
    void close() noexcept;

    [[nodiscard]] const std::error_code& error() const noexcept { return error_; }

    /// How many bytes were read: fewer than asked for at the end of the file and after a failure.
    std::size_t read(char* data, std::size_t size) noexcept;
    /// How many bytes were written: fewer than asked for after a failure.
    std::size_t write(const char* data, std::size_t size) noexcept;

    /// Takes over the owner, the group and the permissions of another file as far as the system
    /// lets it, and never so that someone can read this file who cannot read the other one.
    void copyAccess(const std::filesystem::path& other) noexcept;

private:
    template <typename Step>
    std::size_t iTransfer(std::size_t size, const Step& step) noexcept;
    void iFail() noexcept;

    std::FILE* file_ = nullptr;
    std::error_code error_;
};

}  // namespace geomKit::detail
