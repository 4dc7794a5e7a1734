#include "geomKit/tags/File.h"

#include <cerrno>

#if defined(__unix__) || defined(__APPLE__)
#define GEOMKIT_TAGS_POSIX 1
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace geomKit::detail {

namespace {

#ifdef GEOMKIT_TAGS_POSIX

std::FILE* _open(const char* path, File::Mode mode) noexcept {
    constexpr int kFlags[] = {O_RDONLY, O_WRONLY | O_CREAT | O_TRUNC, O_WRONLY | O_CREAT | O_EXCL,
                              O_WRONLY | O_CREAT | O_EXCL};
    const mode_t permissions = mode == File::Mode::CreatePrivate ? 0600 : 0666;
    const int descriptor = ::open(path, kFlags[static_cast<int>(mode)] | O_CLOEXEC, permissions);
    if (descriptor < 0) return nullptr;
    std::FILE* file = ::fdopen(descriptor, mode == File::Mode::Read ? "rb" : "wb");
    if (file == nullptr) {
        const int reason = errno;
        ::close(descriptor);
        if (mode == File::Mode::Create || mode == File::Mode::CreatePrivate) ::unlink(path);
        errno = reason;
    }
    return file;
}

void _copyAccess(int descriptor, const char* other) noexcept {
    struct stat old = {};
    if (::stat(other, &old) != 0) return;
    mode_t permissions = old.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO);
    const auto anyOwner = static_cast<uid_t>(-1);
    if (::fchown(descriptor, old.st_uid, old.st_gid) != 0 &&
        ::fchown(descriptor, anyOwner, old.st_gid) != 0) {
        // The file is of another group. Who was in the old one is now one of the others, and the
        // reverse: both may do only what both might do before.
        const mode_t both = (permissions >> 3) & permissions & S_IRWXO;
        permissions = (permissions & S_IRWXU) | (both << 3) | both;
    }
    // Left as it is if this fails, for its owner alone.
    static_cast<void>(::fchmod(descriptor, permissions));
}

#else

#ifdef _WIN32
#define GEOMKIT_TAGS_FOPEN(path, mode) ::_wfopen(path, L##mode)
#else
#define GEOMKIT_TAGS_FOPEN(path, mode) std::fopen(path, mode)
#endif

std::FILE* _open(const std::filesystem::path::value_type* path, File::Mode mode) noexcept {
    if (mode == File::Mode::Read) return GEOMKIT_TAGS_FOPEN(path, "rb");
    if (mode == File::Mode::Overwrite) return GEOMKIT_TAGS_FOPEN(path, "wb");
    return GEOMKIT_TAGS_FOPEN(path, "wbx");
}

#endif

}  // namespace

void File::open(const std::filesystem::path& path, Mode mode) noexcept {
    error_.clear();
    errno = 0;
    file_ = _open(path.c_str(), mode);
    if (file_ == nullptr) {
        iFail();
    } else {
        // What is read and written comes in large pieces already.
        static_cast<void>(std::setvbuf(file_, nullptr, _IONBF, 0));
    }
}

void File::close() noexcept {
    if (file_ == nullptr) return;
    errno = 0;
    const bool isClosed = std::fclose(file_) == 0;
    file_ = nullptr;
    if (!isClosed) iFail();
}

std::size_t File::read(char* data, std::size_t size) noexcept {
    return iTransfer(size, [&](std::size_t done) noexcept {
        return std::fread(data + done, 1, size - done, file_);
    });
}

std::size_t File::write(const char* data, std::size_t size) noexcept {
    return iTransfer(size, [&](std::size_t done) noexcept {
        return std::fwrite(data + done, 1, size - done, file_);
    });
}

template <typename Step>
std::size_t File::iTransfer(std::size_t size, const Step& step) noexcept {
    std::size_t done = 0;
    while (file_ != nullptr) {
        errno = 0;
        done += step(done);
        if (done == size || std::feof(file_) != 0) break;
        if (errno != EINTR) {
            iFail();
            break;
        }
        std::clearerr(file_);  // a signal came in between
    }
    return done;
}

void File::copyAccess([[maybe_unused]] const std::filesystem::path& other) noexcept {
#ifdef GEOMKIT_TAGS_POSIX
    if (file_ != nullptr) _copyAccess(::fileno(file_), other.c_str());
#endif
}

void File::iFail() noexcept {
    if (error_) return;
    error_ = errno == 0 ? std::make_error_code(std::errc::io_error)
                        : std::error_code(errno, std::generic_category());
}

}  // namespace geomKit::detail
