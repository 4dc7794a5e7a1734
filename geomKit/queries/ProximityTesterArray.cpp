// `ProximityTester::test` of many points.
#include <algorithm>
#include <cstring>

#include "geomKit/internal/vector3x4.h"
#include "geomKit/internal/wideCall.h"
#include "geomKit/queries/ProximityTester.h"

namespace geomKit {

namespace {

#if defined(GEOMKIT_HAS_VECTOR3X4)

using detail::Quad;
using detail::Vector3x4;
using Truth = decltype(Quad() < Quad());
using Indices = std::int32_t __attribute__((vector_size(4 * sizeof(std::int32_t))));

/// A product with the reciprocal of the cell size differs from the quotient by at most 2^-51 of
/// itself, and a grid has at most 2^24 cells along an axis. So a product that is farther than this
/// from every whole number has the same whole part as the quotient.
constexpr double kSure = 0x1p-26;
/// Added to a number below 2^51, it leaves no place for a fraction: the sum is rounded to whole.
constexpr double kWhole = 0x1.8p52;

/// Along one axis, for four points: the cell, and whether it is sure.
struct Places {
    Quad cell;
    Truth isSure;
    Truth isOutside;

    GEOMKIT_ALWAYS_INLINE Places(const Quad& product, double cells) {
        const Quad nearest = (product + kWhole) - kWhole;
        const Quad beyond = product - nearest;
        cell = beyond < 0.0 ? nearest - 1.0 : nearest;
        isOutside = (product < -0.5) | (product > cells + 0.5);
        isSure = (beyond < -kSure) | (beyond > kSure) | isOutside;
        isOutside |= (cell < 0.0) | (cell >= cells);
    }
};

/// Some points on their way.
struct Batch {
    static constexpr std::size_t kSize = 64;

    std::int32_t cell[kSize];      ///< 0 for points that are not in the grid
    std::int32_t isInside[kSize];  ///< -1 or 0
    std::int32_t isSure[kSize];    ///< -1 or 0
};

/// The cells of `count` points, a multiple of four.
GEOMKIT_INLINE_KERNEL void _findCells(const ProximityTester* tester, const Vector3* points,
                                      std::size_t count, Batch* batch) {
    const ProximityTester& t = *tester;
    const Vector3x4 origin = Vector3x4::all(t.origin);
    const double perX = 1.0 / t.cellX;
    const double perY = 1.0 / t.cellY;
    const double perZ = 1.0 / t.cellZ;
    const double nx = t.nx;
    const double ny = t.ny;
    const double nz = t.nz;
    for (std::size_t i = 0; i < count; i += 4) {
        const Vector3* p = points + i;
        const Vector3x4 offset = Vector3x4::of(p[0], p[1], p[2], p[3]) - origin;
        const Places x(offset.x * perX, nx);
        const Places y(offset.y * perY, ny);
        const Places z(offset.z * perZ, nz);
        const Truth isSure = x.isSure & y.isSure & z.isSure;
        const Truth isInside = isSure & ~(x.isOutside | y.isOutside | z.isOutside);
        const Quad cell = isInside ? x.cell + (y.cell + z.cell * ny) * nx : Quad{};
        const Indices index = __builtin_convertvector(cell, Indices);
        const Indices inside = __builtin_convertvector(isInside, Indices);
        const Indices sure = __builtin_convertvector(isSure, Indices);
        std::memcpy(batch->cell + i, &index, sizeof index);
        std::memcpy(batch->isInside + i, &inside, sizeof inside);
        std::memcpy(batch->isSure + i, &sure, sizeof sure);
    }
}

/// Whether there is a flag for every cell, as long as no host has edited the fields, and the
/// reciprocals of the cell sizes are as exact as others.
bool _isOrdinary(const ProximityTester& t) {
    const auto isOrdinary = [](double cellSize) {
        return cellSize > 0x1p-1000 && cellSize < 0x1p1000;
    };
    const double cells = 1.0 * t.nx * t.ny * t.nz;
    return t.nx > 0 && t.ny > 0 && t.nz > 0 && cells <= static_cast<double>(t.occupied.size()) &&
           isOrdinary(t.cellX) && isOrdinary(t.cellY) && isOrdinary(t.cellZ);
}

#endif

}  // namespace

std::size_t ProximityTester::test(const Vector3* points, std::size_t count,
                                  bool* answers) const noexcept {
    std::size_t found = 0;
    std::size_t i = 0;
#if defined(GEOMKIT_HAS_VECTOR3X4)
    Batch batch;
    std::size_t left = _isOrdinary(*this) ? count / 4 * 4 : 0;
    while (left > 0) {
        const std::size_t size = (std::min)(Batch::kSize, left);
        detail::callWide<_findCells>(this, points + i, size, &batch);
        for (std::size_t k = 0; k < size; ++k) {
            // Without a branch: which points are near cannot be predicted.
            const auto cell = static_cast<std::size_t>(batch.cell[k]);
            int answer = static_cast<int>(occupied[cell]) & batch.isInside[k];
            if (batch.isSure[k] == 0) answer = test(points[i + k]) ? 1 : 0;
            found += static_cast<std::size_t>(answer);
            if (answers != nullptr) answers[i + k] = answer != 0;
        }
        i += size;
        left -= size;
    }
#endif
    for (; i < count; ++i) {
        const bool answer = test(points[i]);
        found += answer ? 1 : 0;
        if (answers != nullptr) answers[i] = answer;
    }
    return found;
}

}  // namespace geomKit
