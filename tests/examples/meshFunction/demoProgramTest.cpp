#include <cstdlib>
#include <filesystem>
#include <functional>
#include <numeric>
#include <set>
#include <string>

#include <gtest/gtest.h>
#include <png.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using Pixels = std::vector<unsigned>;

/// The pixels of a picture as 0xRRGGBB; fails when it is no PNG.
Pixels pixels(const fs::path& path) {
    png_image header{};
    header.version = PNG_IMAGE_VERSION;
    EXPECT_NE(png_image_begin_read_from_file(&header, path.c_str()), 0) << path;
    header.format = PNG_FORMAT_RGB;
    std::vector<unsigned char> bytes(PNG_IMAGE_SIZE(header));
    EXPECT_NE(png_image_finish_read(&header, nullptr, bytes.data(), 0, nullptr), 0) << path;
    Pixels result;
    for (std::size_t i = 0; i + 2 < bytes.size(); i += 3) {
        result.push_back(bytes[i] * 0x10000U + bytes[i + 1] * 0x100U + bytes[i + 2]);
    }
    return result;
}

TEST(DemoProgram, DrawsFivePicturesOfTheTeapot) {
    const fs::path folder =
        fs::temp_directory_path() / ("geomKit-demo-" + std::to_string(getpid()));
    ASSERT_EQ(std::system(("'" GEOMKIT_DEMO "' --size 128 --out " + folder.string()).c_str()), 0);
    const Pixels checker = pixels(folder / "checker.png");
    ASSERT_EQ(checker.size(), 128u * 88u);
    const auto differences = [&checker](const Pixels& other) {
        return std::inner_product(checker.begin(), checker.end(), other.begin(), std::size_t{0},
                                  std::plus<>(), std::not_equal_to<>());
    };
    for (const char* name : {"cosine.png", "curvature.png", "extrapolated.png", "boundaries.png"}) {
        const Pixels other = pixels(folder / name);
        ASSERT_EQ(other.size(), checker.size()) << name;
        EXPECT_GT(std::set<unsigned>(other.begin(), other.end()).size(), 200U) << name;
        EXPECT_GT(differences(other), checker.size() / 10) << name;
    }
    // The teapot covers a good third of the picture and extrapolation changes all the rest.
    const std::size_t outside = differences(pixels(folder / "extrapolated.png"));
    EXPECT_GT(outside, checker.size() / 2);
    EXPECT_LT(outside, checker.size() * 4 / 5);
    fs::remove_all(folder);
}

}  // namespace
