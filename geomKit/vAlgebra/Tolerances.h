/// @file
/// The absolute tolerances that several classes share; one of a single class stands with that
/// class. None is scaled to the data: a model measured in units in which 1e-8 is a visible length
/// should be rescaled by its owner before it is passed in.
#pragma once

namespace geomKit {

/// A component counts as zero when its absolute value is strictly below this. Also the margin of
/// the segment end tests, the smallest usable discriminant, the smallest determinant that
/// `Matrix::inverse` divides by and the slack of box validity.
inline constexpr double kNullComponentTol = 1e-13;

/// Two vectors are equal when the squared length of their difference is strictly below this, so
/// when they are less than 1e-8 apart.
inline constexpr double kEqualDistSqTol = 1e-16;

/// Default squared cosine of `Vector3::isParallel`: 0.03 degrees.
inline constexpr double kParallelCosSqDefault = 0.9999997258;

/// Default cosine bound of `Vector3::isNormal`: 0.03 degrees in radians.
inline constexpr double kNormalCosDefault = 0.000523599;

/// Cosine of 5 degrees: the bound of `Vector3::isAlmostParallel`.
inline constexpr double kAlmostParallelCos = 0.996194698;

/// Sine of 5 degrees: the bound of `Vector3::isAlmostNormal`.
inline constexpr double kAlmostNormalCos = 0.08715574275;

/// Bound on the 2x2 Gram determinant in `Vector3::pullBack`; below it the basis is dependent.
inline constexpr double kGram2DetTol = 1e-8;

/// Smallest squared length of a basis vector that `Vector3::pullBack` falls back to.
inline constexpr double kGram2DiagTol = 1e-16;

/// Determinants and matrix entries strictly below this in absolute value count as zero.
inline constexpr double kDetTol = 1e-8;

/// Squared lengths of cross products below this mean parallel vectors: lengths below 1e-8.
inline constexpr double kCrossSqTol = 1e-16;

/// Smallest diagonal entry of a rotation that counts as near the identity: cosine of 0.03 degrees.
inline constexpr double kNearIdentityCos = 0.999999863;

}  // namespace geomKit
