// Vectors of other libraries go in and out in one expression.
#ifdef GEOMKIT_WITH_GLM
#include <glm/gtc/quaternion.hpp>
#include <glm/vec3.hpp>
#include <glm/vec4.hpp>
#endif
#ifdef GEOMKIT_WITH_IMATH
#include <ImathQuat.h>
#include <ImathVec.h>
#endif
#include "tests/vAlgebra/ExpectNear.h"

using namespace geomKit;

namespace {

const Vector3 kA(0.1, -2.0 / 3.0, 1e-3);
const Vector3 kB(1e3, 0.7, -5.0);

/// Each component goes to its place, rounded to the element type.
template <typename Number, typename V>
void expectInAndOut() {
    Vector3 rounded = kA;
    for (double& number : rounded)
        number = static_cast<double>(static_cast<Number>(number));
    EXPECT_TRUE(Vector3(kA.to<V>()).equalsExactly(rounded)) << Vector3(kA.to<V>());
}

/// The same, and for a sum that only the other library computes.
template <typename V>
void expectInAndOutOfSums() {
    expectInAndOut<double, V>();
    EXPECT_TRUE(Vector3(kA.to<V>() + kB.to<V>()).equalsExactly(kA + kB));
}

/// Neither less nor more than three numbers, and never unasked.
template <typename... Types>
constexpr bool kNoneIsVector = !(std::is_constructible_v<Vector3, const Types&> || ...);
template <typename... Types>
constexpr bool kNoneConvertsUnasked = !(std::is_convertible_v<const Types&, Vector3> || ...);

TEST(ForeignVector, OfTheLanguage) {
    expectInAndOut<double, std::array<double, 3>>();
    expectInAndOut<float, std::array<float, 3>>();
    expectInAndOut<int, std::array<int, 3>>();
    const double numbers[3] = {1.0, 2.0, 3.0};
    EXPECT_TRUE(Vector3(numbers).equalsExactly({1.0, 2.0, 3.0}));
    struct Named {
        float z, y, x;
    };
    expectInAndOut<float, Named>();
    static_assert(kNoneConvertsUnasked<std::array<double, 3>, Named>);
    static_assert(kNoneIsVector<const double*, std::vector<double>, std::array<double, 2>,
                                std::array<double, 4>, double[4], std::string, double>);
}

TEST(ForeignVector, OfEigen) {
    expectInAndOutOfSums<Eigen::Vector3d>();
    expectInAndOutOfSums<Eigen::Array3d>();
    expectInAndOut<double, Eigen::RowVector3d>();
    expectInAndOut<float, Eigen::Vector3f>();
    static_assert(kNoneConvertsUnasked<Eigen::Vector3d>);
    static_assert(kNoneIsVector<Eigen::Vector2d, Eigen::Vector4d, Eigen::VectorXd, Eigen::Matrix3d,
                                Eigen::Quaterniond>);
}

TEST(ForeignVector, OfGlm) {
#ifdef GEOMKIT_WITH_GLM
    expectInAndOutOfSums<glm::dvec3>();
    expectInAndOut<float, glm::vec3>();
    static_assert(kNoneIsVector<glm::dvec2, glm::dvec4, glm::dquat>);
#else
    GTEST_SKIP() << "GLM was not found";
#endif
}

TEST(ForeignVector, OfImath) {
#ifdef GEOMKIT_WITH_IMATH
    expectInAndOutOfSums<Imath::V3d>();
    expectInAndOut<float, Imath::V3f>();
    static_assert(kNoneIsVector<Imath::V2d, Imath::V4d, Imath::Quatd>);
#else
    GTEST_SKIP() << "Imath was not found";
#endif
}

}  // namespace
