#include <csignal>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/tags/Rig.h"
#include "tests/tags/documents.h"

namespace fs = std::filesystem;

namespace {

class Files : public testing::Test {
protected:
    Files() : folder_(fs::temp_directory_path() / ("geomKit-files-" + std::to_string(getpid()))) {
        fs::create_directories(folder_);
    }
    ~Files() override { fs::remove_all(folder_); }

    std::size_t count() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
    }

    fs::path folder_;
};

Bone boneAt(double x) {
    Bone bone;
    bone.tip.x = x;
    return bone;
}

double tipOf(const fs::path& path) {
    const LoadedDocument loaded = loadDocumentFile(path);
    EXPECT_TRUE(loaded.report.isClean()) << loaded.report.text();
    return dynamic_cast<const Bone&>(*loaded.object).tip.x;
}

TEST_F(Files, SavingReplacesTheFile) {
    const fs::path path = folder_ / "bone.xml";
    EXPECT_TRUE(saveDocumentFile(boneAt(1), path));
    EXPECT_EQ(tipOf(path), 1.0);
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink("bone.xml", folder_ / "link.xml");
    EXPECT_TRUE(saveDocumentFile(boneAt(2), folder_ / "link.xml"));
    EXPECT_EQ(tipOf(path), 2.0);
    EXPECT_TRUE(fs::is_symlink(folder_ / "link.xml"));
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(count(), 2u);
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
    EXPECT_FALSE(saveDocument(boneAt(1), closed));
    std::istringstream document(saved(boneAt(1)));
    document.exceptions(std::ios::failbit | std::ios::eofbit);
    EXPECT_NE(loadDocument(document).object, nullptr);
    EXPECT_EQ(document.exceptions(), std::ios::failbit | std::ios::eofbit);
}

TEST_F(Files, AFailedSaveLeavesTheOldFileWhole) {
    const fs::path path = folder_ / "bone.xml";
    ASSERT_TRUE(saveDocumentFile(boneAt(1), path));
    Bone large = boneAt(2);
    large.children.resize(10000);

    // As on a full disk: no file of this process may grow beyond 100 kB.
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit small = {100000, limit.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    std::string problem;
    EXPECT_FALSE(saveDocumentFile(large, path, &problem));
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, handler);

    EXPECT_EQ(problem, "the file could not be written");
    EXPECT_EQ(tipOf(path), 1.0);
    EXPECT_EQ(count(), 1u) << "a temporary file is left";
}

TEST_F(Files, WhatCannotBeDone) {
    struct Unregistered : Bone {};
    std::string problem;
    EXPECT_FALSE(saveDocumentFile(Unregistered(), folder_ / "a.xml", &problem));
    EXPECT_EQ(problem, "the object's class is not registered");
    EXPECT_FALSE(saveDocumentFile(boneAt(1), folder_ / "none" / "a.xml", &problem));
    EXPECT_EQ(problem, "the file could not be written");
    fs::create_directories(folder_ / "folder" / "within");
    EXPECT_FALSE(saveDocumentFile(boneAt(1), folder_ / "folder", &problem));
    EXPECT_EQ(problem, "the written file could not take the place of the old one");
    EXPECT_EQ(count(), 1u);

    for (const fs::path& path : {folder_ / "none.xml", folder_}) {
        const LoadedDocument loaded = loadDocumentFile(path);
        EXPECT_EQ(loaded.object, nullptr);
        ASSERT_EQ(loaded.report.problems.size(), 1u);
        EXPECT_EQ(loaded.report.problems[0].line, 0u);
    }
}

}  // namespace
