// Skinning 100,000 vertices by 1 to 4 influences of 100 bones, against Eigen, GLM and a plain loop
// over the same data. Peers blend the bones' matrices where that is less work, and carry normals by
// the blended linear part, as skinning code usually does. All positions and normals are compared
// with those of a reference. `traffic` moves the same bytes and computes nothing.
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

#include <Eigen/Geometry>
#include <benchmark/benchmark.h>
#include <glm/mat4x4.hpp>
#include <glm/vec4.hpp>

#include "geomKit/transforms/BoneTransformVector.h"

using namespace geomKit;

namespace {

constexpr int kVertices = 100000;
constexpr int kBones = 100;
using Influences = std::vector<BaseDisplayData::Influence>;

struct Scene {
    BaseDisplayData mesh;
    std::vector<UVector3> normals;
    BoneTransformVector skeleton;

    Scene() {
        std::mt19937_64 random(7);
        std::uniform_real_distribution<double> uniform(-1.0, 1.0);
        const auto vector = [&] {
            const double x = uniform(random);
            const double y = uniform(random);
            return Vector3(x, y, uniform(random));
        };
        for (int k = 0; k < kBones; ++k) {
            const Vector3 a = vector();
            const Vector3 b = vector();
            const Vector3 c = vector();
            skeleton.bones.emplace_back(a, b, c, c + (b - a) + vector() * 0.1, uniform(random));
        }
        std::uniform_int_distribution<int> boneNumber(0, kBones - 1);
        std::uniform_int_distribution<int> influenceCount(1, 4);
        std::vector<Influences> lists;
        for (int v = 0; v < kVertices; ++v) {
            mesh.positions.push_back(vector());
            normals.emplace_back(vector());
            mesh.influences.emplace_back();
            Influences list(static_cast<std::size_t>(influenceCount(random)));
            double rest = 1.0;
            for (auto& influence : list) {
                influence = {boneNumber(random), 0.4 * rest};
                rest -= influence.weight;
            }
            list.back().weight += rest;
            lists.push_back(list);
        }
        // As hosts fill them: bone by bone, so that the lists do not lie in order in memory.
        for (std::size_t i = 0; i < 4; ++i) {
            for (std::size_t v = 0; v < lists.size(); ++v) {
                const std::size_t shuffled = (v * 7919) % lists.size();
                if (i < lists[shuffled].size())
                    mesh.influences[shuffled].push_back(lists[shuffled][i]);
            }
        }
    }
};

const Scene& scene() {
    static const Scene s;
    return s;
}

struct GeomKit {
    const BoneTransformVector& skeleton = scene().skeleton;
    void skin(Vector3* p, UVector3* n) const {
        const BaseDisplayData* mesh = &scene().mesh;
        if (n == nullptr) {
            skeleton.transformVertices(mesh, 0, kVertices, p);
        } else {
            skeleton.transformVertices(mesh, scene().normals.data(), 0, kVertices, p, n);
        }
    }
};

/// With influences prepared once.
struct GeomKitFlat {
    const BoneTransformVector& skeleton = scene().skeleton;
    const FlatInfluences influences{scene().mesh};
    void skin(Vector3* p, UVector3* n) const {
        const Vector3* rest = scene().mesh.positions.data();
        if (n == nullptr) {
            skeleton.transformVertices(influences, rest, 0, kVertices, p);
        } else {
            skeleton.transformVertices(influences, rest, scene().normals.data(), 0, kVertices, p,
                                       n);
        }
    }
};

/// One member call a vertex.
struct OneByOne {
    void skin(Vector3* p, UVector3* n) const {
        const Scene& s = scene();
        for (int v = 0; v < kVertices; ++v) {
            p[v] = n == nullptr ? s.skeleton.getTransformed(v, &s.mesh)
                                : s.skeleton.getTransformed(
                                      v, &s.mesh, s.normals[static_cast<std::size_t>(v)], n[v]);
        }
    }
};

/// A loop without a library: twelve doubles a bone.
struct PlainLoop {
    struct Bone {
        double m[12];
    };
    std::vector<Bone> bones;

