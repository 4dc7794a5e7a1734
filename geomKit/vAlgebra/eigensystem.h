/// @file
/// Eigenvalues and eigenvectors of a symmetric 3x3 matrix by the classical Jacobi method: each step
/// rotates away the largest off-diagonal entry (Golub and Van Loan, Matrix Computations, section
/// 8.5). Pure functions that allocate nothing.
#pragma once

#include "geomKit/export.h"
#include "geomKit/vAlgebra/Matrix3.h"

namespace geomKit {

/// Chooses the pivot (p, q), p > q, of the symmetric matrix `S` and the rotation that annihilates
/// it: cosine `c`, sine `s`, tangent `t` and `tau` = s / (1 + c).
///
/// The pivot is the entry of the strictly lower triangle of largest absolute value, scanned in the
/// order (1,0), (2,0), (2,1); of equal ones the later wins. NaN is never chosen, and p and q start
/// at (2, 1). Equal diagonal entries turn by -45 degrees (t = -1). Returns false, with only `p` and
/// `q` written, when nothing is left to rotate: the diagonal entries differ by less than 1e-13 and
/// twice the pivot is below 1e-13 in absolute value.
GEOMKIT_API bool jacobiRotation(const Matrix3& S, int& p, int& q, double& c, double& s, double& t,
                                double& tau) noexcept;

/// Eigenvalues, ascending, of the symmetric part (A + A^T) / 2 and the unit eigenvectors in the
/// same order; the sign of a vector is whatever the rotations give. Each output may be null, else
/// it holds three.
///
/// Iterates until the off-diagonal entries sum to at most 1e-8 (absolute), which bounds the error
/// of the eigenvalues and of A v - lambda v. Returns false when 51 rotations did not suffice, as
/// for equal diagonal entries of 1e200 beside entries of 0.5, 1 and 2, which then only turn by 45
/// degrees; the state reached is written all the same. A NaN off the diagonal ends the iteration
/// early with true and may leave eigenvalues that look fine: test the input where it may hold NaN.
GEOMKIT_API bool jacobiMethod(const Matrix3& A, double* eigs, UVector3* vecs) noexcept;

}  // namespace geomKit
