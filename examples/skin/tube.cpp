#include "examples/skin/tube.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "examples/common/colourMaps.h"

using namespace geomKit;

namespace demo {
namespace {

constexpr int kBones = 5;
constexpr int kRings = 161;
constexpr int kSectors = 72;
constexpr int kStripes = 8;
constexpr double kRadius = 0.38;
/// Vertices nearer than this to a joint, along the tube, belong to both bones.
constexpr double kBlend = 0.5;
/// The colour of each bone in the palette.
constexpr std::array<int, kBones> kColours = {1, 2, 3, 4, 6};
constexpr double kPi = 3.141592653589793;

/// Where bone k begins; its length is 1.
Vector3 joint(int k) {
    return {0.0, static_cast<double>(k), 0.0};
}

std::vector<BaseDisplayData::Influence> influencesAt(double y) {
    const int below = std::clamp(static_cast<int>(std::floor(y - 0.5)), 0, kBones - 1);
    const int above = std::min(below + 1, kBones - 1);
    const double x = std::clamp(0.5 + (y - above) / (2.0 * kBlend), 0.0, 1.0);
    const double w = x * x * (3.0 - 2.0 * x);
    if (above == below || w <= 0.0) return {{below, 1.0}};
    if (w >= 1.0) return {{above, 1.0}};
    return {{below, 1.0 - w}, {above, w}};
}

Colour stripe(int ring, int sector) {
    const bool odd = (sector * kStripes / kSectors) % 2 == 1;
    const int bone = std::min(ring * kBones / (kRings - 1), kBones - 1);
    return mix(paletteColour(kColours[static_cast<std::size_t>(bone)]), hexColour(0xFFFFFF),
               odd ? 0.75 : 0.15);
}

}  // namespace

RiggedMesh tubeMesh() {
    RiggedMesh mesh;
    for (int ring = 0; ring < kRings; ++ring) {
        const double y = static_cast<double>(kBones * ring) / (kRings - 1);
        for (int sector = 0; sector < kSectors; ++sector) {
            const double angle = 2.0 * kPi * sector / kSectors;
            const UVector3 out(std::cos(angle), 0.0, -std::sin(angle));
            mesh.data.positions.push_back(Vector3(0.0, y, 0.0) + out * kRadius);
            mesh.data.influences.push_back(influencesAt(y));
            mesh.normals.push_back(out);
            mesh.colours.push_back(stripe(ring, sector));
            if (ring == 0) continue;
            const int next = sector + 1 < kSectors ? 1 : 1 - kSectors;
            const int a = ring * kSectors + sector;
            mesh.triangles.push_back({a - kSectors, a - kSectors + next, a});
            mesh.triangles.push_back({a, a - kSectors + next, a + next});
        }
    }
    for (int k = 0; k <= kBones; ++k)
        mesh.joints.push_back({joint(k), k - 1});
    return mesh;
}

BoneTransformVector tubePose(double swing, double twist, double stretch) {
    BoneTransformVector pose;
    Vector3 start = joint(0);
    for (int k = 0; k < kBones; ++k) {
        const double angle = swing * (k + 0.5);
        const Vector3 end = start + Vector3(std::sin(angle), std::cos(angle), 0.0) * stretch;
        pose.bones.emplace_back(joint(k), joint(k + 1), start, end, twist * (k + 0.5));
        start = end;
    }
    pose.bones.push_back(pose.bones.back());
    return pose;
}

}  // namespace demo