    PlainLoop() {
        for (const BoneTransform& b : scene().skeleton.bones) {
            Bone bone;
            for (int r = 0; r < 3; ++r) {
                for (int c = 0; c < 3; ++c) {
                    bone.m[4 * r + c] = b.linear(r, c);
                }
                bone.m[4 * r + 3] = b.translation[r];
            }
            bones.push_back(bone);
        }
    }
    void skin(Vector3* p, UVector3* n) const {
        const BaseDisplayData& mesh = scene().mesh;
        for (std::size_t v = 0; v < kVertices; ++v) {
            const Vector3 q = mesh.positions[v];
            if (n == nullptr) {
                double x = 0.0;
                double y = 0.0;
                double z = 0.0;
                for (const auto& i : mesh.influences[v]) {
                    const double* m = bones[static_cast<std::size_t>(i.bone)].m;
                    x += i.weight * (m[0] * q.x + m[1] * q.y + m[2] * q.z + m[3]);
                    y += i.weight * (m[4] * q.x + m[5] * q.y + m[6] * q.z + m[7]);
                    z += i.weight * (m[8] * q.x + m[9] * q.y + m[10] * q.z + m[11]);
                }
                p[v] = Vector3(x, y, z);
                continue;
            }
            double m[12] = {};
            for (const auto& i : mesh.influences[v]) {
                const double* b = bones[static_cast<std::size_t>(i.bone)].m;
                for (int k = 0; k < 12; ++k) {
                    m[k] += i.weight * b[k];
                }
            }
            p[v] = Vector3(m[0] * q.x + m[1] * q.y + m[2] * q.z + m[3],
                           m[4] * q.x + m[5] * q.y + m[6] * q.z + m[7],
                           m[8] * q.x + m[9] * q.y + m[10] * q.z + m[11]);
            const Vector3& d = scene().normals[v];
            const double x = m[0] * d.x + m[1] * d.y + m[2] * d.z;
            const double y = m[4] * d.x + m[5] * d.y + m[6] * d.z;
            const double z = m[8] * d.x + m[9] * d.y + m[10] * d.z;
            const double r = 1.0 / std::sqrt(x * x + y * y + z * z);
            n[v].x = x * r;
            n[v].y = y * r;
            n[v].z = z * r;
        }
    }
};

struct EigenAffine {
    using Bone = Eigen::Matrix<double, 3, 4>;
    std::vector<Bone> bones;

    EigenAffine() {
        for (const BoneTransform& b : scene().skeleton.bones) {
            Bone bone;
            for (int r = 0; r < 3; ++r) {
                bone.row(r) << b.linear(r, 0), b.linear(r, 1), b.linear(r, 2), b.translation[r];
            }
            bones.push_back(bone);
        }
    }
    void skin(Vector3* p, UVector3* n) const {
        const BaseDisplayData& mesh = scene().mesh;
        for (std::size_t v = 0; v < kVertices; ++v) {
            const Eigen::Map<const Eigen::Vector3d> q(&mesh.positions[v].x);
            Eigen::Map<Eigen::Vector3d> out(&p[v].x);
            if (n == nullptr) {
                Eigen::Vector3d sum = Eigen::Vector3d::Zero();
                for (const auto& i : mesh.influences[v]) {
                    const Bone& b = bones[static_cast<std::size_t>(i.bone)];
                    sum += i.weight * (b.leftCols<3>() * q + b.col(3));
                }
                out = sum;
                continue;
            }
            Bone blend = Bone::Zero();
            for (const auto& i : mesh.influences[v]) {
                blend += i.weight * bones[static_cast<std::size_t>(i.bone)];
            }
            const Eigen::Map<const Eigen::Vector3d> d(&scene().normals[v].x);
            out = blend.leftCols<3>() * q + blend.col(3);
            Eigen::Map<Eigen::Vector3d>(&n[v].x) = (blend.leftCols<3>() * d).normalized();
        }
    }
};

struct Glm {
    std::vector<glm::dmat4> bones;

