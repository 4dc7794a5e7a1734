#include "geomKit/transforms/BoneTransformVector.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "geomKit/internal/toIndex.h"
#include "geomKit/internal/wideCall.h"
#include "geomKit/transforms/tangentBlock.h"
#include "geomKit/vAlgebra/vectorUtils.h"

namespace geomKit {

namespace {

using detail::basesOf;
using detail::callWide;
using detail::toIndex;
using detail::unitCross;
using detail::VectorBlock;

using Influence = BaseDisplayData::Influence;

constexpr BoneTransform kIdentity;

struct InfluenceList {
    const Influence* first;
    const Influence* last;

    [[nodiscard]] bool isEmpty() const { return first == last; }
    [[nodiscard]] bool isSingle() const { return last - first == 1; }
};

/// The influences of a mesh that has a list for each vertex.
struct ListedInfluences {
    const std::vector<Influence>* lists;
    std::size_t count;

    explicit ListedInfluences(const BaseDisplayData& data)
        : lists(data.influences.data()), count(data.influences.size()) {}

    [[nodiscard]] InfluenceList of(std::size_t vertex) const {
        if (vertex >= count) return {nullptr, nullptr};
        const std::vector<Influence>& list = lists[vertex];
        return {list.data(), list.data() + list.size()};
    }
};

/// The influences of a mesh in one list.
struct AllInfluences {
    const Influence* entries;
    const std::size_t* offsets;
    std::size_t count;

    explicit AllInfluences(const FlatInfluences& flat)
        : entries(flat.entries().data()),
          offsets(flat.offsets().data()),
          count(flat.vertexCount()) {}

    [[nodiscard]] InfluenceList of(std::size_t vertex) const {
        if (vertex >= count) return {nullptr, nullptr};
        return {entries + offsets[vertex], entries + offsets[vertex + 1]};
    }
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
          row0(bone.linear.row(0)),
          row1(bone.linear.row(1)),
          row2(bone.linear.row(2)) {}
    void scale(double weight) {
        position *= weight;
        row0 *= weight;
        row1 *= weight;
        row2 *= weight;
    }
    void add(const BoneTransform& bone, const Vector3& p, double weight) {
        position += weight * bone.transformPoint(p);
        row0 += weight * bone.linear.row(0);
        row1 += weight * bone.linear.row(1);
        row2 += weight * bone.linear.row(2);
    }
    [[nodiscard]] Vector3 direction(const Vector3& d) const {
        return {row0 * d, row1 * d, row2 * d};
    }
};

/// The bones of a skeleton. Passed by value: the loops then keep the addresses in registers, though
/// the compiler cannot know that the results are not written over them.
class Skinner {
public:
    explicit Skinner(const std::vector<BoneTransform>& bones)
        : bones_(bones.data()), boneCount_(static_cast<std::uint32_t>(bones.size())) {}

    GEOMKIT_INLINE_KERNEL Vector3 position(const InfluenceList& list, const Vector3& p) const {
        if (list.isEmpty()) return p;
        Vector3 sum;
        for (const Influence* i = list.first; i != list.last; ++i)
            sum += i->weight * (iHasBone(i->bone) ? bones_[i->bone].transformPoint(p) : p);
        return sum;
    }

