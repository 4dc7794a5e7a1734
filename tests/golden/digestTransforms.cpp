#include <vector>

#include "geomKit/transforms/BoneTransformVector.h"
#include "geomKit/transforms/Transform.h"
#include "tests/golden/Digest.h"

namespace {

constexpr int kSamples = 1000;

void add(Digest& digest, const Matrix& m) {
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            digest.add(m(i, j));
        }
    }
}

Transform similarity(InputSource& in) {
    const UVector3 u = in.vector(1.0);
    const UVector3 v = u % in.vector(1.0);
    Transform t(u, v, in.vector(3.0));
    t.scale = in.uniform(-2.0, 2.0);
    return t;
}

void digestMatrix() {
    InputSource in(11);
    Digest ieee("Matrix");
    Digest angles("Matrix rotations", Digest::Arithmetic::MathLibrary);
    for (int i = 0; i < kSamples; ++i) {
        const Matrix3 linear = in.matrix(1.0);
        const Matrix a(linear, in.vector(2.0));
        const Matrix b = similarity(in).getMatrix();
        add(ieee, a * b.transpose());
        add(ieee, a.inverse());
        add(ieee, b.scale(in.uniform(0.5, 2.0)));
        ieee.add(a.distTo(b));
        ieee.add(b.isRigid());
        ieee.add(b.getRotationAxis());
        const Vector3 axis = in.vector(1.0);
        const double angle = in.uniform(-4.0, 4.0);
        const Vector3 point = in.vector(2.0);
        const Matrix rotation = Matrix::rotationMatrix(axis, angle);
        add(angles, rotation);
        angles.add(rotation.getRotationAngle(axis));
        add(angles, Matrix::rigidTransform(point, axis, in.vector(2.0), b.getRotationAxis()));
        add(angles, Matrix::interpolate(rotation, b, in.uniform(-0.1, 1.1)));
    }
}

void digestTransform() {
    InputSource in(12);
    Digest ieee("Transform");
    Digest blends("Transform blends", Digest::Arithmetic::MathLibrary);
    for (int i = 0; i < kSamples; ++i) {
        const Transform a = similarity(in);
        const Transform b = similarity(in);
        const UVector3 n = in.vector(1.0);
        add(ieee, (a * b.inverse()).getMatrix());
        add(ieee, Transform::reflection(in.vector(2.0), n).getMatrix());
        add(blends, Transform::rotate(n, a.translation).getMatrix());
        add(blends, Transform::interpolate(a, b, in.uniform(-0.1, 1.1)).getMatrix());
    }
}

BoneTransform randomBone(InputSource& in) {
    const Vector3 a = in.vector(2.0);
    const Vector3 b = in.vector(2.0);
    const Vector3 c = in.vector(2.0);
    const Vector3 d = in.vector(2.0);
    return {a, b, c, d, in.uniform(-2.0, 2.0)};
}

void digestBones() {
    InputSource in(13);
    Digest digest("BoneTransform", Digest::Arithmetic::MathLibrary);
    for (int i = 0; i < kSamples; ++i) {
        const BoneTransform a = randomBone(in);
        const BoneTransform b = randomBone(in);
        const double t = in.uniform(-0.1, 1.1);
        add(digest, a.getMatrix());
        add(digest, BoneTransform::interpolate(a, t).getMatrix());
        add(digest, BoneTransform::interpolate(a, b, t).getMatrix());
    }
}

void digestSkinning() {
    InputSource in(14);
    Digest digest("skinning");
    BoneTransformVector skeleton;
    for (int k = 0; k < 10; ++k) {
        BoneTransform bone;
        bone.linear = in.matrix(1.0);
        bone.translation = in.vector(1.0);
        skeleton.bones.push_back(bone);
    }
    BaseDisplayData mesh;
    std::vector<UVector3> normals;
    for (int v = 0; v < kSamples; ++v) {
        mesh.positions.push_back(in.vector(2.0));
        normals.emplace_back(in.vector(1.0));
        mesh.influences.emplace_back(static_cast<std::size_t>(in.index(5)));
        for (BaseDisplayData::Influence& i : mesh.influences.back()) {
            i.bone = in.index(12) - 1;
            i.weight = in.uniform(0.0, 1.0);
        }
    }
    std::vector<Vector3> positions(mesh.positions.size());
    skeleton.transformVertices(0, kSamples, &mesh, positions.data());
    for (const Vector3& p : positions) {
        digest.add(p);
    }
    skeleton.transformVertices(0, kSamples, &mesh, normals.data(), positions.data(),
                               normals.data());
    for (int v = 0; v < kSamples; ++v) {
        digest.add(positions[static_cast<std::size_t>(v)]);
        digest.add(normals[static_cast<std::size_t>(v)]);
    }
}

}  // namespace

void digestTransforms() {
    digestMatrix();
    digestTransform();
    digestBones();
    digestSkinning();
}
