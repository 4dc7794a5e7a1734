#include "tests/transforms/oracle.h"

using namespace geomKit;

namespace {

using Influences = std::vector<BaseDisplayData::Influence>;

constexpr int kNoBone = std::numeric_limits<int>::min();
constexpr int kVertices = 1000;

TEST(Skinning, OneVertex) {
    BoneTransformVector skeleton;
    skeleton.bones.resize(2);
    skeleton.bones[0].linear(0, 0) = 3.0;
    skeleton.bones[0].translation = Vector3(0.0, 0.0, 8.0);
    skeleton.bones[1].translation = Vector3(4.0, 0.0, 0.0);
    const Vector3 p(1.0, 2.0, 3.0);
    const UVector3 normal(1.0, 1.0, 0.0);
    const struct {
        Influences list;
        Vector3 point, pointWithNormal;
        UVector3 normal;
    } cases[] = {
        {{}, p, p, normal},
        {{{0, 1.0}}, {3.0, 2.0, 11.0}, {3.0, 2.0, 11.0}, UVector3(1.0, 3.0, 0.0)},
        {{{1, 0.25}}, {1.25, 0.5, 0.75}, {5.0, 2.0, 3.0}, normal},
        {{{-1, 0.25}}, p * 0.25, p, normal},
        {{{2, 0.25}}, p * 0.25, p, normal},
        {{{0, 0.5}, {kNoBone, 0.5}}, {2.0, 2.0, 7.0}, {2.0, 2.0, 7.0}, UVector3(1.0, 2.0, 0.0)},
        {{{1, 1.0}, {1, 1.0}}, {10.0, 4.0, 6.0}, {10.0, 4.0, 6.0}, normal},
    };
    BaseDisplayData mesh;
    mesh.positions = {p, p};
    for (const auto& c : cases) {
        mesh.influences = {c.list};
        UVector3 out = normal;
        EXPECT_LE(distance(skeleton.getTransformed(0, &mesh), c.point), 1e-15);
        EXPECT_LE(distance(skeleton.getTransformed(0, &mesh, out, out), c.pointWithNormal), 1e-15);
        EXPECT_LE(distance(out, c.normal), 1e-15);
        EXPECT_EQ(skeleton.getTransformed(1, &mesh), p) << "beyond the influences";
    }
    InputSource in(61);
    mesh.influences = {{{0, 1.0}}};
    for (int n = 0; n < 100; ++n) {
        const Matrix3 m = in.matrix(1.0);
        const UVector3 across = in.vector(1.0);
        UVector3 out;
        skeleton.bones[0].linear = m * (m.determinant() < 0.0 ? -1.0 : 1.0);
        skeleton.getTransformed(0, &mesh, across, out);
        const Eigen::Vector3d want =
            eigen(skeleton.bones[0].linear).inverse().transpose() * eigen(across);
        EXPECT_LE(distance(out, want.normalized()), 1e-9) << "not perpendicular under stretch";
    }
}

/// A mesh with every kind of vertex: none to six influences, wild bone numbers, a short list of
/// lists, normals along axes, with equal components, and too short to have been normalised.
struct Crowd {
    struct Skin {
        std::vector<Vector3> points{kVertices, Vector3(9.0, 9.0, 9.0)};
        std::vector<Vector3> positions = points;
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
        for (int v = 0; v < kVertices; ++v) {
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
    }

    /// By the range members; normals in place for an odd `first`.
    void skinRange(int first, int last, Skin& out) const {
        const UVector3* normals = first % 2 == 0 ? rest.normals.data() : out.normals.data();
        const auto start = static_cast<std::size_t>(first);
        const std::size_t count = last > first ? static_cast<std::size_t>(last - first) : 0;
        skeleton.transformVertices(&mesh, start, count, out.points.data() + start);
        skeleton.transformVertices(&mesh, normals + start, start, count,
                                   out.positions.data() + start, out.normals.data() + start);
    }

    /// True when `skin` is, bit for bit, what the one-vertex members make of the range, and at rest
    /// elsewhere.
    bool matches(int first, int last, const Skin& skin) const {
        Skin want = rest;
        for (int v = first; v < last; ++v) {
            const auto i = static_cast<std::size_t>(v);
            want.points[i] = skeleton.getTransformed(v, &mesh);
            want.positions[i] = skeleton.getTransformed(v, &mesh, rest.normals[i], want.normals[i]);
        }
        return sameBits(skin.points, want.points) && sameBits(skin.positions, want.positions) &&
               sameBits(skin.normals, want.normals);
    }
};

TEST(Skinning, RangesMatchOneVertexAndTouchNothingElse) {
    Crowd crowd;
    const int ranges[][2] = {{0, 0},     {5, 2},     {0, 1},         {3, 66},
                             {130, 194}, {201, 265}, {0, kVertices}, {990, kVertices}};
    for (const auto& r : ranges) {
        Crowd::Skin skin = crowd.rest;
        crowd.skinRange(r[0], r[1], skin);
        EXPECT_TRUE(crowd.matches(r[0], r[1], skin)) << r[0] << " " << r[1];
    }
    crowd.mesh.influences.clear();
    Crowd::Skin skin = crowd.rest;
    crowd.skinRange(0, kVertices, skin);
    EXPECT_TRUE(crowd.matches(0, kVertices, skin)) << "a mesh without influences";
}

TEST(Skinning, ThreadsShareArraysOnDisjointRanges) {
    const Crowd crowd;
    Crowd::Skin skin = crowd.rest;
    inThreads(8, [&](int i) { crowd.skinRange(125 * i, 125 * (i + 1), skin); });
    EXPECT_TRUE(crowd.matches(0, kVertices, skin));
}

}  // namespace
