#include <cmath>
#include <limits>
#include <thread>

#include <gtest/gtest.h>

#include "geomKit/transforms/BoneTransformVector.h"
#include "tests/transforms/oracle.h"

namespace {

using Influences = std::vector<BaseDisplayData::Influence>;

constexpr int kNoBone = std::numeric_limits<int>::min();

BoneTransform stretched(double x, const Vector3& move) {
    BoneTransform bone;
    bone.linear(0, 0) = x;
    bone.translation = move;
    return bone;
}

TEST(Skinning, OneVertex) {
    BoneTransformVector skeleton;
    skeleton.bones = {stretched(3.0, {0.0, 0.0, 8.0}), stretched(1.0, {4.0, 0.0, 0.0})};
    const Vector3 p(1.0, 2.0, 3.0);
    const UVector3 normal(1.0, 1.0, 0.0);
    const UVector3 stretchedNormal(1.0, 3.0, 0.0);
    const struct {
        Influences list;
        Vector3 point, pointWithNormal;
        UVector3 normal;
    } cases[] = {
        {{}, p, p, normal},
        {{{0, 1.0}}, {3.0, 2.0, 11.0}, {3.0, 2.0, 11.0}, stretchedNormal},
        {{{1, 0.25}}, {1.25, 0.5, 0.75}, {5.0, 2.0, 3.0}, normal},
        {{{-1, 0.25}}, p * 0.25, p, normal},
        {{{2, 0.25}}, p * 0.25, p, normal},
        {{{-1, 0.5}, {1, 0.5}}, {3.0, 2.0, 3.0}, {3.0, 2.0, 3.0}, normal},
        {{{0, 0.5}, {kNoBone, 0.5}}, {2.0, 2.0, 7.0}, {2.0, 2.0, 7.0}, UVector3(1.0, 2.0, 0.0)},
        {{{1, 1.0}, {1, 1.0}}, {10.0, 4.0, 6.0}, {10.0, 4.0, 6.0}, normal},
    };
    for (const auto& c : cases) {
        BaseDisplayData mesh;
        mesh.positions = {p, p};
        mesh.influences = {c.list};
        UVector3 out = normal;
        EXPECT_LE((skeleton.getTransformed(0, &mesh) - c.point).length(), 1e-15);
        EXPECT_LE((skeleton.getTransformed(0, &mesh, out, out) - c.pointWithNormal).length(),
                  1e-15);
        EXPECT_LE((out - c.normal).length(), 1e-15);
        EXPECT_EQ(skeleton.getTransformed(1, &mesh), p) << "beyond the influences";
    }
    BaseDisplayData plain;
    plain.positions = {p};
    UVector3 odd;
    odd.x = 7.0;
    UVector3 out;
    EXPECT_EQ(skeleton.getTransformed(0, &plain, odd, out), p);
    EXPECT_EQ(out.x, 7.0) << "returned as it is";
}

TEST(Skinning, NormalsStayPerpendicularUnderStretch) {
    InputSource in(61);
    BoneTransformVector skeleton;
    skeleton.bones.resize(1);
    BaseDisplayData mesh;
    mesh.positions.resize(1);
    mesh.influences = {{{0, 1.0}}};
    for (int n = 0; n < 100; ++n) {
        Matrix3 m = in.matrix(1.0);
        if (m.determinant() < 0.0) m = m * -1.0;
        skeleton.bones[0].linear = m;
        const UVector3 normal = in.vector(1.0);
        UVector3 out;
        skeleton.getTransformed(0, &mesh, normal, out);
        const Eigen::Vector3d want = (eigen(m).inverse().transpose() * eigen(normal)).normalized();
        EXPECT_LE(distance(eigen(out), want), 1e-9);
    }
}

/// Also tells -0 from 0. False with NaN.
bool sameBits(const Vector3& a, const Vector3& b) {
    const auto same = [](double s, double t) {
        return s == t && std::signbit(s) == std::signbit(t);
    };
    return same(a.x, b.x) && same(a.y, b.y) && same(a.z, b.z);
}

/// A mesh with every kind of vertex: none to six influences, wild bone numbers, a short list of
/// lists, normals along axes, with equal components, and too short to have been normalised.
struct Crowd {
    BoneTransformVector skeleton;
    BaseDisplayData mesh;
    std::vector<UVector3> normals;

