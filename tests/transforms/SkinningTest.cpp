#include "tests/transforms/oracle.h"

using namespace geomKit;

namespace {

using Influences = std::vector<BaseDisplayData::Influence>;

constexpr int kNoBone = std::numeric_limits<int>::min();
constexpr std::size_t kVertices = 1000;
constexpr std::size_t kMany = std::numeric_limits<std::size_t>::max();

TEST(Skinning, OneVertex) {
    BoneTransformVector skeleton;
    skeleton.bones.resize(2);
    skeleton.bones[0].linear(0, 0) = 3.0;
    skeleton.bones[0].translation = Vector3(0.0, 0.0, 8.0);
    skeleton.bones[1].translation = Vector3(4.0, 0.0, 0.0);
    const Vector3 p(1.0, 2.0, 3.0);
    const UVector3 normal(1.0, 1.0, 0.0);
    BaseDisplayData mesh;
    mesh.positions = {p, p};
    const auto expect = [&](const char* name, const Influences& list, const Vector3& point,
                            const Vector3& pointWithNormal, const UVector3& turned) {
        SCOPED_TRACE(name);
        mesh.influences = {list};
        UVector3 out = normal;
        EXPECT_LE(distance(skeleton.getTransformed(0, &mesh), point), 1e-15);
        EXPECT_LE(distance(skeleton.getTransformed(0, &mesh, out, out), pointWithNormal), 1e-15);
        EXPECT_LE(distance(out, turned), 1e-15);
        EXPECT_EQ(skeleton.getTransformed(1, &mesh), p) << "beyond the influences";
    };
    expect("no bone", {}, p, p, normal);
    expect("one", {{0, 1.0}}, {3, 2, 11}, {3, 2, 11}, UVector3(1, 3, 0));
    expect("one of a weight below 1", {{1, 0.25}}, {1.25, 0.5, 0.75}, {5, 2, 3}, normal);
    expect("a number too large", {{2, 0.25}}, p * 0.25, p, normal);
    expect("two", {{0, 0.5}, {kNoBone, 0.5}}, {2, 2, 7}, {2, 2, 7}, UVector3(1, 2, 0));
    expect("weights that sum to 2", {{1, 1.0}, {1, 1.0}}, {10, 4, 6}, {10, 4, 6}, normal);
    for (const int outside : {2, -1, kNoBone}) {
        UVector3 out;
        EXPECT_EQ(skeleton.getTransformed(outside, &mesh), Vector3()) << outside;
        EXPECT_EQ(skeleton.getTransformed(outside, &mesh, normal, out), Vector3()) << outside;
        EXPECT_EQ(out, normal) << outside;
    }
}

/// A mesh with every kind of vertex: none to six influences, wild bone numbers, a short list of
/// lists, normals along axes, with equal components, and too short to have been normalised.
struct Crowd {
    struct Skin {
        std::vector<Vector3> points, positions;
        std::vector<UVector3> normals;
    };
    BoneTransformVector skeleton;
    BaseDisplayData mesh;
    Skin rest;

    Crowd() {
        InputSource in(62);
        const int wild[] = {-1, 20, kNoBone, std::numeric_limits<int>::max()};
        for (int k = 0; k < 20; ++k) {
            const auto [from, to] = in.vectors<2>(2.0);
            skeleton.bones.emplace_back(Vector3(), from, Vector3(), to, 0.5);
        }
        for (std::size_t v = 0; v < kVertices; ++v) {
            mesh.positions.push_back(in.vector(3.0));
            const Vector3 n = in.vector(1.0);
            const Vector3 kinds[] = {n, {n.x, n.x, n.z}, {}, {-1.0, 0.0, 0.0}};
            rest.normals.emplace_back(kinds[in.index(4)]);
            if (in.index(9) == 0)
                static_cast<Vector3&>(rest.normals.back()) = Vector3(-0.0, 0.0, -1e-14);
            Influences list(static_cast<std::size_t>(in.index(7)));
            for (auto& i : list) {
                i.bone = in.index(6) == 0 ? wild[in.index(4)] : in.index(20);
                i.weight = in.uniform(-0.2, 1.0);
            }
            if (v + 5 < kVertices) mesh.influences.push_back(list);
        }
        rest.points = rest.positions = mesh.positions;
    }

