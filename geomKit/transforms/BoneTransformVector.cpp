#include "geomKit/transforms/BoneTransformVector.h"

#include <cassert>
#include <cstddef>

#include "geomKit/vAlgebra/vectorUtils.h"

namespace {

using Influence = BaseDisplayData::Influence;
using Influences = std::vector<Influence>;

const Influences kNotSkinned;

const Influences& influencesOf(int vertex, const BaseDisplayData& data) {
    const auto v = static_cast<std::size_t>(vertex);
    return v < data.influences.size() ? data.influences[v] : kNotSkinned;
}

const Vector3& positionOf(int vertex, const BaseDisplayData& data) {
    const auto v = static_cast<std::size_t>(vertex);
    assert(v < data.positions.size());
    return data.positions[v];
}

/// Null for a bone number that stands for the identity.
const BoneTransform* find(const std::vector<BoneTransform>& bones, int bone) {
    const auto k = static_cast<std::size_t>(bone);  // a negative number becomes a huge one
    return k < bones.size() ? &bones[k] : nullptr;
}

Vector3 moved(const BoneTransform* bone, const Vector3& p) {
    return bone != nullptr ? bone->transformPoint(p) : p;
}

Matrix3 linearOf(const BoneTransform* bone) {
    return bone != nullptr ? bone->linear : Matrix3();
}

Vector3 skin(const std::vector<BoneTransform>& bones, const Influences& influences,
             const Vector3& p) {
    if (influences.empty()) return p;
    Vector3 sum;
    for (const Influence& i : influences) {
        sum += i.weight * moved(find(bones, i.bone), p);
    }
    return sum;
}

Vector3 skin(const std::vector<BoneTransform>& bones, const Influences& influences,
             const Vector3& p, const UVector3& normal, UVector3& normalOut) {
    Vector3 b1;
    Vector3 b2;
    getBasis(normal, b1, b2);
    Vector3 position = p;
    if (!influences.empty()) {
        const BoneTransform* bone = find(bones, influences[0].bone);
        position = moved(bone, p);
        Matrix3 linear = linearOf(bone);
        if (influences.size() > 1) {
            position *= influences[0].weight;
            linear = linear * influences[0].weight;
            for (std::size_t i = 1; i < influences.size(); ++i) {
                const double weight = influences[i].weight;
                bone = find(bones, influences[i].bone);
                position += weight * moved(bone, p);
                linear = linear + linearOf(bone) * weight;
            }
        }
        b1 = linear * b1;
        b2 = linear * b2;
    }
    normalOut = UVector3(b1 % b2);
    return position;
}

}  // namespace

Vector3 BoneTransformVector::getTransformed(int vertex, const BaseDisplayData* data) const {
    return skin(bones, influencesOf(vertex, *data), positionOf(vertex, *data));
}

Vector3 BoneTransformVector::getTransformed(int vertex, const BaseDisplayData* data,
                                            const UVector3& normal, UVector3& normalOut) const {
    const Vector3& p = positionOf(vertex, *data);
    if (data->influences.empty()) {
        normalOut = normal;
        return p;
    }
    return skin(bones, influencesOf(vertex, *data), p, normal, normalOut);
}

void BoneTransformVector::transformVertices(int first, int last, const BaseDisplayData* data,
                                            Vector3* positionsOut) const {
    for (int v = first; v < last; ++v) {
        positionsOut[v] = getTransformed(v, data);
    }
}

void BoneTransformVector::transformVertices(int first, int last, const BaseDisplayData* data,
                                            const UVector3* normals, Vector3* positionsOut,
                                            UVector3* normalsOut) const {
    for (int v = first; v < last; ++v) {
        positionsOut[v] = getTransformed(v, data, normals[v], normalsOut[v]);
    }
}
