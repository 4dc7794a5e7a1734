// Values for a debugger to show.
#include <initializer_list>
#include <limits>

#include "geomKit/geomKit.h"

using namespace geomKit;

namespace {

void stopHere(std::initializer_list<const void*> /*values*/) {}

}  // namespace

int main() {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const Vector3 vector(1.0, -2.5, 0.1);
    const Vector3 notNumbers(nan, 1e300, -std::numeric_limits<double>::infinity());
    const UVector3 unit(0.0, 0.0, 2.0);
    const ktNM::vect2<double> point(0.25, 3.0);
    const ktNM::vect2<int> counts(20, -1);
    const Matrix3 rotation(Vector3(1, 2, 3), Vector3(4, 5, 6), Vector3(7, 8, 9));
    const Transform transform(Matrix3(), vector, 2.0);
    const Matrix matrix(rotation, vector);
    const Matrixf matrixf(
        std::array<float, 16>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16});
    const BoneTransform bone(rotation, vector);
    const Bbox box(Vector3(0, 1, 2), Vector3(3, 4, 5));
    const Bbox thin(Vector3(0, 0, 0), Vector3(-9e-14, 0, 0));
    const Bbox crossed(Vector3(0, 0, 0), Vector3(-2e-13, 0, 0));
    const MeshFunction2D mesh({{0, 0}, {1, 0}, {0, 1}}, {{5, 0}, {6, 0}, {5, 1}}, {0, 1, 2},
                              {0.5F});
    stopHere({&vector, &notNumbers, &unit, &point, &counts, &rotation, &transform, &matrix,
              &matrixf, &bone, &box, &thin, &crossed, &mesh});
}
