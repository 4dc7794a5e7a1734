/// @file
/// A host that shows what the queries answer: one picture for each family, drawn through the debug
/// hooks.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "examples/common/commandLine.h"
#include "examples/gallery/pictures.h"

namespace {

constexpr char kUsage[] =
    R"(usage: geomkit-gallery [--out DIR]

Draws one picture for each family of geometric queries, as SVG.

  --out DIR   where the pictures go, by default "out"

Exit status 2 when an argument is wrong or a file cannot be written.
)";

int fail(const std::string& message) {
    return demo::fail("geomkit-gallery", message);
}

}  // namespace

int main(int argc, char** argv) {
    demo::Options options;
    options.out = "out";
    std::string error;
    if (!demo::parseCommandLine(argc, argv, &options, &error)) {
        return fail(error + " (--help tells more)");
    }
    if (options.help) {
        std::fputs(kUsage, stdout);
        return 0;
    }
    if (!options.input.empty() || options.size != 0) {
        return fail("it takes --out alone (--help tells more)");
    }
    if (!demo::makeOutputFolder(options, &error)) return fail(error);
    for (const gallery::Picture& picture : gallery::pictures()) {
        const std::string file =
            (std::filesystem::path(options.out) / (std::string(picture.name) + ".svg")).string();
        std::ofstream stream(file, std::ios::binary);
        stream << picture.draw() << std::flush;
        if (!stream) return fail("cannot write " + file);
        std::printf("%s\n", file.c_str());
    }
    return 0;
}
