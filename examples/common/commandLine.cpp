#include "examples/common/commandLine.h"

#include <charconv>
#include <cstdio>
#include <filesystem>
#include <string_view>

namespace demo {

bool parseCommandLine(int argc, const char* const* argv, Options* options, std::string* error) {
    for (int i = 1; i < argc; ++i) {
        const std::string_view word = argv[i];
        if (word == "--help" || word == "-h") {
            options->help = true;
        } else if (word == "--out" || word == "--size") {
            if (i + 1 == argc) {
                *error = std::string(word) + " needs a value";
                return false;
            }
            const std::string_view value = argv[++i];
            if (word == "--out") {
                options->out = value;
                continue;
            }
            const char* end = value.data() + value.size();
            const auto [stop, status] = std::from_chars(value.data(), end, options->size);
            if (status != std::errc() || stop != end || options->size < kMinSize ||
                options->size > kMaxSize) {
                *error = "--size takes a number of pixels from " + std::to_string(kMinSize) +
                         " to " + std::to_string(kMaxSize);
                return false;
            }
        } else if (!word.empty() && word.front() == '-') {
            *error = "unknown option " + std::string(word);
            return false;
        } else if (!options->input.empty()) {
            *error = "more than one model: " + options->input + " and " + std::string(word);
            return false;
        } else {
            options->input = word;
        }
    }
    return true;
}

bool makeOutputFolder(const Options& options, std::string* error) {
    std::error_code status;
    std::filesystem::create_directories(options.out, status);
    if (status) *error = "cannot make the folder " + options.out + ": " + status.message();
    return !status;
}

int fail(const char* program, const std::string& message) {
    constexpr int kFailure = 2;
    std::fprintf(stderr, "%s: %s\n", program, message.c_str());
    return kFailure;
}

}  // namespace demo
