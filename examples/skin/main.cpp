/// @file
/// A host that skins a character with the library and draws it at rest and posed.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <assimp/anim.h>

#include "examples/common/commandLine.h"
#include "examples/common/writePng.h"
#include "examples/skin/RigFile.h"
#include "examples/skin/picture.h"
#include "examples/skin/tube.h"

using namespace geomKit;

namespace {

constexpr char kUsage[] =
    R"(usage: geomkit-skin [FILE] [--pose NAME] [--time SECONDS] [--out DIR] [--size PIXELS]

Skins a mesh by its bones and draws it at rest and posed, the bones on top.

  FILE             a rigged character in any format that Assimp reads: glTF, FBX, Collada, X, ...;
                   without it, a tube of bones is swung, twisted and stretched
  --pose NAME      the animation that poses the character; otherwise the first that moves it.
                   A character without one has its bones bent
  --time SECONDS   the time in the animation; otherwise where the bones are farthest from rest
  --out DIR        where the pictures (PNG) and the posed mesh (OBJ) go, by default "out"
  --size PIXELS    width of the pictures, by default 1600

Exit status 2 when a file cannot be read or written.
)";

constexpr double kDegree = 3.141592653589793 / 180.0;
constexpr double kBend = 100.0 * kDegree;

struct SkinOptions {
    demo::Options common;
    std::string pose;
    std::optional<double> time;
};

int fail(const std::string& message) {
    return demo::fail("geomkit-skin", message);
}

/// Takes out the options of this program and leaves the rest to the common ones.
bool parse(int argc, char** argv, SkinOptions* options, std::string* error) {
    std::vector<const char*> rest;
    for (int i = 0; i < argc; ++i) {
        const std::string word = argv[i];
        if (word != "--pose" && word != "--time") {
            rest.push_back(argv[i]);
            continue;
        }
        if (i + 1 == argc) {
            *error = word + " needs a value";
            return false;
        }
        const char* const value = argv[++i];
        if (word == "--pose") {
            options->pose = value;
            continue;
        }
        char* end = nullptr;
        options->time = std::strtod(value, &end);
        if (end == value || *end != '\0' || !std::isfinite(*options->time)) {
            *error = "--time takes a number of seconds";
            return false;
        }
    }
    return demo::parseCommandLine(static_cast<int>(rest.size()), rest.data(), &options->common,
                                  error);
}

/// Where the files of a run go.
struct Output {
    std::filesystem::path folder;
    std::string name;
    int width;

    std::string path(const std::string& ending) const {
        return (folder / (name + ending)).string();
    }
};

bool writePicture(const demo::RiggedMesh& mesh, const std::vector<BoneTransformVector>& poses,
                  const std::string& path, int width, std::string* error) {
    if (!demo::writePng(demo::drawPoses(mesh, poses, width), path, error)) return false;
    std::printf("%s\n", path.c_str());
    return true;
}

/// The last of the poses as a mesh, all of them as a picture, and what there is to know of both.
bool deliver(const demo::RiggedMesh& mesh, const std::vector<BoneTransformVector>& poses,
             const Output& output, std::string* error) {
    std::printf("%d vertices, %zu bones, %d influences; a vertex with its normal takes %.1f ns\n",
                mesh.vertexCount(), mesh.joints.size(), mesh.influenceCount(),
                demo::nanosecondsPerVertex(mesh, poses.back()));
    const demo::SkinnedMesh shape = demo::skin(mesh, poses.back());
    if (!demo::isFinite(shape)) {
        *error = "the pose has coordinates that are not finite numbers";
        return false;
    }
    const std::string obj = output.path(".obj");
    if (!demo::writeObj(mesh, shape, obj)) {
        *error = "cannot write " + obj;
        return false;
    }
    std::printf("%s\n", obj.c_str());
    return writePicture(mesh, poses, output.path(".png"), output.width, error);
}

BoneTransformVector restPose(const demo::RiggedMesh& mesh) {
    BoneTransformVector rest;
    rest.bones.resize(mesh.joints.size());
    return rest;
}

bool runTube(const SkinOptions& options, std::string* error) {
    constexpr double kSwing = 20.0 * kDegree;
    constexpr double kTwist = 22.0 * kDegree;
    constexpr double kStretch = 1.25;
    const demo::RiggedMesh mesh = demo::tubeMesh();
    const BoneTransformVector posed = demo::tubePose(kSwing, kTwist, kStretch);
    const Output output{options.common.out, "tube", options.common.size};
    if (!deliver(
            mesh,
            {restPose(mesh), demo::tubePose(kSwing, 0.0, 1.0),
             demo::tubePose(0.0, 2.0 * kTwist, 1.0), demo::tubePose(0.0, 0.0, kStretch), posed},
            output, error)) {
        return false;
    }

    std::vector<BoneTransformVector> blends;
    for (const double t : {0.0, 0.25, 0.5, 0.75, 1.0}) {
        BoneTransformVector& blend = blends.emplace_back();
        for (const BoneTransform& bone : posed.bones)
            blend.bones.push_back(BoneTransform::interpolate(bone, t));
    }
    return writePicture(mesh, blends, output.path("-interpolate.png"), output.width, error);
}

bool runFile(const SkinOptions& options, std::string* error) {
    demo::RigFile rig;
    if (!rig.load(options.common.input, error)) return false;

    BoneTransformVector pose;
    if (const aiAnimation* const clip = rig.findClip(options.pose)) {
        const double time = options.time ? *options.time : rig.strongestTime(*clip);
        std::printf("animation \"%s\" at %g s\n", clip->mName.C_Str(), time);
        pose = rig.pose(*clip, time);
    } else if (!options.pose.empty()) {
        *error = "no animation \"" + options.pose + "\" in " + options.common.input +
                 "; it has: " + rig.clipNames();
        return false;
    } else {
        std::printf("no animation: the bones are bent\n");
        pose = rig.bend(kBend);
    }
    const std::filesystem::path input(options.common.input);
    const Output output{options.common.out, input.stem().string(), options.common.size};
    return deliver(rig.mesh(), {restPose(rig.mesh()), pose}, output, error);
}

}  // namespace

int main(int argc, char** argv) {
    SkinOptions options;
    options.common.out = "out";
    options.common.size = 1600;
    std::string error;
    if (!parse(argc, argv, &options, &error)) return fail(error + " (--help tells more)");
    if (options.common.help) {
        std::fputs(kUsage, stdout);
        return 0;
    }
    if (!demo::makeOutputFolder(options.common, &error)) return fail(error);
    const bool done =
        options.common.input.empty() ? runTube(options, &error) : runFile(options, &error);
    return done ? 0 : fail(error);
}
