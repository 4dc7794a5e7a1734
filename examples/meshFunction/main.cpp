#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>

#include <geomKit/meshFunc2d/MeshFunction2D.h>

#include "examples/common/commandLine.h"
#include "examples/common/loadMesh.h"
#include "examples/common/writePng.h"
#include "examples/meshFunction/SampledScene.h"
#include "examples/meshFunction/View.h"
#include "examples/meshFunction/groundShadow.h"
#include "examples/meshFunction/pictures.h"
#include "examples/meshFunction/refineMesh.h"
#include "examples/meshFunction/saveAndLoad.h"
#include "examples/meshFunction/teapot.h"
#include "examples/meshFunction/texture.h"

using namespace geomKit;

namespace {

using namespace demo;
using Point = ktNM::vect2<double>;

constexpr int kSamplesPerPixel = SampledScene::kSamples;
constexpr double kGrazingCosine = 0.05;
/// Of the checker, as a share of the picture.
constexpr double kCellWidth = 0.042;
constexpr std::size_t kMinFacets = 6000;

constexpr const char* kUsage =
    "usage: geomkit-demo [MODEL] [--out DIR] [--size N]\n"
    "\n"
    "Builds a mesh function over the picture of a textured model and draws what it answers.\n"
    "\n"
    "  MODEL      a triangle mesh in any format that Assimp reads, with texture coordinates if it "
    "is\n"
    "             to look as its maker meant; without it, the Utah teapot\n"
    "  --out DIR  where the pictures go (default: out)\n"
    "  --size N   width of the pictures in pixels (default: 960)\n"
    "\n"
    "Exit status 2 when an argument is wrong or a file cannot be read or written.\n";

int fail(const std::string& message) {
    return demo::fail("geomkit-demo", message);
}

/// A mesh and how to look at it.
struct Subject {
    std::string name;
    Mesh mesh;
    UVector3 from;
    UVector3 up;
};

std::optional<Subject> teapotSubject(int size, std::string* error) {
    auto mesh = loadTeapot(GEOMKIT_TEAPOT_FILE, size / 60.0, error);
    if (!mesh) return std::nullopt;
    return Subject{"the Utah teapot", std::move(*mesh), UVector3(0.42, -1.0, 0.5),
                   UVector3(0.0, 0.0, 1.0)};
}

std::optional<Subject> modelSubject(const std::string& path, std::string* error) {
    auto mesh = loadMesh(path, error);
    if (!mesh) return std::nullopt;
    Subject subject{path, refineMesh(std::move(*mesh), kMinFacets), UVector3(0.5, 0.4, 1.0),
                    UVector3(0.0, 1.0, 0.0)};
    const std::vector<Point2>& uvs = subject.mesh.uvs;
    const auto isLikeTheFirst = [&uvs](const Point2& uv) {
        return uv.x == uvs.front().x && uv.y == uvs.front().y;
    };
    if (std::all_of(uvs.begin(), uvs.end(), isLikeTheFirst)) {
        std::puts("The model has no texture coordinates: a texture is wrapped round it.");
        wrapTexture(subject.mesh, subject.from, subject.up);
    }
    return subject;
}

std::vector<Point> toPoints(const std::vector<Point2>& pairs) {
    std::vector<Point> points;
    points.reserve(pairs.size());
    for (const Point2& p : pairs) {
        points.emplace_back(p.x, p.y);
    }
    return points;
}

void report(const char* query, const demo::Field& field) {
    std::printf("%-12s %zu queries, %zu with an answer, %.3f us each\n", query, field.queries,
                field.answers, 1e6 * field.seconds / static_cast<double>(field.queries));
}

void save(const Image& image, const std::filesystem::path& path) {
    std::string error;
    if (!writePng(image, path.string(), &error)) throw std::runtime_error(error);
    std::printf("  %s\n", path.string().c_str());
}

void saveAndCompare(const MeshFunction2D& function, const demo::Field& field,
                    const std::filesystem::path& path) {
    std::string error;
    const auto loaded = saveAndLoad(function, path, &error);
    if (loaded == nullptr) throw std::runtime_error(error);
    const std::size_t different =
        differingAnswers(field, evaluateOver(*loaded, field.width, field.height, field.perPixel));
    std::printf("Saved to %s\n  loaded by its class name, it answers %zu of %zu queries alike\n",
                path.string().c_str(), field.queries - different, field.queries);
}

void run(const Subject& subject, const Options& options) {
    const int width = options.size;
    const int height = width * 11 / 16;
    const Camera camera = cameraAround(subject.mesh.positions, subject.from, subject.up, 4.0, width,
                                       height, 0.09 * width);
    const View view = viewMesh(subject.mesh, camera, width, height, kGrazingCosine);

    std::vector<Point> params;
    for (const ScreenPoint& p : view.at) {
        params.emplace_back(p.x, p.y);
    }
    const MeshFunction2D function(params, toPoints(view.mesh.uvs), view.mesh.facets, view.cosines);
    std::printf("Mesh function of %s\n", subject.name.c_str());
    std::printf("  %zu vertices, %zu facets, %zu boundary chains, %d x %d cells\n",
                function.params.size(), function.facets.size() / 3, function.boundaries.size(),
                function.cellCounts.u, function.cellCounts.v);

    const demo::Field inside = evaluateOver(function, width, height, kSamplesPerPixel);
    const demo::Field outside = extrapolateOver(function, width, height);
    report("evaluate", inside);
    report("extrapolate", outside);

    const std::filesystem::path out = options.out;
    saveAndCompare(function, inside, out / "function.xml");
    std::printf("Pictures\n");
    const double cells = cellsPerUnit(view, kCellWidth * width);
    Image background = vignette(width, height, hexColour(0xF7F3EC), hexColour(0xC9CDD0));
    drawGroundShadow(background, camera, subject.mesh, subject.up);
    save(checkerPicture(inside, cells, background), out / "checker.png");
    save(cosinePicture(inside, background), out / "cosine.png");
    save(extrapolatedPicture(inside, outside, cells, background), out / "extrapolated.png");
    Image chains = palePicture(checkerPicture(inside, cells, background));
    drawBoundaries(function, chains);
    save(chains, out / "boundaries.png");
    if (!view.mesh.curvatures.empty()) {
        const MeshFunction2D curvature(params, toPoints(view.mesh.curvatures), view.mesh.facets,
                                       view.cosines);
        save(curvaturePicture(evaluateOver(curvature, width, height, kSamplesPerPixel), 2.0,
                              background),
             out / "curvature.png");
    }
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    options.out = "out";
    options.size = 960;
    std::string error;
    if (!parseCommandLine(argc, argv, &options, &error)) {
        return fail(error + " (--help tells more)");
    }
    if (options.help) {
        std::fputs(kUsage, stdout);
        return 0;
    }
    const auto subject = options.input.empty() ? teapotSubject(options.size, &error)
                                               : modelSubject(options.input, &error);
    if (!subject || !makeOutputFolder(options, &error)) return fail(error);
    try {
        run(*subject, options);
    } catch (const std::exception& problem) {
        return fail(problem.what());
    }
    return 0;
}
