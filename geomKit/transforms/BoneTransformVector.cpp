#include "geomKit/transforms/BoneTransformVector.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>

#include "geomKit/WideCall.h"
#include "geomKit/transforms/tangentBlock.h"
#include "geomKit/vAlgebra/vectorUtils.h"

namespace {

using Influence = BaseDisplayData::Influence;

constexpr BoneTransform kIdentity;

/// One mesh and one skeleton, read. Passed by value: the loops then keep the addresses in
/// registers, though the compiler cannot know that the results are not written over them.
class Skinner {
public:
    Skinner(const std::vector<BoneTransform>& bones, const BaseDisplayData& data)
        : bones_(bones.data()),
          boneCount_(static_cast<std::uint32_t>(bones.size())),
          positions_(data.positions.data()),
          positionCount_(data.positions.size()),
          lists_(data.influences.data()),
          listCount_(data.influences.size()) {}

    bool isSkinned() const { return listCount_ != 0; }

    const Vector3& restPosition(int vertex) const {
        const auto v = static_cast<std::size_t>(vertex);
        assert(v < positionCount_);
        return positions_[v];
    }

    GEOMKIT_INLINE_KERNEL Vector3 position(int vertex) const {
        const Vector3 p = restPosition(vertex);
        const List list = iInfluences(vertex);
        if (list.first == list.last) return p;
        Vector3 sum;
        for (const Influence* i = list.first; i != list.last; ++i) {
            sum += i->weight * (iHasBone(i->bone) ? bones_[i->bone].transformPoint(p) : p);
        }
        return sum;
    }

    /// Also moves the tangents `b1` and `b2`.
    GEOMKIT_INLINE_KERNEL Vector3 position(int vertex, Vector3& b1, Vector3& b2) const {
        const Vector3 p = restPosition(vertex);
        const List list = iInfluences(vertex);
        if (list.first == list.last) return p;
        const Influence* i = list.first;
        Blend blend(iHasBone(i->bone) ? bones_[i->bone] : kIdentity, p);
        if (list.last - list.first > 1) {
            blend.scale(i->weight);
            for (++i; i != list.last; ++i) {
                if (iHasBone(i->bone)) {
                    blend.add(bones_[i->bone], p, i->weight);
                } else {
                    blend.add(kIdentity, p, i->weight);
                }
            }
        }
        b1 = blend.direction(b1);
        b2 = blend.direction(b2);
        return blend.position;
    }

private:
    struct List {
        const Influence* first;
        const Influence* last;
    };

    /// A sum of bones: where it takes one point, and its linear part. Rows rather than a `Matrix3`,
    /// since compilers keep twelve named numbers in registers, but not an array.
    struct Blend {
        Vector3 position;
        Vector3 row0;
        Vector3 row1;
        Vector3 row2;

        Blend(const BoneTransform& bone, const Vector3& p)
            : position(bone.transformPoint(p)),
              row0(row(bone, 0)),
              row1(row(bone, 1)),
              row2(row(bone, 2)) {}
        void scale(double weight) {
            position *= weight;
            row0 *= weight;
            row1 *= weight;
            row2 *= weight;
        }
        void add(const BoneTransform& bone, const Vector3& p, double weight) {
            position += weight * bone.transformPoint(p);
            row0 += weight * row(bone, 0);
            row1 += weight * row(bone, 1);
            row2 += weight * row(bone, 2);
        }
        Vector3 direction(const Vector3& d) const { return {row0 * d, row1 * d, row2 * d}; }

        static Vector3 row(const BoneTransform& bone, int r) {
            return {bone.linear(r, 0), bone.linear(r, 1), bone.linear(r, 2)};
        }
    };

    List iInfluences(int vertex) const {
        const auto v = static_cast<std::size_t>(vertex);
        if (v >= listCount_) return {nullptr, nullptr};
        const std::vector<Influence>& list = lists_[v];
        return {list.data(), list.data() + list.size()};
    }

    /// One test for both ends: unsigned, a negative number is a huge one.
    bool iHasBone(std::int32_t bone) const { return static_cast<std::uint32_t>(bone) < boneCount_; }

    const BoneTransform* bones_;
    std::uint32_t boneCount_;
    const Vector3* positions_;
    std::size_t positionCount_;
    const std::vector<Influence>* lists_;
    std::size_t listCount_;
};

GEOMKIT_INLINE_KERNEL void _skinPoints(Skinner skinner, int first, int last,
                                       Vector3* positionsOut) {
    for (int v = first; v < last; ++v) {
        positionsOut[v] = skinner.position(v);
    }
}

/// Positions of the block's `count` vertices from number `start`; replaces their tangents by the
/// moved ones.
GEOMKIT_INLINE_KERNEL void _skinBlock(Skinner skinner, int start, int count, Vector3* positionsOut,
                                      VectorBlock* b1, VectorBlock* b2) {
    for (int i = 0; i < count; ++i) {
        Vector3 t1 = b1->get(i);
        Vector3 t2 = b2->get(i);
        positionsOut[i] = skinner.position(start + i, t1, t2);
        b1->set(i, t1);
        b2->set(i, t2);
    }
}

}  // namespace

Vector3 BoneTransformVector::getTransformed(int vertex, const BaseDisplayData* data) const {
    return Skinner(bones, *data).position(vertex);
}

Vector3 BoneTransformVector::getTransformed(int vertex, const BaseDisplayData* data,
                                            const UVector3& normal, UVector3& normalOut) const {
    const Skinner skinner(bones, *data);
    if (!skinner.isSkinned()) {
        normalOut = normal;
        return skinner.restPosition(vertex);
    }
    Vector3 b1;
    Vector3 b2;
    getBasis(normal, b1, b2);
    const Vector3 position = skinner.position(vertex, b1, b2);
    normalOut = UVector3(b1 % b2);
    return position;
}

void BoneTransformVector::transformVertices(int first, int last, const BaseDisplayData* data,
                                            Vector3* positionsOut) const {
    callWide<_skinPoints>(Skinner(bones, *data), first, last, positionsOut);
}

void BoneTransformVector::transformVertices(int first, int last, const BaseDisplayData* data,
                                            const UVector3* normals, Vector3* positionsOut,
                                            UVector3* normalsOut) const {
    const Skinner skinner(bones, *data);
    if (!skinner.isSkinned()) {
        for (int v = first; v < last; ++v) {
            positionsOut[v] = skinner.restPosition(v);
            normalsOut[v] = normals[v];
        }
        return;
    }
    VectorBlock b1;
    VectorBlock b2;
    for (int start = first, count = 0; start < last; start += count) {
        count = (std::min)(last - start, VectorBlock::kSize);
        // One function a step: inlined into each other, compilers leave half of the loops scalar.
        callWide<basesOf>(normals + start, count, &b1, &b2);
        callWide<_skinBlock>(skinner, start, count, positionsOut + start, &b1, &b2);
        callWide<unitCross>(&b1, &b2);
        for (int i = 0; i < count; ++i) {
            static_cast<Vector3&>(normalsOut[start + i]) = b1.get(i);
        }
    }
}
