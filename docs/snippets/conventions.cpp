// The examples of docs/conventions.md.
#include <array>
#include <cmath>
#include <string>

#include "geomKit/geomKit.h"

using namespace geomKit;

namespace {

bool near(const Vector3& a, const Vector3& b) {
    return dist(a, b) <= 1e-12;
}

bool products() {
    const Vector3 a(1, 2, 3);
    const Vector3 b(4, 5, 6);
    const double dot = a * b;        // 32
    const Vector3 cross = a % b;     // (-3, 6, -3), right-handed
    const Vector3 scaled = 2.0 * a;  // (2, 4, 6)
    return dot == 32.0 && near(cross, {-3, 6, -3}) && near(scaled, {2, 4, 6});
}

bool matrices() {
    const double quarter = 1.5707963267948966;  // radians
    const Matrix3 turn = Matrix3::rotationMatrix(Vector3(0, 0, 1), quarter);
    const Vector3 image = turn * Vector3(1, 0, 0);  // (0, 1, 0): counter-clockwise about z
    const Vector3 firstColumn = turn.column(0);     // the same: columns are images of the axes

    const Matrix3 tilt = Matrix3::rotationMatrix(Vector3(1, 0, 0), quarter);
    const Vector3 both = (tilt * turn) * Vector3(1, 0, 0);  // turns first, then tilts: (0, 0, 1)
    return near(image, {0, 1, 0}) && near(firstColumn, image) && near(both, {0, 0, 1});
}

bool conversions() {
    const std::array<float, 3> vertex = {1.0F, 2.0F, 3.0F};
    const Vector3 inside(vertex);
    const auto outside = (2.0 * inside).to<std::array<float, 3>>();  // {2, 4, 6}
    return outside == std::array<float, 3>{2.0F, 4.0F, 6.0F};
}

bool degenerate() {
    const UVector3 direction(0, 0, 0);                    // (0, 0, 1)
    const Matrix3 flat({1, 0, 0}, {0, 1, 0}, {0, 0, 0});  // singular
    const bool inverted = !flat.inverse().isNearZero();   // false: the answer is the zero matrix
    const bool parallel = Vector3().isParallel({1, 0, 0}, -1.0);  // false: null is never parallel
    return near(direction, {0, 0, 1}) && !inverted && !parallel;
}

bool trouble() {
    std::string told;
    const auto tell = [&told](const std::string& text) { told = text; };
    const Implicit field({{{0, 0, 0}, 1}, {{1, 0, 0}, 2}, {{0, 0, 0}, 3}});
    const ImplicitCheck check = field.check();
    if (!check) tell(check.text());  // samples 0 and 2 have the same centre
    return told == "samples 0 and 2 have the same centre";
}

}  // namespace

int main() {
    return products() && matrices() && conversions() && degenerate() && trouble() ? 0 : 1;
}
