#include "examples/meshFunction/teapot.h"

#include <limits>
#include <map>

#include <geomKit/vAlgebra/vectorUtils.h>

#include "examples/meshFunction/PatchModel.h"
#include "examples/meshFunction/cutMesh.h"

using namespace geomKit;

namespace demo {
namespace {

/// Fine enough that the nearest vertex of the body stands for its surface.
constexpr double kBodySteps = 8.0;

/// Height of each vertex over the tangent plane at the nearest vertex of `body`: negative inside.
std::vector<double> heightsOver(const Mesh& body, const Mesh& mesh) {
    std::vector<double> heights;
    heights.reserve(mesh.positions.size());
    for (const Vector3& p : mesh.positions) {
        std::size_t nearest = 0;
        double best = std::numeric_limits<double>::infinity();
        for (std::size_t i = 0; i < body.positions.size(); ++i) {
            const double d = distSq(p, body.positions[i]);
            if (d < best) {
                best = d;
                nearest = i;
            }
        }
        heights.push_back((p - body.positions[nearest]) * body.normals[nearest]);
    }
    return heights;
}

}  // namespace

std::optional<Mesh> loadTeapot(const std::string& path, double stepsPerUnit, std::string* error) {
    const auto patches = loadPatches(path, error);
    if (!patches) return std::nullopt;
    std::map<std::string, std::vector<TexturedPatch>> charts;
    for (const TexturedPatch& patch : *patches) {
        charts[patch.chart].push_back(patch);
    }
    const Mesh body = tessellate(charts["body"], kBodySteps);

    Mesh teapot;
    for (const auto& [name, chart] : charts) {
        const Mesh part = tessellate(chart, stepsPerUnit);
        const bool reachesIntoBody = name == "handle" || name == "spout";
        append(teapot, reachesIntoBody ? cutMesh(part, heightsOver(body, part)) : part);
    }
    return teapot;
}

}  // namespace demo
