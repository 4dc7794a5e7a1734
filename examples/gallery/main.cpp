/// @file
/// A host that shows what the queries answer: one picture for each family, drawn through the debug
/// hooks.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "examples/gallery/pictures.h"

namespace {

constexpr char kUsage[] =
    R"(usage: geomkit-gallery [--out DIR]

Draws one picture for each family of geometric queries, as SVG.

  --out DIR   where the pictures go, by default "out"

Exit status 2 when an argument is wrong or a file cannot be written.
)";

constexpr int kFailure = 2;

int fail(const std::string& message) {
    std::fprintf(stderr, "geomkit-gallery: %s\n", message.c_str());
    return kFailure;
}

}  // namespace

int main(int argc, char** argv) {
    std::filesystem::path folder = "out";
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (word == "--help" || word == "-h") {
            std::fputs(kUsage, stdout);
            return 0;
        }
        if (word != "--out") return fail("unknown argument " + word + " (--help tells more)");
        if (i + 1 == argc) return fail("--out needs a value (--help tells more)");
        folder = argv[++i];
    }
    std::error_code status;
    std::filesystem::create_directories(folder, status);
    if (status) return fail(folder.string() + ": " + status.message());
    for (const gallery::Picture& picture : gallery::pictures()) {
        const std::string file = (folder / (std::string(picture.name) + ".svg")).string();
        std::ofstream stream(file, std::ios::binary);
        stream << picture.draw() << std::flush;
        if (!stream) return fail("cannot write " + file);
        std::printf("%s\n", file.c_str());
    }
    return 0;
}
