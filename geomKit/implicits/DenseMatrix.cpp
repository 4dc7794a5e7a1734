#include "geomKit/implicits/DenseMatrix.h"

#include <algorithm>
#include <utility>

#include "geomKit/implicits/GaussJordan.h"

namespace geomKit::detail {

bool DenseMatrix::invert(const std::function<void(double)>& progress) {
    DenseMatrix reduced = *this;
    GaussJordan inPlace(reduced.entries_.data(), size_, size_, GaussJordan::Mode::InPlace,
                        progress);
    const GaussJordan::Outcome outcome = inPlace.run();

    if (outcome == GaussJordan::Outcome::Complete) {
        // Position k holds the column of the inverse that belongs to the row taken at step k.
        std::vector<std::size_t> column(size_);
        for (std::size_t k = 0; k < size_; ++k)
            column[k] = k;
        for (std::size_t k = 0; k < size_; ++k)
            std::swap(column[k], column[inPlace.pivotRows()[k]]);
        for (std::size_t r = 0; r < size_; ++r) {
            for (std::size_t k = 0; k < size_; ++k)
                row(r)[column[k]] = reduced.row(r)[k];
        }
        return true;
    }

    if (outcome == GaussJordan::Outcome::ZeroPivot) {
        GaussJordan(entries_.data(), size_, size_, GaussJordan::Mode::KeepColumns, progress).run();
        return false;
    }

    const std::size_t width = 2 * size_;
    std::vector<double> both(size_ * width, 0.0);
    for (std::size_t r = 0; r < size_; ++r) {
        std::copy_n(row(r), size_, &both[r * width]);
        both[r * width + size_ + r] = 1.0;
    }
    GaussJordan beside(both.data(), size_, width, GaussJordan::Mode::KeepColumns, progress);
    const bool inverted = beside.run() == GaussJordan::Outcome::Complete;
    for (std::size_t r = 0; r < size_; ++r)
        std::copy_n(&both[r * width + (inverted ? size_ : 0)], size_, row(r));
    return inverted;
}

std::vector<double> DenseMatrix::operator*(const std::vector<double>& b) const {
    std::vector<double> product(size_);
    for (std::size_t r = 0; r < size_; ++r) {
        double sum = 0.0;
        for (std::size_t c = 0; c < size_; ++c)
            sum += row(r)[c] * b[c];
        product[r] = sum;
    }
    return product;
}

}  // namespace geomKit::detail
