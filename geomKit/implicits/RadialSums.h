/// @file
/// The sums of `Implicit` over its samples. Internal: not installed.
#pragma once

#include <cstddef>

#include "geomKit/vAlgebra/Vector3.h"

namespace geomKit::detail {

/// Centres and their weights, `count` of each.
struct RadialTerms {
    const Vector3* centers;
    const double* weights;
    std::size_t count;
};

/// Points that go through the samples side by side, each with a running sum of its own.
constexpr std::size_t kLanes = 16;

/// `start` plus the cubic terms at `p`, added in order.
double addTerms(const RadialTerms& terms, const Vector3& p, double start);

/// `start` plus the gradients of the cubic terms at `p`, added in order.
Vector3 addGradients(const RadialTerms& terms, const Vector3& p, const Vector3& start);

/// `addTerms` at each of kLanes points, onto the values in `sums`.
void addTermsToLanes(const RadialTerms& terms, const Vector3* points, double* sums);

/// `addGradients` at each of kLanes points into `sums`, which may be `points`.
void addGradientsToLanes(const RadialTerms& terms, const Vector3* points, const Vector3& start,
                         Vector3* sums);

}  // namespace geomKit::detail
