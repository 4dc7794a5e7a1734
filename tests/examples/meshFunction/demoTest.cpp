#include "examples/meshFunction/PatchModel.h"
#include "examples/meshFunction/SampledScene.h"
#include "examples/meshFunction/View.h"
#include "examples/meshFunction/teapot.h"
#include "tests/support.h"

using namespace geomKit;
using namespace demo;

namespace {

TEST(BezierPatch, DerivativesAgreeWithDifferences) {
    constexpr double h = 1e-4, kRounding = 1e-5;
    InputSource in(7);
    std::string error;
    const auto patches = loadPatches(GEOMKIT_TEAPOT_FILE, &error);
    ASSERT_TRUE(patches) << error;
    for (int i = 0; i < 320; ++i) {
        SCOPED_TRACE(i);
        const BezierPatch& surface = (*patches)[static_cast<std::size_t>(i % 32)].surface;
        const double u = in.uniform(h, 1.0 - h), v = in.uniform(h, 1.0 - h);
        const SurfacePoint s = surface.at(u, v);
        for (std::size_t k = 0; k < 2; ++k) {
            const double du = k == 0 ? h : 0.0, dv = h - du;
            const SurfacePoint a = surface.at(u - du, v - dv), b = surface.at(u + du, v + dv);
            EXPECT_LE(dist(s.d1[k], (b.position - a.position) * (0.5 / h)), kRounding);
            EXPECT_LE(dist(s.d2[k], (b.d1[0] - a.d1[0]) * (0.5 / h)), kRounding);
            EXPECT_LE(dist(s.d2[k + 1], (b.d1[1] - a.d1[1]) * (0.5 / h)), kRounding);
        }
    }
}

// Where the surface is seen edge-on it is cut, but never so that something shows through it.
TEST(ViewMesh, HasNoHolesInsideTheOutline) {
    constexpr int kSize = 160;
    std::string error;
    const auto teapot = loadTeapot(GEOMKIT_TEAPOT_FILE, 4.0, &error);
    ASSERT_TRUE(teapot) << error;
    for (const UVector3& from : {UVector3(0.42, -1.0, 0.5), UVector3(1.0, 1.0, 0.8),
                                 UVector3(-1.0, 0.1, 0.2), UVector3(0.1, 0.2, -1.0)}) {
        const Camera camera =
            cameraAround(teapot->positions, from, UVector3(0.0, 0.0, 1.0), 4.0, kSize, kSize, 8.0);
        const View view = viewMesh(*teapot, camera, kSize, kSize, 0.05);
        std::vector<MeshFunction2D::Point> params;
        for (const ScreenPoint& p : view.at)
            params.emplace_back(p.x, p.y);
        const MeshFunction2D function(params, params, view.mesh.facets, {});

        std::vector<ScreenPoint> at;
        for (const Vector3& p : teapot->positions)
            at.push_back(camera.project(p));
        const SampledScene scene(at, teapot->facets, kSize, kSize);
        constexpr int kColumns = kSize * SampledScene::kSamples;
        int checked = 0;
        for (int s = 0; s < kColumns * kColumns; ++s) {
            const int facet = scene.fronts()[static_cast<std::size_t>(s)].facet;
            if (facet < 0 || scene.isAtOutline(s % kColumns, s / kColumns)) continue;
            const MeshFunction2D::Point sample((s % kColumns + 0.5) / SampledScene::kSamples,
                                               (s / kColumns + 0.5) / SampledScene::kSamples);
            MeshFunction2D::Point value;
            ASSERT_TRUE(function.evaluate(sample, &value, nullptr)) << sample.u << ' ' << sample.v;
            ++checked;
        }
        EXPECT_GT(checked, kColumns * kColumns / 5);
    }
}

}  // namespace
