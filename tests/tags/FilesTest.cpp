#include <csignal>
#include <filesystem>
#include <fstream>
#include <set>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/tags/Rig.h"
#include "tests/tags/documents.h"

using namespace geomKit;

namespace fs = std::filesystem;

namespace {

/// Less than a new file has.
constexpr fs::perms kRestricted =
    fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read;

class Files : public testing::Test {
protected:
    Files() : folder_(fs::temp_directory_path() / ("geomKit-files-" + std::to_string(getpid()))) {
        fs::create_directories(folder_);
    }
    ~Files() override { fs::remove_all(folder_); }

    std::set<fs::path> content() const {
        return {fs::directory_iterator(folder_), fs::directory_iterator()};
    }

    const fs::path folder_;
    const fs::path path_ = folder_ / "bone.xml";
};

/// Looks at the folder while it is saved.
class Watcher : public Bone {
public:
    mutable std::set<fs::path> seen;
    mutable fs::perms permissions{};
    fs::path folder;

    void save(OutTag& tag) const override {
        seen.clear();
        for (const fs::path& path : fs::directory_iterator(folder)) {
            if (path.extension() == ".xml") continue;
            seen.insert(path.filename());
            permissions = fs::status(path).permissions();
        }
        Bone::save(tag);
    }
};

const SerializableFactory<Watcher> kWatcherFactory("Watcher");

class Unflushable : public std::streambuf {
    int sync() override { return -1; }
};

Bone boneAt(double x) {
    Bone bone;
    bone.tip.x = x;
    return bone;
}

double tipOf(const fs::path& path) {
    const LoadedDocument loaded = loadDocumentFile<Bone>(path);
    EXPECT_EQ(loaded.text(), path.string() + ": loaded without problems");
    return loaded ? loaded.object->tip.x : HUGE_VAL;
}

TEST_F(Files, SavingReplacesTheFile) {
    EXPECT_EQ(saveDocumentFile(boneAt(1), path_).text(), path_.string() + ": saved");
    EXPECT_EQ(tipOf(path_), 1.0);
    fs::permissions(path_, kRestricted);
    fs::create_symlink("bone.xml", folder_ / "link.xml");
    EXPECT_TRUE(saveDocumentFile(boneAt(2), folder_ / "link.xml"));
    EXPECT_EQ(tipOf(path_), 2.0);
    EXPECT_TRUE(fs::is_symlink(folder_ / "link.xml"));
    EXPECT_EQ(fs::status(path_).permissions(), kRestricted);
    EXPECT_EQ(content().size(), 2u);
}

TEST_F(Files, TheTemporaryFileIsPrivateAndOverwritesNoOther) {
    ASSERT_TRUE(saveDocumentFile(boneAt(1), path_));
    fs::permissions(path_, kRestricted);
    Watcher watcher;
    watcher.folder = folder_;
    ASSERT_TRUE(saveDocumentFile(watcher, path_));
    ASSERT_EQ(watcher.seen.size(), 1u);
    EXPECT_EQ(watcher.permissions, kRestricted);

    // Somebody else has the names that would be next.
    const std::string name = watcher.seen.begin()->string();
    const std::size_t digits = name.find_last_not_of("0123456789") + 1;
    for (int i = 1; i <= 3; ++i) {
        const int number = std::stoi(name.substr(digits)) + i;
        std::ofstream(folder_ / (name.substr(0, digits) + std::to_string(number))) << "theirs";
    }
    const std::set<fs::path> before = content();
    ASSERT_TRUE(saveDocumentFile(watcher, path_));
    EXPECT_EQ(watcher.seen.size(), 4u);
    EXPECT_EQ(content(), before);
    for (const fs::path& theirs : before) {
        if (theirs == path_) continue;
        EXPECT_EQ(fs::file_size(theirs), 6u) << theirs;
    }
}

TEST_F(Files, SavingToWhatNoFileMayReplace) {
    fs::create_symlink("later.xml", folder_ / "link.xml");
    EXPECT_TRUE(saveDocumentFile(boneAt(1), folder_ / "link.xml"));
    EXPECT_EQ(tipOf(folder_ / "later.xml"), 1.0);
    EXPECT_TRUE(fs::is_symlink(folder_ / "link.xml"));

    const fs::path pipe = folder_ / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
    EXPECT_TRUE(saveDocumentFile(boneAt(1), pipe));
    char first = 0;
    EXPECT_EQ(read(reader, &first, 1), 1);
    EXPECT_EQ(first, '<');
    close(reader);
    EXPECT_TRUE(fs::is_fifo(pipe));

    const fs::path longest = folder_ / (std::string(251, 'b') + ".xml");
    EXPECT_TRUE(saveDocumentFile(boneAt(2), longest));
    EXPECT_EQ(tipOf(longest), 2.0);
}

TEST_F(Files, StreamsThatThrowDoNot) {
    std::ofstream closed;
    closed.exceptions(std::ios::badbit | std::ios::failbit);
    EXPECT_EQ(saveDocument(boneAt(1), closed).text(), "the stream failed");
    Unflushable buffer;
    std::ostream tied(&buffer);
    tied.exceptions(std::ios::badbit);
    std::ostringstream out;
    out.tie(&tied);
    EXPECT_EQ(saveDocument(boneAt(1), out).text(), "the stream failed");
    std::istringstream document(saved(boneAt(1)));
    document.exceptions(std::ios::failbit | std::ios::eofbit);
    EXPECT_TRUE(loadDocument<Bone>(document));
    EXPECT_EQ(document.exceptions(), std::ios::failbit | std::ios::eofbit);
    EXPECT_EQ(loadDocument(document).text(), "the stream could not be read; nothing was loaded");
}

TEST_F(Files, AFailedSaveLeavesTheOldFileWhole) {
    const fs::path path = folder_ / "link.xml";
    ASSERT_TRUE(saveDocumentFile(boneAt(1), folder_ / "bone.xml"));
    fs::create_symlink("bone.xml", path);
    Bone large = boneAt(2);
    large.children.resize(10000);

    // As on a full disk: no file of this process may grow beyond 100 kB.
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit small = {100000, limit.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const SavedDocument result = saveDocumentFile(large, path);
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, handler);

    EXPECT_EQ(result.text(), path.string() + ": the file could not be written: File too large");
    EXPECT_EQ(tipOf(path), 1.0);
    EXPECT_EQ(content().size(), 2u) << "a temporary file is left";
}

TEST_F(Files, WhatCannotBeDoneIsToldWithTheSystemsReason) {
    const fs::path locked = folder_ / "locked";
    fs::create_directories(folder_ / "folder" / "within");
    fs::create_directories(locked);
    std::ofstream(locked / "bone.xml") << "unreadable";
    fs::permissions(locked / "bone.xml", fs::perms::none);
    fs::permissions(locked, fs::perms::owner_read | fs::perms::owner_exec);
    const auto expect = [](const fs::path& path, const auto& result, std::errc reason,
                           const std::string& what, const char* end) {
        EXPECT_FALSE(result) << path;
        EXPECT_EQ(result.reason, reason) << path;
        const std::string why = std::make_error_code(reason).message();
        EXPECT_EQ(result.text(), path.string() + ": " + what + ": " + why + end);
    };
    const auto expectNotSaved = [&](const fs::path& path, std::errc reason, const char* what) {
        expect(path, saveDocumentFile(boneAt(1), path), reason, what, "");
    };
    const auto expectNotLoaded = [&](const fs::path& path, std::errc reason, const char* what) {
        expect(path, loadDocumentFile(path), reason, what, "; nothing was loaded");
    };
    const char* const kNotOpened = "the file could not be opened";
    const char* const kNoTemporary = "no temporary file could be made in its folder";
    expectNotSaved(folder_ / "none" / "a.xml", std::errc::no_such_file_or_directory, kNoTemporary);
    expectNotSaved(folder_ / "folder", std::errc::is_a_directory, kNotOpened);
    expectNotLoaded(folder_ / "none.xml", std::errc::no_such_file_or_directory, kNotOpened);
    expectNotLoaded(folder_, std::errc::is_a_directory, "the file could not be read");
    if (fs::exists("/dev/full")) {
        expectNotSaved("/dev/full", std::errc::no_space_on_device, "the file could not be written");
    }
    if (!std::ifstream(locked / "bone.xml").is_open()) {
        expectNotSaved(locked / "a.xml", std::errc::permission_denied, kNoTemporary);
        expectNotLoaded(locked / "bone.xml", std::errc::permission_denied, kNotOpened);
    }
    EXPECT_EQ(content().size(), 2u);
    fs::permissions(locked, fs::perms::owner_all);
}

TEST_F(Files, EachProblemOfAFileBeginsWithItsName) {
    std::ofstream(path_) << "<Bone/>";
    const std::string start = path_.string() + ": line 1, column 1, Bone: missing tag ";
    EXPECT_EQ(loadDocumentFile(path_).text(), start + "\"tip\"; the field keeps its value\n" +
                                                  start +
                                                  "\"children\"; the field keeps its value");
}

TEST_F(Files, AClassThatIsNotRegisteredIsNotSaved) {
    struct Unregistered : Bone {};
    const SavedDocumentText result = saveDocumentText(Unregistered());
    EXPECT_EQ(result.text(), "the object's class is not registered");
    EXPECT_EQ(result.document, "");
    EXPECT_FALSE(saveDocumentFile(Unregistered(), folder_ / "a.xml"));
    EXPECT_TRUE(content().empty());
}

}  // namespace
