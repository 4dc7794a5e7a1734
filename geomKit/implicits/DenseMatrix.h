/// @file
/// A square matrix of any size with its inversion. Internal to `Implicit`: not installed.
#pragma once

#include <cstddef>
#include <functional>
#include <new>
#include <vector>

namespace geomKit::detail {

/// Size x size doubles, row by row.
class DenseMatrix {
public:
    /// All zero.
    explicit DenseMatrix(std::size_t size) : size_(size), entries_(iEntryCount(size), 0.0) {}

    std::size_t size() const { return size_; }
    double* row(std::size_t r) { return entries_.data() + r * size_; }
    const double* row(std::size_t r) const { return entries_.data() + r * size_; }

    /// Replaces the matrix A by its inverse by Gauss-Jordan elimination with partial pivoting and
    /// returns true. Beside A, the inverse R in the making starts as the identity; then, for each
    /// column k in order:
    ///  1. the pivot is the entry of column k, from row k downward, of largest absolute value: the
    ///     first of equal ones; NaN only when the entry in row k itself is NaN;
    ///  2. a pivot of exactly 0 ends it: false, and the matrix keeps A as reduced so far;
    ///  3. the pivot's row changes places with row k, in A and in R;
    ///  4. row k of A and of R is multiplied by s = 1 / A[k][k];
    ///  5. every other row i with f = -A[i][k] != 0 becomes (row k) * f + (row i), in A and in R.
    ///
    /// Each entry goes through these operations in this order, whatever order the entries are
    /// visited in: the result has the bits of the plain triple loop, but for the signs of zeros of
    /// an inverse. Infinities and NaN pass through by IEEE arithmetic.
    ///
    /// Source: Golub and Van Loan, Matrix Computations, section 3.4; the delayed updates are those
    /// of blocked elimination, section 3.2.
    ///
    /// `progress` may be empty. It hears of the share that is done, and from 0 again where zeros or
    /// numbers that are not finite ask for a second pass.
    bool invert(const std::function<void(double)>& progress);

    /// The product with the vector `b` of size() entries, each sum from 0 in column order.
    std::vector<double> operator*(const std::vector<double>& b) const;

private:
    /// A vector would report a size beyond its own limit by another exception, and the product may
    /// overflow.
    static std::size_t iEntryCount(std::size_t size) {
        constexpr std::size_t kMaxSize = std::size_t{1} << (4 * sizeof(std::size_t) - 4);
        if (size > kMaxSize) throw std::bad_alloc();
        return size * size;
    }

    std::size_t size_;
    std::vector<double> entries_;
};

}  // namespace geomKit::detail