    /// By the range members: of the mesh, or in place by flat influences; normals in place for an
    /// odd `first`.
    void skinRange(std::size_t first, std::size_t count, Skin& out,
                   const FlatInfluences* flat = nullptr) const {
        const std::size_t start = std::min(first, kVertices);
        const std::size_t size = std::min(count, kVertices - start);
        Vector3* const points = out.points.data() + start;
        Vector3* const positions = out.positions.data() + start;
        UVector3* const moved = out.normals.data() + start;
        const UVector3* normals = first % 2 == 0 ? rest.normals.data() + start : moved;
        if (flat != nullptr) {
            skeleton.transformVertices(*flat, points, first, size, points);
            skeleton.transformVertices(*flat, positions, normals, first, size, positions, moved);
            return;
        }
        EXPECT_EQ(skeleton.transformVertices(&mesh, first, count, nullptr), size);
        EXPECT_EQ(skeleton.transformVertices(&mesh, first, count, points), size);
        skeleton.transformVertices(&mesh, normals, first, count, positions, nullptr);
        Vector3* const again = first % 3 == 0 ? positions : nullptr;
        EXPECT_EQ(skeleton.transformVertices(&mesh, normals, first, count, again, moved), size);
    }

    /// `skin` is, bit for bit, what the one-vertex members make of the range, and at rest
    /// elsewhere.
    void expectMatch(std::size_t first, std::size_t count, const Skin& skin) const {
        Skin want = rest;
        for (std::size_t i = first; i < kVertices && i - first < count; ++i) {
            const int v = static_cast<int>(i);
            want.points[i] = skeleton.getTransformed(v, &mesh);
            want.positions[i] = skeleton.getTransformed(v, &mesh, rest.normals[i], want.normals[i]);
        }
        EXPECT_TRUE(sameBits(skin.points, want.points));
        EXPECT_TRUE(sameBits(skin.positions, want.positions));
        EXPECT_TRUE(sameBits(skin.normals, want.normals));
    }
};

TEST(Skinning, RangesMatchOneVertexAndEndWithTheMesh) {
    Crowd crowd;
    FlatInfluences flat(crowd.mesh);
    const auto expectMatches = [&](std::size_t first, std::size_t count) {
        SCOPED_TRACE(testing::PrintToString(std::pair(first, count)));
        Crowd::Skin skin = crowd.rest;
        crowd.skinRange(first, count, skin);
        crowd.expectMatch(first, count, skin);
        skin = crowd.rest;
        crowd.skinRange(first, count, skin, &flat);
        crowd.expectMatch(first, count, skin);
    };
    const std::size_t ranges[][2] = {{0, 0},     {0, 1},         {3, 63},       {130, 64},
                                     {201, 64},  {990, 10},      {991, 10},     {0, kVertices},
                                     {7, kMany}, {kVertices, 1}, {kMany, kMany}};
    for (const auto& r : ranges)
        expectMatches(r[0], r[1]);
    crowd.mesh.influences.clear();
    flat = FlatInfluences();
    expectMatches(0, kVertices);
}

// Offsets beyond the entries or below the one before: the nearest that is neither.
TEST(Skinning, FlatInfluencesStayWithinTheirEntries) {
    using Offsets = std::vector<std::size_t>;
    const std::int32_t bones[] = {10, 11, 12, 13};
    const double weights[] = {0.5, 0.0, -2.0, 3.0};
    const auto expect = [](const char* name, const FlatInfluences& flat, const Offsets& offsets,
                           const std::vector<std::int32_t>& wantedBones) {
        EXPECT_EQ(flat.offsets(), offsets) << name;
        std::vector<std::int32_t> found;
        for (const BaseDisplayData::Influence& i : flat.entries())
            found.push_back(i.bone);
        EXPECT_EQ(found, wantedBones) << name;
    };
    const auto flat = [&](const Offsets& offsets) {
        return FlatInfluences(bones, weights, 4, offsets.data(), offsets.size() - 1);
    };
    expect("in order", flat({0, 1, 4}), {0, 1, 4}, {10, 11, 12, 13});
    expect("back and forth", flat({1, 3, 2, kMany, 0}), {0, 2, 2, 3, 3}, {11, 12, 13});
    expect("beyond the end at once", flat({kMany, 1, 9}), {0, 0, 0}, {});
    expect("a table", FlatInfluences::fromTable(bones, weights, 2, 2), {0, 1, 3}, {10, 12, 13});
    expect("nothing", FlatInfluences(nullptr, nullptr, 0, nullptr, 0), {0}, {});
}

TEST(Skinning, ThreadsShareArraysOnDisjointRanges) {
    const Crowd crowd;
    Crowd::Skin skin = crowd.rest;
    inThreads(8, [&](int i) { crowd.skinRange(125 * static_cast<std::size_t>(i), 125, skin); });
    crowd.expectMatch(0, kVertices, skin);
}

}  // namespace