    explicit Crowd(std::size_t vertices) {
        InputSource in(62);
        const int wild[] = {-1, 20, kNoBone, std::numeric_limits<int>::max()};
        for (int k = 0; k < 20; ++k) {
            const Vector3 to = in.vector(2.0);
            skeleton.bones.emplace_back(Vector3(), in.vector(2.0), Vector3(), to, 0.5);
        }
        for (std::size_t v = 0; v < vertices; ++v) {
            mesh.positions.push_back(in.vector(3.0));
            normals.emplace_back(in.index(5) == 0 ? Vector3() : in.vector(1.0));
            if (in.index(5) == 0) normals.back().y = normals.back().x;
            if (in.index(5) == 0) normals.back() = UVector3(Vector3(-1.0, 0.0, 0.0));
            if (in.index(9) == 0)
                static_cast<Vector3&>(normals.back()) = Vector3(-0.0, 0.0, -1e-14);
            Influences list(static_cast<std::size_t>(in.index(7)));
            for (auto& i : list) {
                i.bone = in.index(6) == 0 ? wild[in.index(4)] : in.index(20);
                i.weight = in.uniform(-0.2, 1.0);
            }
            if (v + 5 < vertices) mesh.influences.push_back(list);
        }
    }

    /// True when the answers for the range are those of the one-vertex members, bit for bit.
    bool matches(int first, int last, const Vector3* points, const Vector3* positions,
                 const UVector3* unit) const {
        for (int v = first; v < last; ++v) {
            const Vector3 point = skeleton.getTransformed(v, &mesh);
            UVector3 normal;
            const Vector3 position =
                skeleton.getTransformed(v, &mesh, normals[static_cast<std::size_t>(v)], normal);
            if (!sameBits(point, points[v]) || !sameBits(position, positions[v]) ||
                !sameBits(normal, unit[v])) {
                return false;
            }
        }
        return true;
    }
};

TEST(Skinning, RangesMatchOneVertexAndTouchNothingElse) {
    Crowd crowd(1000);
    const Vector3 mark(9.0, 9.0, 9.0);
    const int ranges[][2] = {{0, 0},     {5, 2},     {0, 1},    {3, 66},
                             {130, 194}, {200, 265}, {0, 1000}, {990, 1000}};
    for (const auto& r : ranges) {
        std::vector<Vector3> points(1000, mark);
        std::vector<Vector3> positions(1000, mark);
        std::vector<UVector3> unit = crowd.normals;
        crowd.skeleton.transformVertices(r[0], r[1], &crowd.mesh, points.data());
        crowd.skeleton.transformVertices(r[0], r[1], &crowd.mesh, unit.data(), positions.data(),
                                         unit.data());
        EXPECT_TRUE(crowd.matches(r[0], r[1], points.data(), positions.data(), unit.data()));
        for (int v = 0; v < 1000; ++v) {
            const auto i = static_cast<std::size_t>(v);
            if (v >= r[0] && v < r[1]) continue;
            EXPECT_TRUE(points[i] == mark && positions[i] == mark);
            EXPECT_TRUE(sameBits(unit[i], crowd.normals[i]));
        }
    }
    crowd.mesh.influences.clear();
    std::vector<Vector3> positions(1000);
    std::vector<UVector3> unit(1000);
    crowd.skeleton.transformVertices(0, 1000, &crowd.mesh, crowd.normals.data(), positions.data(),
                                     unit.data());
    EXPECT_TRUE(crowd.matches(0, 1000, positions.data(), positions.data(), unit.data()));
}

TEST(Skinning, ThreadsShareArraysOnDisjointRanges) {
    const Crowd crowd(3000);
    std::vector<Vector3> points(3000);
    std::vector<Vector3> positions(3000);
    std::vector<UVector3> unit(3000);
    std::vector<std::thread> threads;
    for (int first = 0; first < 3000; first += 750) {
        threads.emplace_back([&, first] {
            const int last = first + 750;
            crowd.skeleton.transformVertices(first, last, &crowd.mesh, points.data());
            crowd.skeleton.transformVertices(first, last, &crowd.mesh, crowd.normals.data(),
                                             positions.data(), unit.data());
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_TRUE(crowd.matches(0, 3000, points.data(), positions.data(), unit.data()));
}

}  // namespace
