// The examples of skinning.md.
#include <vector>

#include "geomKit/transforms/BoneTransformVector.h"

using namespace geomKit;

namespace {

bool skinsAStrip() {
    BaseDisplayData mesh;
    mesh.positions = {{0, 0, 0}, {0, 1, 0}, {0, 2, 0}};
    mesh.influences = {{{0, 1.0}}, {{0, 0.5}, {1, 0.5}}, {{1, 1.0}}};
    const std::vector<UVector3> normals(3, UVector3(1, 0, 0));

    // Bone 0 stays; bone 1, from y = 1 to y = 2, swings to the side and grows by half.
    BoneTransformVector pose;
    pose.bones.emplace_back();
    pose.bones.emplace_back(Vector3(0, 1, 0), Vector3(0, 2, 0),    // at rest
                            Vector3(0, 1, 0), Vector3(1.5, 1, 0),  // posed
                            0.0);                                  // twist

    std::vector<Vector3> positions(3);
    std::vector<UVector3> skinned(3);
    pose.transformVertices(&mesh, normals.data(), 0, 3, positions.data(), skinned.data());
    // positions[2] is (1.5, 1, 0) and skinned[2] is (0, -1, 0)

    return positions[2] == Vector3(1.5, 1, 0) && skinned[2] == Vector3(0, -1, 0) &&
           positions[1] == mesh.positions[1];
}

bool takesABoneFromAFile() {
    const Matrix boneToRoot = Matrix::rotationMatrix(Vector3(0, 0, 1), 1.0);
    const Matrix restToBone = Matrix::rotationMatrix(Vector3(0, 1, 0), 1.0);
    const Vector3 p(1, 2, 3);

    const Matrix map = boneToRoot * restToBone;
    const BoneTransform bone(map);

    return bone.transformPoint(p) == boneToRoot.transformPoint(restToBone.transformPoint(p));
}

}  // namespace

int main() {
    return skinsAStrip() && takesABoneFromAFile() ? 0 : 1;
}