    Glm() {
        for (const BoneTransform& b : scene().skeleton.bones) {
            glm::dmat4 bone(1.0);
            for (int r = 0; r < 3; ++r) {
                for (int c = 0; c < 3; ++c) {
                    bone[c][r] = b.linear(r, c);
                }
                bone[3][r] = b.translation[r];
            }
            bones.push_back(bone);
        }
    }
    void skin(Vector3* p, UVector3* n) const {
        const BaseDisplayData& mesh = scene().mesh;
        for (std::size_t v = 0; v < kVertices; ++v) {
            const Vector3& q = mesh.positions[v];
            const glm::dvec4 point(q.x, q.y, q.z, 1.0);
            if (n == nullptr) {
                glm::dvec4 sum(0.0);
                for (const auto& i : mesh.influences[v]) {
                    sum += i.weight * (bones[static_cast<std::size_t>(i.bone)] * point);
                }
                p[v] = Vector3(sum.x, sum.y, sum.z);
                continue;
            }
            glm::dmat4 blend(0.0);
            for (const auto& i : mesh.influences[v]) {
                blend += i.weight * bones[static_cast<std::size_t>(i.bone)];
            }
            const glm::dvec4 out = blend * point;
            p[v] = Vector3(out.x, out.y, out.z);
            const Vector3& d = scene().normals[v];
            const glm::dvec3 normal = glm::normalize(glm::dmat3(blend) * glm::dvec3(d.x, d.y, d.z));
            n[v].x = normal.x;
            n[v].y = normal.y;
            n[v].z = normal.z;
        }
    }
};

/// Reads every byte that skinning reads and writes every byte that it writes.
struct Traffic {
    void skin(Vector3* p, UVector3* n) const {
        const BaseDisplayData& mesh = scene().mesh;
        for (std::size_t v = 0; v < kVertices; ++v) {
            double sum = 0.0;
            for (const auto& i : mesh.influences[v]) {
                sum += i.weight;
            }
            p[v] = mesh.positions[v];
            p[v].x += sum;
            if (n != nullptr) n[v] = scene().normals[v];
        }
    }
};

/// Positions and normals as `Reference` has them. A normal that is carried by two tangents differs
/// from one that is multiplied by the bones, so each kind of competitor has its own reference.
template <typename Reference>
void require(const std::vector<Vector3>& positions, const std::vector<UVector3>& normals,
             bool withNormals) {
    std::vector<Vector3> p(kVertices);
    std::vector<UVector3> n(kVertices);
    Reference().skin(p.data(), withNormals ? n.data() : nullptr);
    for (std::size_t v = 0; v < kVertices; ++v) {
        const bool isSame = (positions[v] - p[v]).length() < 1e-9 &&
                            (!withNormals || (normals[v] - n[v]).length() < 1e-9);
        if (!isSame) {
            std::fprintf(stderr, "a competitor computes something else\n");
            std::exit(1);
        }
    }
}

template <typename Skinner, typename Reference>
void run(benchmark::State& state, bool withNormals) {
    const Skinner skinner;
    std::vector<Vector3> positions(kVertices);
    std::vector<UVector3> normals(kVertices);
    for (auto _ : state) {
        skinner.skin(positions.data(), withNormals ? normals.data() : nullptr);
        benchmark::ClobberMemory();
    }
    require<Reference>(positions, normals, withNormals);
    state.SetItemsProcessed(state.iterations() * kVertices);
}

template <typename Skinner, typename Reference = OneByOne>
void points(benchmark::State& state) {
    run<Skinner, Reference>(state, false);
}

template <typename Skinner, typename Reference = PlainLoop>
void normals(benchmark::State& state) {
    run<Skinner, Reference>(state, true);
}

BENCHMARK(points<GeomKit>)->Name("skin points/geomKit");
BENCHMARK(points<GeomKitFlat>)->Name("skin points/geomKit, flat");
BENCHMARK(points<OneByOne>)->Name("skin points/geomKit, one by one");
BENCHMARK(points<PlainLoop>)->Name("skin points/plain loop");
BENCHMARK(points<EigenAffine>)->Name("skin points/Eigen");
BENCHMARK(points<Glm>)->Name("skin points/GLM");
BENCHMARK(normals<GeomKit, OneByOne>)->Name("skin points and normals/geomKit");
BENCHMARK(normals<GeomKitFlat, OneByOne>)->Name("skin points and normals/geomKit, flat");
BENCHMARK(normals<OneByOne, OneByOne>)->Name("skin points and normals/geomKit, one by one");
BENCHMARK(normals<PlainLoop>)->Name("skin points and normals/plain loop");
BENCHMARK(normals<EigenAffine>)->Name("skin points and normals/Eigen");
BENCHMARK(normals<Glm>)->Name("skin points and normals/GLM");
// Their reference is what they copy: they show what moving the bytes takes.
BENCHMARK(points<Traffic, Traffic>)->Name("skin points/traffic");
BENCHMARK(normals<Traffic, Traffic>)->Name("skin points and normals/traffic");

}  // namespace
