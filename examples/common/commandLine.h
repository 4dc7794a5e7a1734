/// @file
/// The options that the host programs share.
#pragma once

#include <string>

namespace demo {

struct Options {
    /// The one argument that is no option; empty when there is none.
    std::string input;
    /// Where the pictures go.
    std::string out;
    /// Width of the pictures in pixels.
    int size = 0;
    bool help = false;
};

inline constexpr int kMinSize = 32;
inline constexpr int kMaxSize = 4096;

/// Reads `--help`, `--out DIR`, `--size N` and at most one further argument over the defaults in
/// `options`. False, with a message for the user, on anything else.
bool parseCommandLine(int argc, const char* const* argv, Options* options, std::string* error);

/// Makes the folder `options.out` with those above it. False, with a message for the user, when
/// there can be none.
bool makeOutputFolder(const Options& options, std::string* error);

/// Tells the user what went wrong and returns the exit status of every such end, 2.
int fail(const char* program, const std::string& message);

}  // namespace demo
