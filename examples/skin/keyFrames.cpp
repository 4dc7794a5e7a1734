#include "examples/skin/keyFrames.h"

#include <algorithm>

namespace demo {
namespace {

/// Of files that do not say.
constexpr double kDefaultTicksPerSecond = 25.0;

aiVector3D between(const aiVector3D& a, const aiVector3D& b, float t) {
    return a + (b - a) * t;
}

aiQuaternion between(const aiQuaternion& a, const aiQuaternion& b, float t) {
    aiQuaternion result;
    aiQuaternion::Interpolate(result, a, b, t);
    return result.Normalize();
}

template <class Key, class Value>
Value valueAt(const Key* keys, unsigned count, double ticks, const Value& without) {
    if (count == 0) return without;
    const Key* const end = keys + count;
    const Key* const next = std::upper_bound(
        keys, end, ticks, [](double time, const Key& key) { return time < key.mTime; });
    if (next == keys) return keys[0].mValue;
    if (next == end) return end[-1].mValue;
    const Key& last = next[-1];
    const double t = (ticks - last.mTime) / (next->mTime - last.mTime);
    return between(last.mValue, next->mValue, static_cast<float>(t));
}

}  // namespace

double ticksPerSecond(const aiAnimation& clip) {
    return clip.mTicksPerSecond > 0.0 ? clip.mTicksPerSecond : kDefaultTicksPerSecond;
}

aiMatrix4x4 frameAt(const aiNode& node, const aiNodeAnim& channel, double ticks) {
    aiVector3D scale;
    aiQuaternion rotation;
    aiVector3D position;
    node.mTransformation.Decompose(scale, rotation, position);
    scale = valueAt(channel.mScalingKeys, channel.mNumScalingKeys, ticks, scale);
    rotation = valueAt(channel.mRotationKeys, channel.mNumRotationKeys, ticks, rotation);
    position = valueAt(channel.mPositionKeys, channel.mNumPositionKeys, ticks, position);
    return {scale, rotation, position};
}

}  // namespace demo
