// Saving and loading while memory runs out, at each allocation in turn: operator new and the
// memory of the XML parser are counted and made to fail.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <new>

#include <pugixml.hpp>
#include <unistd.h>

#include "tests/tags/Rig.h"
#include "tests/tags/documents.h"

using namespace geomKit;

namespace fs = std::filesystem;

namespace {

long live = 0;           // allocations that were not freed yet
long untilFailure = -1;  // how many more succeed; all of them when negative
bool failsForGood = false;
bool hasFailed = false;

void* allocate(std::size_t size) {
    if (untilFailure == 0) {
        hasFailed = true;
        if (!failsForGood) untilFailure = -1;
        return nullptr;
    }
    if (untilFailure > 0) --untilFailure;
    void* memory = std::malloc(size);
    if (memory != nullptr) ++live;
    return memory;
}

void release(void* memory) {
    if (memory != nullptr) --live;
    std::free(memory);
}

}  // namespace

// Not inlined: g++ takes an inlined `free` for a mistake where it sees the `new` alone.
[[gnu::noinline]] void* operator new(std::size_t size) {
    if (void* memory = allocate(size)) return memory;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    release(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    release(memory);
}

namespace {

/// Work that returns what came of it as text, empty when it failed.
using Work = std::function<std::string()>;

/// Does the work with its n-th allocation failing, for each n until it has no more of them; then
/// with all later ones failing too. It must fail, by its result or by `std::bad_alloc`, or have its
/// usual result. `check`, called after each run, is told whether it succeeded.
void failAtEach(const char* name, const Work& work, const std::function<void(bool)>& check) {
    const std::string expected = work();
    ASSERT_NE(expected, "") << name;
    check(true);
    for (const bool forGood : {false, true}) {
        int failures = 0;
        for (long n = 0; n == 0 || hasFailed; ++n) {
            const long before = live;
            failsForGood = forGood;
            hasFailed = false;
            untilFailure = n;
            bool isDone = false;
            try {
                const std::string result = work();
                untilFailure = -1;
                isDone = !result.empty();
                EXPECT_EQ(result, isDone ? expected : "") << name << ", allocation " << n;
            } catch (const std::bad_alloc&) {
                untilFailure = -1;
            }
            EXPECT_EQ(live, before) << name << " leaks, allocation " << n;
            check(isDone);
            failures += isDone ? 0 : 1;
        }
        EXPECT_GT(failures, 5) << name;
    }
}

void ignore(bool /*isDone*/) {}

std::string contentOf(const fs::path& path) {
    std::ostringstream result;
    result << std::ifstream(path).rdbuf();
    return result.str();
}

class Memory : public testing::Test {
protected:
    Memory() { bone.children.resize(3); }

    Bone bone;
};

TEST_F(Memory, RunsOutWhileSaving) {
    const auto toText = [&] { return saveDocumentText(bone).document; };
    failAtEach("text", toText, ignore);
    const auto toStream = [&] {
        std::ostringstream out;
        out.exceptions(std::ios::badbit | std::ios::failbit);
        return saveDocument(bone, out) ? out.str() : "";
    };
    failAtEach("stream", toStream, ignore);
}

TEST_F(Memory, RunsOutWhileAFileIsReplaced) {
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

TEST_F(Memory, RunsOutWhileLoading) {
    pugi::set_memory_management_functions(allocate, release);
    const std::string text =
        "<Bone><tip x='+1' y='2' w='x'/><children><child><unknown/></child></children></Bone>";
    // The report is a part of the result: no fault may be reported for want of memory.
    const auto all = [](const LoadedDocument<Bone>& loaded) {
        return (loaded ? saved(*loaded.object) : "") + loaded.text();
    };
    const auto fromText = [&] { return all(loadDocumentText<Bone>(text)); };
    failAtEach("text", fromText, ignore);
    const auto fromStream = [&] {
        std::istringstream in(text);
        return all(loadDocument<Bone>(in));
    };
    failAtEach("stream", fromStream, ignore);
}

}  // namespace
