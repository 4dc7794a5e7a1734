#include "examples/meshFunction/BezierPatch.h"

using namespace geomKit;

namespace demo {
namespace {

using Weights = std::array<double, 4>;

/// The cubic Bernstein polynomials and their first and second derivatives.
struct Bernstein {
    explicit Bernstein(double t)
        : value{(1 - t) * (1 - t) * (1 - t), 3 * t * (1 - t) * (1 - t), 3 * t * t * (1 - t),
                t * t * t},
          first{-3 * (1 - t) * (1 - t), 3 * (1 - t) * (1 - 3 * t), 3 * t * (2 - 3 * t), 3 * t * t},
          second{6 * (1 - t), 6 * (3 * t - 2), 6 * (1 - 3 * t), 6 * t} {}

    Weights value;
    Weights first;
    Weights second;
};

}  // namespace

SurfacePoint BezierPatch::at(double u, double v) const {
    const Bernstein bu(u);
    const Bernstein bv(v);
    const auto sum = [this](const Weights& alongRow, const Weights& acrossRows) {
        Vector3 total;
        for (std::size_t r = 0; r < 4; ++r) {
            for (std::size_t c = 0; c < 4; ++c) {
                total += control[4 * r + c] * (acrossRows[r] * alongRow[c]);
            }
        }
        return total;
    };
    return {sum(bu.value, bv.value),
            {sum(bu.first, bv.value), sum(bu.value, bv.first)},
            {sum(bu.second, bv.value), sum(bu.first, bv.first), sum(bu.value, bv.second)}};
}

}  // namespace demo
