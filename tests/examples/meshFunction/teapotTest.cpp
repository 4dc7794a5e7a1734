#include <cmath>

#include <gtest/gtest.h>

#include "examples/meshFunction/PatchModel.h"
#include "examples/meshFunction/teapot.h"
#include "tests/golden/Digest.h"

using namespace geomKit;
using namespace demo;

namespace {

std::vector<TexturedPatch> teapotPatches() {
    std::string error;
    auto patches = loadPatches(GEOMKIT_TEAPOT_FILE, &error);
    EXPECT_TRUE(patches) << error;
    return patches ? *patches : std::vector<TexturedPatch>();
}

TEST(BezierPatch, DerivativesAgreeWithDifferences) {
    constexpr double h = 1e-4;
    InputSource in(7);
    const std::vector<TexturedPatch> patches = teapotPatches();
    ASSERT_EQ(patches.size(), 32U);
    for (const TexturedPatch& patch : patches) {
        const auto at = [&patch](double u, double v) { return patch.surface.at(u, v); };
        for (int i = 0; i < 10; ++i) {
            const double u = in.uniform(h, 1.0 - h), v = in.uniform(h, 1.0 - h);
            const SurfacePoint s = at(u, v);
            for (std::size_t k = 0; k < 2; ++k) {
                const double du = k == 0 ? h : 0.0;
                const SurfacePoint before = at(u - du, v - (h - du));
                const SurfacePoint after = at(u + du, v + (h - du));
                const auto expectSlope = [](const Vector3& d, const Vector3& a, const Vector3& b) {
                    const Vector3 slope = (b - a) * (0.5 / h);
                    EXPECT_LE((d - slope).length(), 1e-6 * (1.0 + slope.length()));
                };
                expectSlope(s.d1[k], before.position, after.position);
                expectSlope(s.d2[k], before.d1[0], after.d1[0]);
                expectSlope(s.d2[k + 1], before.d1[1], after.d1[1]);
            }
        }
    }
}

// The area vectors of a surface add up to that of what closes its opening: for the body the disc
// inside the rim, of radius 1.4. A gap, a missing patch or one that faces inwards shows.
TEST(Teapot, TheBodyIsClosedButForItsOpeningAndFacesOutwards) {
    std::vector<TexturedPatch> patches;
    for (const TexturedPatch& patch : teapotPatches()) {
        if (patch.chart == "body") patches.push_back(patch);
    }
    const Mesh body = tessellate(patches, 8.0);
    ASSERT_EQ(body.curvatures.size(), body.positions.size());
    Vector3 sum;
    for (std::size_t i = 0; i + 2 < body.facets.size(); i += 3) {
        Vector3 corner[3], normal;
        for (std::size_t k = 0; k < 3; ++k) {
            const auto v = static_cast<std::size_t>(body.facets[i + k]);
            corner[k] = body.positions[v];
            normal += body.normals[v];
        }
        const Vector3 facet = (corner[1] - corner[0]) % (corner[2] - corner[0]);
        sum += facet * 0.5;
        EXPECT_GE(facet * normal, 0.0) << "facet " << i / 3;
    }
    EXPECT_LE(std::abs(sum.x) + std::abs(sum.y), 1e-9);
    EXPECT_NEAR(sum.z, -M_PI * 1.4 * 1.4, 0.02 * M_PI * 1.4 * 1.4);
}

}  // namespace
