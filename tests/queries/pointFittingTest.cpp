#include "geomKit/vAlgebra/centroid.h"
#include "tests/support.h"

using namespace geomKit;

namespace {

TEST(PointFitting, SpreadIsLeastAlongTheNormalAndGreatestAlongTheLine) {
    InputSource in(51);
    for (int i = 0; i < 2000; ++i) {
        const double size = std::exp(in.uniform(0.0, 14.0));
        const Vector3 offset = in.vector(3.0 * size);
        const Matrix3 frame = in.matrix(size);
        std::vector<Vector3> pts(static_cast<std::size_t>(3 + in.index(60)));
        for (Vector3& p : pts) {
            const Vector3 v = in.vector(1.0);
            p = offset + frame * Vector3(v.x, 0.5 * v.y, 0.1 * v.z);
        }
        Vector3 center;
        UVector3 normal, direction;
        ASSERT_TRUE(bestFitPlane(pts, &center, &normal));
        ASSERT_TRUE(bestFitLine(pts, nullptr, &direction));
        EXPECT_LE(dist(center, centroid(pts)), 1e-13 * size);
        const auto spreadAlong = [&](const UVector3& axis) {
            double sum = 0.0;
            for (const Vector3& p : pts)
                sum += ((p - center) * axis) * ((p - center) * axis);
            return sum;
        };
        const double most = spreadAlong(direction), least = spreadAlong(normal);
        for (int k = 0; k < 40; ++k) {
            const Vector3 turn = in.vector(std::exp(in.uniform(-9.0, 0.0)));
            EXPECT_LE(spreadAlong(UVector3(direction + turn)), most * (1.0 + 1e-13) + 1e-6);
            EXPECT_GE(spreadAlong(UVector3(normal + turn)), least - 1e-13 * most - 1e-6);
        }
    }
}

TEST(PointFitting, AnswersDegenerateSets) {
    Vector3 center(7.0, 8.0, 9.0);
    UVector3 normal(0.0, 1.0, 0.0), dir(0.0, 1.0, 0.0);
    EXPECT_FALSE(bestFitPlane({}, &center, &normal));
    EXPECT_FALSE(bestFitLine({Vector3()}, &center, &normal));
    EXPECT_EQ(center, Vector3(7.0, 8.0, 9.0));
    EXPECT_EQ(normal, Vector3(0.0, 1.0, 0.0));

    EXPECT_TRUE(bestFitPlane({{1, 0, 0}, {2, 0, 0}, {6, 0, 0}}, &center, &normal));
    EXPECT_TRUE(bestFitLine({{1, 0, 0}, {2, 0, 0}, {6, 0, 0}}, nullptr, &dir));
    EXPECT_EQ(center, Vector3(3.0, 0.0, 0.0));
    EXPECT_EQ(normal.x, 0.0);
    EXPECT_EQ(std::abs(dir.x), 1.0);

    const std::vector<Vector3> heap(5, Vector3(1.0, 2.0, 3.0));
    EXPECT_TRUE(bestFitPlane(heap, nullptr, &normal));
    EXPECT_TRUE(bestFitLine(heap, nullptr, &dir));
    EXPECT_EQ(normal, Vector3(1.0, 0.0, 0.0));
    EXPECT_EQ(dir, Vector3(0.0, 0.0, 1.0));

    for (const double bad : {kNaN, kInfinity, 1e300})
        EXPECT_TRUE(bestFitPlane({Vector3(), {1, bad, 2}, {-bad, 1, 0}}, &center, &normal));
}

}  // namespace
