#include "geomKit/tags/FileReplacement.h"

#include <atomic>
#include <string>

namespace geomKit::detail {

namespace fs = std::filesystem;

namespace {

/// Names may be taken by other processes, and by files that a process left when it was killed.
constexpr int kMaxTries = 10000;

/// A name that no other call in this process gets, and short even if the target's is as long as it
/// may be.
fs::path _temporaryName(const fs::path& folder) {
    static std::atomic<unsigned> count{0};
    return folder / (".saving-" + std::to_string(count++));
}

}  // namespace

FileReplacement::FileReplacement(const fs::path& target) : target_(target) {
    std::error_code ignored;
    const bool isOldThere = fs::exists(fs::status(target, ignored));
    const auto mode = isOldThere ? File::Mode::CreatePrivate : File::Mode::Create;
    int tries = 0;
    do {
        temporary_ = _temporaryName(target.parent_path());
        file_.open(temporary_, mode);
    } while (file_.error() == std::errc::file_exists && ++tries < kMaxTries);
    isTemporary_ = !file_.error();
    if (isOldThere) file_.copyAccess(target);
}

FileReplacement::~FileReplacement() {
    if (!isTemporary_) return;
    file_.close();
    std::error_code ignored;
    fs::remove(temporary_, ignored);
}

std::error_code FileReplacement::replace() noexcept {
    std::error_code reason;
    fs::rename(temporary_, target_, reason);
    isTemporary_ = static_cast<bool>(reason);
    return reason;
}

}  // namespace geomKit::detail
