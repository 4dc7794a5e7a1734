#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include <gtest/gtest.h>
#include <png.h>
#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;

constexpr int kWidth = 128;
constexpr int kHeight = 88;

class DemoProgram : public testing::Test {
protected:
    void SetUp() override {
        folder = fs::path(testing::TempDir()) /
                 (std::string("geomkit_demo_") +
                  testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(folder);
        fs::create_directories(folder);
    }
    void TearDown() override { fs::remove_all(folder); }

    /// Runs the program; `output` and `error` receive what it wrote.
    int run(const std::string& arguments) {
        const std::string out = (folder / "stdout").string();
        const std::string err = (folder / "stderr").string();
        const int status = std::system(
            ("'" GEOMKIT_DEMO "' " + arguments + " >'" + out + "' 2>'" + err + "'").c_str());
        output = contents(out);
        error = contents(err);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    std::string pictures() const {
        return "--size " + std::to_string(kWidth) + " --out '" + folder.string() + "'";
    }

    std::string write(const std::string& name, const std::string& text) const {
        const fs::path path = folder / name;
        std::ofstream(path) << text;
        return path.string();
    }

    static std::string contents(const std::string& path) {
        std::ostringstream text;
        text << std::ifstream(path).rdbuf();
        return text.str();
    }

    /// The pixels of a picture as 0xRRGGBB; fails when it is no PNG of the size asked for.
    std::vector<unsigned> pixels(const std::string& name) const {
        png_image header{};
        header.version = PNG_IMAGE_VERSION;
        EXPECT_NE(png_image_begin_read_from_file(&header, (folder / name).c_str()), 0) << name;
        header.format = PNG_FORMAT_RGB;
        EXPECT_EQ(header.width, static_cast<unsigned>(kWidth)) << name;
        EXPECT_EQ(header.height, static_cast<unsigned>(kHeight)) << name;
        std::vector<unsigned char> bytes(PNG_IMAGE_SIZE(header));
        EXPECT_NE(png_image_finish_read(&header, nullptr, bytes.data(), 0, nullptr), 0) << name;
        std::vector<unsigned> result;
        for (std::size_t i = 0; i + 2 < bytes.size(); i += 3) {
            result.push_back(bytes[i] * 0x10000U + bytes[i + 1] * 0x100U + bytes[i + 2]);
        }
        return result;
    }

    fs::path folder;
    std::string output;
    std::string error;
};

std::size_t differences(const std::vector<unsigned>& a, const std::vector<unsigned>& b) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        count += a[i] != b[i] ? 1 : 0;
    }
    return count;
}

}  // namespace

TEST_F(DemoProgram, drawsTheTeapot) {
    ASSERT_EQ(run(pictures()), 0) << error;
    const std::vector<unsigned> checker = pixels("checker.png");
    for (const char* name : {"cosine.png", "curvature.png", "extrapolated.png", "boundaries.png"}) {
        const std::vector<unsigned> other = pixels(name);
        EXPECT_GT(std::set<unsigned>(other.begin(), other.end()).size(), 200U) << name;
        EXPECT_GT(differences(checker, other), checker.size() / 10) << name;
        EXPECT_NE(output.find((folder / name).string()), std::string::npos) << name;
    }
    for (const char* word :
         {"vertices", "facets", "chains", "20 x 20 cells", "queries", "us each"}) {
        EXPECT_NE(output.find(word), std::string::npos) << word;
    }
    const std::string all = std::to_string(9 * kWidth * kHeight);
    EXPECT_NE(output.find("answers " + all + " of " + all + " queries alike"), std::string::npos)
        << output;
    // The teapot covers a good third of the picture and extrapolation changes all the rest.
    const std::size_t outside = differences(checker, pixels("extrapolated.png"));
    EXPECT_GT(outside, checker.size() / 2);
    EXPECT_LT(outside, checker.size() * 4 / 5);
}

TEST_F(DemoProgram, drawsAModelFile) {
    const std::string quad = "v 0 0 0\nv 2 0 0\nv 2 1 0\nv 0 1 0\n";
    const std::string uvs = "vt 0 0\nvt 1 0\nvt 1 1\nvt 0 1\n";
    ASSERT_EQ(run("'" + write("uv.obj", quad + uvs + "f 1/1 2/2 3/3 4/4\n") + "' " + pictures()), 0)
        << error;
    EXPECT_NE(output.find(" 8192 facets, 1 boundary chains"), std::string::npos) << output;
    EXPECT_EQ(output.find("no texture coordinates"), std::string::npos);
    EXPECT_FALSE(fs::exists(folder / "curvature.png"));

    ASSERT_EQ(run("'" + write("plain.obj", quad + "f 1 2 3 4\n") + "' " + pictures()), 0) << error;
    EXPECT_NE(output.find("no texture coordinates"), std::string::npos);
}

TEST_F(DemoProgram, refusesWhatItCannotRead) {
    const std::pair<const char*, const char*> cases[] = {
        {"empty.obj", ""},
        {"noFaces.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\n"},
        {"badIndex.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 9\n"},
        {"infinite.obj", "v 0 0 0\nv 1e999 0 0\nv 0 1 0\nf 1 2 3\n"},
        {"garbage.ply",
         "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\nend_header\n1 2\n"},
        {"unknown.xyz", "1 2 3\n"},
        {"huge.off", "OFF\n353535235358 6 0\n-0.5 -0.5 0.5\n"},
    };
    for (const auto& [name, text] : cases) {
        const std::string path = write(name, text);
        EXPECT_EQ(run("'" + path + "' " + pictures()), 2) << name << ": " << error;
        EXPECT_NE(error.find(path), std::string::npos) << error;
    }
    for (const std::string& arguments :
         {std::string("'") + (folder / "missing.obj").string() + "'", "'" + folder.string() + "'",
          std::string("--size 7"), std::string("--bad")}) {
        EXPECT_EQ(run(arguments), 2) << arguments;
        EXPECT_FALSE(error.empty()) << arguments;
    }
}

TEST_F(DemoProgram, explainsItself) {
    EXPECT_EQ(run("--help"), 0);
    EXPECT_NE(output.find("--out"), std::string::npos);
    EXPECT_TRUE(error.empty());
}

TEST_F(DemoProgram, saysWhenPicturesCannotBeWritten) {
    const std::string file = write("file", "in the way");
    EXPECT_EQ(run("--size 64 --out '" + file + "/pictures'"), 1);
    EXPECT_NE(error.find(file), std::string::npos) << error;
}
