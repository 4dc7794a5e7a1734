/// @file
/// `Implicit`, a scalar field through given values at given points.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "geomKit/export.h"
#include "geomKit/vAlgebra/Vector3.h"

/// The radial-basis interpolant with the cubic kernel and a linear polynomial,
///
///     f(p) = offset + linear . p + sum of weights[i] |p - centers[i]|^3,
///
/// whose weights sum to 0 and have no first moment. At each sample it takes the sample's value, and
/// of all fields that do so it is the smoothest in the sense of the kernel. The surface f = 0
/// through samples of value 0 is the usual purpose; samples of other values on either side of it
/// give it an inside.
///
/// **Ill-posed samples** (fewer than four, all in one plane, one given twice) have no such field.
/// Construction still completes, but the field is meaningless: either the fit met a zero pivot and
/// its coefficients come from the partly reduced matrix, or rounding hid the zero. Ask
/// `metZeroPivot` and `maxResidual` before relying on samples from outside. Both pass samples that
/// lie in a slanted plane to rounding: there the field fits them and is arbitrary beside the plane.
/// No samples at all give the field 0.
///
/// The fit costs (n + 4)^3 multiply-adds and two matrices of (n + 4)^2 doubles for n samples; it
/// throws std::bad_alloc when these do not fit in memory. Its matrix holds cubed distances beside
/// ones and coordinates: scale and centre the samples to about unit size for the best accuracy.
/// Distances above about 1e102 overflow when cubed. Samples that are not finite, or overflow, give
/// coefficients that are mostly NaN.
///
/// Nothing changes after construction, so any number of threads may evaluate one object. The fields
/// are public to be read and saved. Should a host edit them, centres without a weight, and weights
/// without a centre, count for nothing.
///
/// Source: Duchon, Splines minimizing rotation-invariant semi-norms in Sobolev spaces, 1977;
/// Carr et al., Reconstruction and representation of 3D objects with radial basis functions, 2001.
class Implicit {
public:
    std::vector<Vector3> centers;  ///< The sample points, in the order given.
    std::vector<double> weights;   ///< One weight a sample.
    double offset = 0.0;           ///< Constant term of the polynomial.
    Vector3 linear;                ///< Its coefficients of x, y and z.

    /// Fits the field to (point, value) pairs.
    GEOMKIT_API explicit Implicit(const std::vector<std::pair<Vector3, double>>& samples);

    /// The field at `p`: the polynomial, then one term a sample, added in order.
    GEOMKIT_API double evaluate(const Vector3& p) const;

    /// The gradient at `p`: linear + sum of weights[i] 3 |p - centers[i]| (p - centers[i]), added
    /// in order. A sample's own term vanishes there, so the gradient is defined everywhere.
    GEOMKIT_API Vector3 getGradient(const Vector3& p) const;

    /// `evaluate` of each of `count` points into values[0 .. count-1], with the same bits. Several
    /// points at a time go through vector registers. Allocates nothing; threads may share the
    /// object and take a range of points each.
    GEOMKIT_API void evaluate(const Vector3* points, double* values, std::size_t count) const;

    /// `getGradient` of each of `count` points, likewise. `gradients` may be `points`.
    GEOMKIT_API void getGradient(const Vector3* points, Vector3* gradients,
                                 std::size_t count) const;

    /// True when the fit ended at a pivot of exactly 0: the samples were ill-posed and the field
    /// means nothing. False proves little, since rounding hides zeros: see `maxResidual`.
    bool metZeroPivot() const { return metZeroPivot_; }

    /// The largest |evaluate(point) - value| over (point, value) pairs; NaN if any of these is NaN,
    /// 0 for no pairs. Over the samples of the fit, a result that is not small beside the values
    /// condemns the field. Costs as much as evaluating it at every sample.
    GEOMKIT_API double maxResidual(const std::vector<std::pair<Vector3, double>>& samples) const;

private:
    bool metZeroPivot_ = false;
};
