/// @file
/// Gauss-Jordan elimination with delayed updates. Internal to `DenseMatrix`: not installed.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <vector>

namespace geomKit::detail {

/// Reduces the leading square block of a row-major matrix to the identity, by the steps that
/// `DenseMatrix::invert` documents, and applies the same row operations to the columns beside it.
///
/// A plain triple loop touches the whole matrix once a pivot and waits for memory. Here a panel of
/// pivots is eliminated within its own few columns first; every other column is then visited once
/// a panel and catches up on the panel's pivots, one after the other, while it lies in the cache.
class GaussJordan {
public:
    /// Pivots of a panel.
    static constexpr std::size_t kPanel = 32;

    enum class Mode {
        /// Every column receives every operation.
        KeepColumns,
        /// Column k, once reduced, is known: a one among zeros. The column of the inverse that
        /// changes at that step is kept in its place, which halves the work. Stops at numbers that
        /// are not finite, because zeros that are left out could have become NaN.
        InPlace
    };
    enum class Outcome { Complete, ZeroPivot, NotFinite };
    /// Hears the share of the work that is done, before each panel and each strip of columns.
    using Progress = std::function<void(double)>;

    /// `entries` holds `size` rows of `width` >= `size` entries. `progress` may be empty; what it
    /// throws leaves the entries partly reduced.
    GaussJordan(double* entries, std::size_t size, std::size_t width, Mode mode,
                const Progress& progress);

    Outcome run();

    /// The row that the elimination took at each step, as numbered at that step.
    const std::vector<std::size_t>& pivotRows() const { return pivotRows_; }

private:
    double* iRow(std::size_t i) { return entries_ + i * width_; }
    double* iPanelRow(std::size_t i) { return panel_.data() + i * kPanel; }
    double* iFactorRow(std::size_t i) { return factors_.data() + i * kPanel; }

    void iTell(std::size_t first, std::size_t c) const;
    Outcome iReducePanel(std::size_t first, std::size_t last);
    Outcome iStep(std::size_t k, std::size_t j, std::size_t panelWidth);
    std::size_t iFindPivot(std::size_t k, std::size_t j);
    bool iIsColumnFinite(std::size_t j);
    void iCatchUp(std::size_t first, std::size_t begin, std::size_t end);
    void iCatchUpStrip(std::size_t first, std::size_t begin, std::size_t columns);

    double* entries_;
    std::size_t size_;
    std::size_t width_;
    Mode mode_;
    const Progress& progress_;
    std::vector<std::size_t> pivotRows_;
    std::vector<double> panel_;    ///< the panel's columns, packed
    std::vector<double> factors_;  ///< f of each row and pivot of the panel; 0 where nothing is due
    std::array<double, kPanel> scales_{};
    std::size_t steps_ = 0;  ///< pivots of the panel that have been eliminated
};

}  // namespace geomKit::detail