    /// Also moves the tangents `b1` and `b2`.
    GEOMKIT_INLINE_KERNEL Vector3 position(const InfluenceList& list, const Vector3& p, Vector3& b1,
                                           Vector3& b2) const {
        if (list.isEmpty()) return p;
        const Influence* i = list.first;
        Blend blend(iHasBone(i->bone) ? bones_[i->bone] : kIdentity, p);
        if (!list.isSingle()) {
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
    /// One test for both ends: unsigned, a negative number is a huge one.
    [[nodiscard]] bool iHasBone(std::int32_t bone) const {
        return static_cast<std::uint32_t>(bone) < boneCount_;
    }

    const BoneTransform* bones_;
    std::uint32_t boneCount_;
};

/// Vertices of a mesh, from number `first` on: their influences, and their positions beginning with
/// that of the first.
template <typename Influences>
struct Range {
    Influences influences;
    const Vector3* positions;
    std::size_t first;
    std::size_t count;
};

template <typename Influences>
GEOMKIT_INLINE_KERNEL void _skinPoints(Skinner skinner, Range<Influences> range,
                                       Vector3* positionsOut) {
    for (std::size_t i = 0; i < range.count; ++i) {
        positionsOut[i] =
            skinner.position(range.influences.of(range.first + i), Vector3(range.positions[i]));
    }
}

/// Positions of at most a block of vertices; replaces their tangents by the moved ones.
template <typename Influences>
GEOMKIT_INLINE_KERNEL void _skinBlock(Skinner skinner, Range<Influences> range,
                                      Vector3* positionsOut, VectorBlock* b1, VectorBlock* b2) {
    for (std::size_t i = 0; i < range.count; ++i) {
        const int k = static_cast<int>(i);
        Vector3 t1 = b1->get(k);
        Vector3 t2 = b2->get(k);
        positionsOut[i] = skinner.position(range.influences.of(range.first + i),
                                           Vector3(range.positions[i]), t1, t2);
        b1->set(k, t1);
        b2->set(k, t2);
    }
}

template <typename Influences>
void _transform(const Skinner& skinner, const Range<Influences>& range, Vector3* positionsOut) {
    if (positionsOut == nullptr) return;
    callWide<_skinPoints<Influences>>(skinner, range, positionsOut);
}

template <typename Influences>
void _transform(const Skinner& skinner, const Range<Influences>& range, const UVector3* normals,
                Vector3* positionsOut, UVector3* normalsOut) {
    if (range.influences.count == 0) {
        for (std::size_t i = 0; positionsOut != nullptr && i < range.count; ++i)
            positionsOut[i] = range.positions[i];
        for (std::size_t i = 0; normalsOut != nullptr && i < range.count; ++i)
            normalsOut[i] = normals[i];
        return;
    }
    constexpr auto kBlock = static_cast<std::size_t>(VectorBlock::kSize);
    VectorBlock b1;
    VectorBlock b2;
    Vector3 unused[kBlock];
    for (std::size_t start = 0; start < range.count; start += kBlock) {
        const std::size_t size = (std::min)(range.count - start, kBlock);
        const Range<Influences> block = {range.influences, range.positions + start,
                                         range.first + start, size};
        Vector3* const positions = positionsOut != nullptr ? positionsOut + start : unused;
        // One function a step: inlined into each other, compilers leave half of the loops scalar.
        callWide<basesOf>(normals + start, static_cast<int>(size), &b1, &b2);
        callWide<_skinBlock<Influences>>(skinner, block, positions, &b1, &b2);
        callWide<unitCross>(&b1, &b2);
        for (std::size_t i = 0; normalsOut != nullptr && i < size; ++i)
            static_cast<Vector3&>(normalsOut[start + i]) = b1.get(static_cast<int>(i));
    }
}

/// The vertices of the range that the mesh has.
Range<ListedInfluences> _within(const BaseDisplayData& data, std::size_t first, std::size_t count) {
    const std::size_t begin = (std::min)(first, data.positions.size());
    return {ListedInfluences(data), data.positions.data() + begin, begin,
            (std::min)(count, data.positions.size() - begin)};
}

}  // namespace

Vector3 BoneTransformVector::getTransformed(int vertex,
                                            const BaseDisplayData* data) const noexcept {
    const std::size_t v = toIndex(vertex);  // a negative number is beyond every size
    if (v >= data->positions.size()) return {};
    return Skinner(bones).position(ListedInfluences(*data).of(v), data->positions[v]);
}

Vector3 BoneTransformVector::getTransformed(int vertex, const BaseDisplayData* data,
                                            const UVector3& normal,
                                            UVector3& normalOut) const noexcept {
    const std::size_t v = toIndex(vertex);
    const bool isInMesh = v < data->positions.size();
    if (!isInMesh || data->influences.empty()) {
        normalOut = normal;
        return isInMesh ? data->positions[v] : Vector3();
    }
    Vector3 b1;
    Vector3 b2;
    getBasis(normal, b1, b2);
    const Vector3 position =
        Skinner(bones).position(ListedInfluences(*data).of(v), data->positions[v], b1, b2);
    normalOut = UVector3(b1 % b2);
    return position;
}

std::size_t BoneTransformVector::transformVertices(const BaseDisplayData* data, std::size_t first,
                                                   std::size_t count,
                                                   Vector3* positionsOut) const noexcept {
    const Range<ListedInfluences> range = _within(*data, first, count);
    _transform(Skinner(bones), range, positionsOut);
    return range.count;
}

std::size_t BoneTransformVector::transformVertices(const BaseDisplayData* data,
                                                   const UVector3* normals, std::size_t first,
                                                   std::size_t count, Vector3* positionsOut,
                                                   UVector3* normalsOut) const noexcept {
    const Range<ListedInfluences> range = _within(*data, first, count);
    _transform(Skinner(bones), range, normals, positionsOut, normalsOut);
    return range.count;
}

void BoneTransformVector::transformVertices(const FlatInfluences& influences,
                                            const Vector3* positions, std::size_t first,
                                            std::size_t count,
                                            Vector3* positionsOut) const noexcept {
    const Range<AllInfluences> range = {AllInfluences(influences), positions, first, count};
    _transform(Skinner(bones), range, positionsOut);
}

void BoneTransformVector::transformVertices(const FlatInfluences& influences,
                                            const Vector3* positions, const UVector3* normals,
                                            std::size_t first, std::size_t count,
                                            Vector3* positionsOut,
                                            UVector3* normalsOut) const noexcept {
    const Range<AllInfluences> range = {AllInfluences(influences), positions, first, count};
    _transform(Skinner(bones), range, normals, positionsOut, normalsOut);
}

}  // namespace geomKit
