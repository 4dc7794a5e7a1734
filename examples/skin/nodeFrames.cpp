#include "examples/skin/nodeFrames.h"

using namespace geomKit;

namespace demo {

Matrix toMatrix(const aiMatrix4x4& m) {
    Matrix result;
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j)
            result(i, j) = static_cast<double>(m[static_cast<unsigned>(i)][j]);
    }
    return result;
}

BoneTransform toBoneTransform(const Matrix& m) {
    BoneTransform bone;
    bone.linear = Matrix3(m);
    bone.translation = m.translation();
    return bone;
}

Matrix restFrame(const aiNode& node) {
    return frameBy([](const aiNode& n) { return toMatrix(n.mTransformation); }, node);
}

}  // namespace demo
