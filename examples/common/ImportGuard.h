/// @file
/// A last line of defence around importers that are not ours.
#pragma once

namespace demo {

/// While it lives, a crash of the process, or 60 seconds of work, ends it with a message on stderr
/// and an exit status of the caller's choice: some importers fall over damaged files or loop over
/// them for ever. Memory is limited to 8 GiB (then `std::bad_alloc`), lest a false vertex count
/// fill the machine. One at a time; POSIX only.
class ImportGuard {
public:
    /// The message is copied, and cut off after some 500 characters.
    ImportGuard(const char* message, int exitStatus);
    ~ImportGuard();
    ImportGuard(const ImportGuard&) = delete;
    ImportGuard& operator=(const ImportGuard&) = delete;
};

}  // namespace demo
