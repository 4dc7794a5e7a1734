#include <fstream>
#include <sstream>

#include "examples/meshFunction/PatchModel.h"

using namespace geomKit;

namespace demo {
namespace {

bool readPatch(std::istream& line, const std::vector<Vector3>& points, TexturedPatch* patch) {
    line >> patch->chart >> patch->uv0.x >> patch->uv1.x >> patch->uv0.y >> patch->uv1.y;
    for (Vector3& control : patch->surface.control) {
        std::size_t number = 0;
        line >> number;
        if (!line || number < 1 || number > points.size()) return false;
        control = points[number - 1];
    }
    return true;
}

}  // namespace

std::optional<std::vector<TexturedPatch>> loadPatches(const std::string& path, std::string* error) {
    std::ifstream file(path);
    std::vector<Vector3> points;
    std::vector<TexturedPatch> patches;
    std::string text;
    for (int number = 1; std::getline(file, text); ++number) {
        std::istringstream line(text);
        std::string word;
        if (!(line >> word) || word.front() == '#') continue;
        bool valid = false;
        if (word == "point") {
            points.emplace_back();
            valid = !(line >> points.back().x >> points.back().y >> points.back().z).fail();
        } else if (word == "patch") {
            patches.emplace_back();
            valid = readPatch(line, points, &patches.back());
        }
        if (!valid) {
            *error = path + ", line " + std::to_string(number);
            *error += " is not understood: " + text;
            return std::nullopt;
        }
    }
    if (patches.empty()) {
        *error = path + ": cannot be read or holds no patches";
        return std::nullopt;
    }
    return patches;
}

}  // namespace demo
