// The example of transforms.md.
#include <future>
#include <vector>

#include "geomKit/transforms/BoneTransformVector.h"

using namespace geomKit;

namespace {

bool skinsInTwoThreads() {
    BoneTransformVector skeleton;
    skeleton.bones.emplace_back();
    skeleton.bones[0].translation = Vector3(1, 0, 0);
    BaseDisplayData mesh;
    mesh.positions = {{0, 0, 0}, {0, 1, 0}, {0, 2, 0}};
    mesh.influences = {{{0, 1.0}}, {{0, 1.0}}, {{0, 1.0}}};
    const std::vector<UVector3> rest(3, UVector3(0, 1, 0));
    std::vector<Vector3> positions(3);
    std::vector<UVector3> normals(3);

    const std::size_t count = mesh.positions.size();
    const auto skin = [&](std::size_t first, std::size_t size) {
        skeleton.transformVertices(&mesh, rest.data() + first, first, size,
                                   positions.data() + first, normals.data() + first);
    };
    auto secondHalf = std::async(std::launch::async, skin, count / 2, count - count / 2);
    skin(0, count / 2);
    secondHalf.get();

    return positions[0] == Vector3(1, 0, 0) && positions[2] == Vector3(1, 2, 0) &&
           normals[0] == rest[0] && normals[2] == rest[2];
}

}  // namespace

int main() {
    return skinsInTwoThreads() ? 0 : 1;
}
