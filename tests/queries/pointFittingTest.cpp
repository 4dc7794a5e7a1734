#include "tests/support.h"

using namespace geomKit;

namespace {

TEST(PointFitting, AnswersDegenerateSets) {
    Vector3 center(7.0, 8.0, 9.0);
    UVector3 normal(0.0, 1.0, 0.0), dir(0.0, 1.0, 0.0);
    EXPECT_FALSE(bestFitPlane({}, &center, &normal));
    EXPECT_FALSE(bestFitLine({Vector3()}, &center, &normal));
    EXPECT_EQ(center, Vector3(7.0, 8.0, 9.0));
    EXPECT_EQ(normal, Vector3(0.0, 1.0, 0.0));

    const Vector3 row[] = {{1, 0, 0}, {2, 0, 0}, {6, 0, 0}, {9, 9, 9}};
    EXPECT_TRUE(bestFitPlane(row, 3, &center, &normal));
    EXPECT_TRUE(bestFitLine(row, 3, nullptr, &dir));
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
