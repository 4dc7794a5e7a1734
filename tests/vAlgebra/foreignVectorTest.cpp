// Vectors of other libraries go in and out in one expression.
#ifdef GEOMKIT_WITH_GLM
#include <glm/gtc/quaternion.hpp>
#endif
#ifdef GEOMKIT_WITH_IMATH
#include <ImathQuat.h>
#include <ImathVec.h>
#endif
#include "tests/vAlgebra/distance.h"

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

/// The same in both precisions, and a sum that only the other library computes.
template <typename V, typename OfFloats>
void expectLibrary() {
    expectInAndOut<double, V>();
    expectInAndOut<float, OfFloats>();
    EXPECT_TRUE(Vector3(kA.to<V>() + kB.to<V>()).equalsExactly(kA + kB));
    static_assert(!std::is_convertible_v<V, Vector3>, "never unasked");
}

template <typename... Types>
constexpr bool kNoneIsVector = !(std::is_constructible_v<Vector3, const Types&> || ...);

TEST(ForeignVector, OfTheLanguage) {
    expectInAndOut<double, std::array<double, 3>>();
    expectInAndOut<int, std::array<int, 3>>();
    const double numbers[3] = {1.0, 2.0, 3.0};
    EXPECT_TRUE(Vector3(numbers).equalsExactly({1.0, 2.0, 3.0}));
    struct Named {
        float z, y, x;
    };
    expectInAndOut<float, Named>();
    static_assert(kNoneIsVector<const double*, std::vector<double>, std::array<double, 2>,
                                std::array<double, 4>, double[4], std::string, double>);
}

TEST(ForeignVector, OfEigen) {
    expectLibrary<Eigen::Vector3d, Eigen::Array3f>();
    static_assert(kNoneIsVector<Eigen::Vector2d, Eigen::Vector4d, Eigen::VectorXd, Eigen::Matrix3d,
                                Eigen::Quaterniond>);
}

#ifdef GEOMKIT_WITH_GLM
TEST(ForeignVector, OfGlm) {
    expectLibrary<glm::dvec3, glm::vec3>();
    static_assert(kNoneIsVector<glm::dvec2, glm::dvec4, glm::dquat>);
}
#endif

#ifdef GEOMKIT_WITH_IMATH
TEST(ForeignVector, OfImath) {
    expectLibrary<Imath::V3d, Imath::V3f>();
    static_assert(kNoneIsVector<Imath::V2d, Imath::V4d, Imath::Quatd>);
}
#endif

}  // namespace
