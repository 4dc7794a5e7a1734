// Saving and loading while memory runs out, at each allocation in turn, those of the XML parser
// among them.
#include <filesystem>
#include <fstream>
#include <functional>

#include <pugixml.hpp>
#include <unistd.h>

#include "tests/failingMemory.h"
#include "tests/tags/Rig.h"
#include "tests/tags/documents.h"

using namespace geomKit;

namespace fs = std::filesystem;

namespace {

/// Work that returns what came of it as text, empty when it failed. It must fail, by its result or
/// by `std::bad_alloc`, or have its usual result. `check`, called after each run, is told whether
/// it succeeded.
void failAtEach(
    const char* name, const std::function<std::string()>& work,
    const std::function<void(bool)>& check = [](bool) {}) {
    const std::string expected = work();
    ASSERT_NE(expected, "") << name;
    check(true);
    for (const bool forGood : {false, true}) {
        int failures = 0;
        for (long n = 0; n == 0 || failing::hasFailed; ++n) {
            const long before = failing::live;
            bool isDone = false;
            failing::isDoneWithout(n, forGood, [&] {
                const std::string result = work();
                failing::untilFailure = -1;
                isDone = !result.empty();
                EXPECT_EQ(result, isDone ? expected : "") << name << ", allocation " << n;
            });
            EXPECT_EQ(failing::live, before) << name << " leaks, allocation " << n;
            check(isDone);
            failures += isDone ? 0 : 1;
        }
        EXPECT_GT(failures, 5) << name;
    }
}

std::string contentOf(const fs::path& path) {
    std::ostringstream result;
    result << std::ifstream(path).rdbuf();
    return result.str();
}

TEST(Memory, RunsOutWhileSaving) {
    Bone bone;
    bone.children.resize(3);
    failAtEach("text", [&] { return saveDocumentText(bone).document; });
    failAtEach("stream", [&] {
        std::ostringstream out;
        out.exceptions(std::ios::badbit | std::ios::failbit);
        return saveDocument(bone, out) ? out.str() : "";
    });

    const fs::path folder =
        fs::temp_directory_path() / ("geomKit-memory-" + std::to_string(getpid()));
    fs::create_directories(folder);
    const fs::path path = folder / "bone.xml";
    const std::string text = saved(bone);
    std::ofstream(path) << "old";
    const auto toFile = [&] { return saveDocumentFile(bone, path) ? "saved" : ""; };
    failAtEach("file", toFile, [&](bool isSaved) {
        EXPECT_EQ(contentOf(path), isSaved ? text : "old");
        EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);
        std::ofstream(path) << "old";
    });
    fs::remove_all(folder);
}

TEST(Memory, RunsOutWhileLoading) {
    pugi::set_memory_management_functions(failing::allocate, failing::release);
    const std::string text =
        "<Bone><tip x='+1' y='2' w='x'/><children><child><unknown/></child></children></Bone>";
    // The report is a part of the result: no fault may be reported for want of memory.
    const auto all = [](const LoadedDocument<Bone>& loaded) {
        return (loaded ? saved(*loaded.object) : "") + loaded.text();
    };
    failAtEach("text", [&] { return all(loadDocumentText<Bone>(text)); });
    failAtEach("stream", [&] {
        std::istringstream in(text);
        return all(loadDocument<Bone>(in));
    });
}

}  // namespace
