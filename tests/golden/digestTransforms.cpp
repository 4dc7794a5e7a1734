#include <vector>

#include "tests/golden/Digest.h"

using namespace geomKit;

namespace {

Transform similarity(InputSource& in) {
    const UVector3 u = in.vector(1.0), v = u % in.vector(1.0);
    Transform t(u, v, in.vector(3.0));
    t.scale = in.uniform(-2.0, 2.0);
    return t;
}

void addMatrices(Digest& digest, InputSource& in, int /*i*/) {
    const Matrix3 linear = in.matrix(1.0);
    const Matrix a(linear, in.vector(2.0)), b = similarity(in).getMatrix();
    digest.add(a * b.transpose(), a.inverse(), b.scale(in.uniform(0.5, 2.0)), a.distTo(b),
               b.isRigid(), b.getRotationAxis());
    const Vector3 axis = in.vector(1.0);
    const Matrix rotation = Matrix::rotationMatrix(axis, in.uniform(-4.0, 4.0));
    const Vector3 point = in.vector(2.0);
    digest.addMath(rotation, rotation.getRotationAngle(axis));
    digest.addMath(Matrix::rigidTransform(point, axis, in.vector(2.0), b.getRotationAxis()));
    digest.addMath(Matrix::interpolate(rotation, b, in.uniform(-0.1, 1.1)));
}

void addTransforms(Digest& digest, InputSource& in, int /*i*/) {
    const Transform a = similarity(in), b = similarity(in);
    const UVector3 n = in.vector(1.0);
    digest.add((a * b.inverse()).getMatrix(), Transform::reflection(in.vector(2.0), n).getMatrix());
    digest.addMath(Transform::rotate(n, a.translation).getMatrix());
    digest.addMath(Transform::interpolate(a, b, in.uniform(-0.1, 1.1)).getMatrix());
}

BoneTransform randomBone(InputSource& in) {
    const auto [a, b, c, d] = in.vectors<4>(2.0);
    return {a, b, c, d, in.uniform(-2.0, 2.0)};
}

void addBones(Digest& digest, InputSource& in, int /*i*/) {
    const BoneTransform a = randomBone(in), b = randomBone(in);
    const double t = in.uniform(-0.1, 1.1);
    for (const BoneTransform& bone :
         {a, BoneTransform::interpolate(a, t), BoneTransform::interpolate(a, b, t)})
        digest.addMath(bone.getMatrix());
}

void addSkin(Digest& digest, InputSource& in, int /*i*/) {
    const std::size_t vertices = 1000;
    BoneTransformVector skeleton;
    skeleton.bones.resize(10);
    for (BoneTransform& bone : skeleton.bones)
        bone = BoneTransform{in.matrix(1.0), in.vector(1.0)};
    BaseDisplayData mesh;
    std::vector<UVector3> normals;
    for (std::size_t v = 0; v < vertices; ++v) {
        mesh.positions.push_back(in.vector(2.0));
        normals.emplace_back(in.vector(1.0));
        mesh.influences.emplace_back(static_cast<std::size_t>(in.index(5)));
        for (BaseDisplayData::Influence& i : mesh.influences.back()) {
            i.bone = in.index(12) - 1;
            i.weight = in.uniform(0.0, 1.0);
        }
    }
    std::vector<Vector3> positions(vertices);
    skeleton.transformVertices(&mesh, 0, vertices, positions.data());
    digest.add(positions);
    skeleton.transformVertices(&mesh, normals.data(), 0, vertices, positions.data(),
                               normals.data());
    for (std::size_t v = 0; v < vertices; ++v)
        digest.add(positions[v], normals[v]);
}

}  // namespace

void digestTransforms() {
    sample("Matrix", 11, 1000, addMatrices);
    sample("Transform", 12, 1000, addTransforms);
    sample("BoneTransform", 13, 1000, addBones);
    sample("skinning", 14, 1, addSkin);
}
