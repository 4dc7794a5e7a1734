#include "geomKit/queries/ProximityTester.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "geomKit/internal/isFinite.h"

namespace geomKit {

namespace {

using detail::isFinite;

/// Cells are doubled while the grid inside its border has at least this many.
constexpr double kMaxInnerCells = 10000.0;
/// A grid stays below this with its borders. It binds only for flat sets.
constexpr double kMaxCells = 0x1p24;

void _extend(double v, double& least, double& greatest) {
    if (v < least) least = v;
    if (v > greatest) greatest = v;
}

}  // namespace

ProximityTester::ProximityTester(std::vector<Vector3> const& pts, double radius) {
    if (pts.empty() || !(radius > 0.0)) return;

    // Projections, not coordinates: a NaN in one coordinate keeps its point out of all extents.
    Vector3 least(pts[0] * axisX, pts[0] * axisY, pts[0] * axisZ);
    Vector3 greatest = least;
    for (const Vector3& p : pts) {
        _extend(p * axisX, least.x, greatest.x);
        _extend(p * axisY, least.y, greatest.y);
        _extend(p * axisZ, least.z, greatest.z);
    }
    if (!iLayOut(least, greatest, radius)) {
        iSetEndless();
        return;
    }

    std::vector<std::ptrdiff_t> marked;
    for (const Vector3& p : pts) {
        const std::ptrdiff_t cell = iCell(p);
        if (cell == kOutside) return;
        auto flag = occupied[static_cast<std::size_t>(cell)];
        if (!flag) marked.push_back(cell);
        flag = true;
    }
    for (const std::ptrdiff_t cell : marked)
        iDilate(cell);
}

void ProximityTester::iSetEndless() {
    origin = Vector3();
    cellX = cellY = cellZ = std::numeric_limits<double>::infinity();
    nx = ny = nz = 1;
    occupied.assign(1, true);
}

bool ProximityTester::iLayOut(const Vector3& least, const Vector3& greatest, double radius) {
    const Vector3 extent = greatest - least;
    if (!isFinite(extent)) return false;
    cellX = cellY = cellZ = radius;
    double x;
    double y;
    double z;
    for (;;) {
        x = std::ceil(extent.x / cellX);
        y = std::ceil(extent.y / cellY);
        z = std::ceil(extent.z / cellZ);
        // 0 times infinity is NaN, which only the second test catches.
        const bool tooMany =
            x * y * z >= kMaxInnerCells || !((x + 2.0) * (y + 2.0) * (z + 2.0) < kMaxCells);
        if (!tooMany) break;
        if (cellY > cellX && cellZ > cellX) {
            cellX *= 2.0;
        } else if (cellZ <= cellY) {
            cellZ *= 2.0;
        } else {
            cellY *= 2.0;
        }
    }
    origin = least - Vector3(cellX, cellY, cellZ);
    // As far out as queries may be near.
    if (!isFinite(greatest + Vector3(cellX, cellY, cellZ) - origin)) return false;
    nx = static_cast<std::int32_t>(x) + 2;
    ny = static_cast<std::int32_t>(y) + 2;
    nz = static_cast<std::int32_t>(z) + 2;
    occupied.assign(
        static_cast<std::size_t>(nx) * static_cast<std::size_t>(ny) * static_cast<std::size_t>(nz),
        false);
    return true;
}

void ProximityTester::iDilate(std::ptrdiff_t cell) {
    const std::ptrdiff_t i = cell % nx;
    const std::ptrdiff_t j = cell / nx % ny;
    const std::ptrdiff_t k = cell / nx / ny;
    for (std::ptrdiff_t kk = std::max<std::ptrdiff_t>(k - 1, 0); kk <= k + 1 && kk < nz; ++kk) {
        for (std::ptrdiff_t jj = std::max<std::ptrdiff_t>(j - 1, 0); jj <= j + 1 && jj < ny; ++jj) {
            const std::ptrdiff_t row = (jj + kk * ny) * nx;
            for (std::ptrdiff_t ii = std::max<std::ptrdiff_t>(i - 1, 0); ii <= i + 1 && ii < nx;
                 ++ii) {
                occupied[static_cast<std::size_t>(row + ii)] = true;
            }
        }
    }
}

}  // namespace geomKit
