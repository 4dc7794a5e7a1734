#include "geomKit/implicits/RadialSums.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "geomKit/internal/wideCall.h"

namespace geomKit::detail {

namespace {

/// Terms computed side by side before they are added one after the other.
constexpr std::size_t kBlock = 16;

using Block = std::array<double, kBlock>;
using LaneArray = std::array<double, kLanes>;

/// The documented order of the squared distance differs between value and gradient.
GEOMKIT_INLINE_KERNEL double _cubicTerm(double dx, double dy, double dz, double w) {
    const double s = dz * dz + (dx * dx + dy * dy);
    return (s * std::sqrt(s)) * w;
}

GEOMKIT_INLINE_KERNEL double _threeDistances(double dx, double dy, double dz) {
    return 3.0 * std::sqrt(dz * dz + dx * dx + dy * dy);
}

/// The first `count` terms from `c` and `w` on. A constant count compiles to straight vector code.
GEOMKIT_INLINE_KERNEL double _addBlock(const Vector3* c, const double* w, std::size_t count,
                                       const Vector3& p, double sum) {
    Block terms;
    for (std::size_t i = 0; i < count; ++i)
        terms[i] = _cubicTerm(p.x - c[i].x, p.y - c[i].y, p.z - c[i].z, w[i]);
    for (std::size_t i = 0; i < count; ++i)
        sum = terms[i] + sum;
    return sum;
}

GEOMKIT_INLINE_KERNEL void _addGradientBlock(const Vector3* c, const double* w, std::size_t count,
                                             const Vector3& p, Vector3& sum) {
    Block x;
    Block y;
    Block z;
    for (std::size_t i = 0; i < count; ++i) {
        const double dx = p.x - c[i].x;
        const double dy = p.y - c[i].y;
        const double dz = p.z - c[i].z;
        const double r3 = _threeDistances(dx, dy, dz);
        x[i] = dx * r3 * w[i];
        y[i] = dy * r3 * w[i];
        z[i] = dz * r3 * w[i];
    }
    for (std::size_t i = 0; i < count; ++i)
        sum += Vector3(x[i], y[i], z[i]);
}

/// Points with their coordinates side by side.
struct Lanes {
    LaneArray x;
    LaneArray y;
    LaneArray z;
};

GEOMKIT_INLINE_KERNEL Lanes _gather(const Vector3* points) {
    Lanes lanes;
    for (std::size_t l = 0; l < kLanes; ++l) {
        lanes.x[l] = points[l].x;
        lanes.y[l] = points[l].y;
        lanes.z[l] = points[l].z;
    }
    return lanes;
}

GEOMKIT_INLINE_KERNEL double _addTermsKernel(const RadialTerms* terms, const Vector3* at,
                                             double start) {
    const Vector3 p = *at;
    double sum = start;
    const std::size_t whole = terms->count - terms->count % kBlock;
    for (std::size_t i = 0; i < whole; i += kBlock)
        sum = _addBlock(terms->centers + i, terms->weights + i, kBlock, p, sum);
    return _addBlock(terms->centers + whole, terms->weights + whole, terms->count - whole, p, sum);
}

GEOMKIT_INLINE_KERNEL Vector3 _addGradientsKernel(const RadialTerms* terms, const Vector3* at,
                                                  const Vector3* startAt) {
    const Vector3 p = *at;
    Vector3 sum = *startAt;
    const std::size_t whole = terms->count - terms->count % kBlock;
    for (std::size_t i = 0; i < whole; i += kBlock)
        _addGradientBlock(terms->centers + i, terms->weights + i, kBlock, p, sum);
    _addGradientBlock(terms->centers + whole, terms->weights + whole, terms->count - whole, p, sum);
    return sum;
}

GEOMKIT_INLINE_KERNEL void _addTermsToLanesKernel(const RadialTerms* terms, const Vector3* points,
                                                  double* sums) {
    const Lanes p = _gather(points);
    LaneArray sum;
    std::copy_n(sums, kLanes, sum.begin());
    for (std::size_t i = 0; i < terms->count; ++i) {
        const Vector3 c = terms->centers[i];
        const double w = terms->weights[i];
        for (std::size_t l = 0; l < kLanes; ++l)
            sum[l] = _cubicTerm(p.x[l] - c.x, p.y[l] - c.y, p.z[l] - c.z, w) + sum[l];
    }
    std::copy_n(sum.begin(), kLanes, sums);
}

GEOMKIT_INLINE_KERNEL void _addGradientsToLanesKernel(const RadialTerms* terms,
                                                      const Vector3* points, const Vector3* start,
                                                      Vector3* sums) {
    const Lanes p = _gather(points);
    Lanes sum;
    sum.x.fill(start->x);
    sum.y.fill(start->y);
    sum.z.fill(start->z);
    for (std::size_t i = 0; i < terms->count; ++i) {
        const Vector3 c = terms->centers[i];
        const double w = terms->weights[i];
        for (std::size_t l = 0; l < kLanes; ++l) {
            const double dx = p.x[l] - c.x;
            const double dy = p.y[l] - c.y;
            const double dz = p.z[l] - c.z;
            const double r3 = _threeDistances(dx, dy, dz);
            sum.x[l] += dx * r3 * w;
            sum.y[l] += dy * r3 * w;
            sum.z[l] += dz * r3 * w;
        }
    }
    for (std::size_t l = 0; l < kLanes; ++l)
        sums[l] = Vector3(sum.x[l], sum.y[l], sum.z[l]);
}

}  // namespace

double addTerms(const RadialTerms& terms, const Vector3& p, double start) {
    return callWide<_addTermsKernel>(&terms, &p, start);
}

Vector3 addGradients(const RadialTerms& terms, const Vector3& p, const Vector3& start) {
    return callWide<_addGradientsKernel>(&terms, &p, &start);
}

void addTermsToLanes(const RadialTerms& terms, const Vector3* points, double* sums) {
    callWide<_addTermsToLanesKernel>(&terms, points, sums);
}

void addGradientsToLanes(const RadialTerms& terms, const Vector3* points, const Vector3& start,
                         Vector3* sums) {
    callWide<_addGradientsToLanesKernel>(&terms, points, &start, sums);
}

}  // namespace geomKit::detail
