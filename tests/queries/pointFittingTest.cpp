#include <Eigen/Dense>

#include "tests/support.h"

using namespace geomKit;

namespace {

TEST(PointFitting, AgreesWithTheSingularVectors) {
    InputSource in(51);
    for (int i = 0; i < 2000; ++i) {
        const double size = std::exp(in.uniform(-1.0, 14.0));
        const Vector3 offset = in.vector(3.0 * size);
        const Matrix3 frame = in.matrix(size);
        const int count = 3 + in.index(60);
        std::vector<Vector3> pts;
        Eigen::Matrix3Xd columns(3, count);
        for (int k = 0; k < count; ++k) {
            const Vector3 v = in.vector(1.0);
            pts.push_back(offset + frame * Vector3(v.x, 0.5 * v.y, 0.1 * v.z));
            columns.col(k) = pts.back().to<Eigen::Vector3d>();
        }
        const Eigen::Vector3d mean = columns.rowwise().mean();
        const Eigen::JacobiSVD<Eigen::Matrix3Xd> svd(columns.colwise() - mean, Eigen::ComputeFullU);
        const Eigen::Vector3d variances = svd.singularValues().cwiseAbs2() / count;
        // An axis may turn by the off-diagonal tolerance and rounding over the gap to the next one.
        const auto expectAxis = [&](const UVector3& axis, int column, double gap) {
            const double bound = (1e-8 + 1e-13 * variances[0]) / gap;
            EXPECT_LE((axis % Vector3(svd.matrixU().col(column))).length(), bound);
        };
        Vector3 center;
        UVector3 normal, direction;
        ASSERT_TRUE(bestFitPlane(pts, &center, &normal));
        ASSERT_TRUE(bestFitLine(pts.data(), pts.size(), nullptr, &direction));
        EXPECT_LE(dist(center, Vector3(mean)), 1e-13 * size);
        expectAxis(normal, 2, variances[1] - variances[2]);
        expectAxis(direction, 0, variances[0] - variances[1]);
    }
}

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
