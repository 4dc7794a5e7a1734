#include "geomKit/implicits/GaussJordan.h"

#include <algorithm>
#include <cmath>

#include "geomKit/internal/wideCall.h"

namespace geomKit::detail {

namespace {

constexpr std::size_t kPanel = GaussJordan::kPanel;

/// Columns that catch up together: those of a panel's pivot rows are 16 KiB.
constexpr std::size_t kStrip = 64;

GEOMKIT_INLINE_KERNEL void _scaleRow(double* row, std::size_t columns, double s) {
    for (std::size_t c = 0; c < columns; ++c)
        row[c] *= s;
}

GEOMKIT_INLINE_KERNEL void _addRow(double* __restrict target, const double* row, double f,
                                   std::size_t columns) {
    for (std::size_t c = 0; c < columns; ++c)
        target[c] = row[c] * f + target[c];
}

/// Eight `_addRow` in turn with the target held in a register.
GEOMKIT_INLINE_KERNEL void _addEightRows(double* __restrict target, const double* const* rows,
                                         const double* f, std::size_t columns) {
    const double* const r0 = rows[0];
    const double* const r1 = rows[1];
    const double* const r2 = rows[2];
    const double* const r3 = rows[3];
    const double* const r4 = rows[4];
    const double* const r5 = rows[5];
    const double* const r6 = rows[6];
    const double* const r7 = rows[7];
    for (std::size_t c = 0; c < columns; ++c) {
        double t = r0[c] * f[0] + target[c];
        t = r1[c] * f[1] + t;
        t = r2[c] * f[2] + t;
        t = r3[c] * f[3] + t;
        t = r4[c] * f[4] + t;
        t = r5[c] * f[5] + t;
        t = r6[c] * f[6] + t;
        target[c] = r7[c] * f[7] + t;
    }
}

/// Adds to `target` the pivot rows from `begin` to `end`, in order, each times its factor. A factor
/// of 0 adds nothing: not even a zero, which could turn -0 into 0 or meet an infinity.
GEOMKIT_INLINE_KERNEL void _addRows(double* target, std::size_t columns, const double* rows,
                                    const double* factors, std::size_t begin, std::size_t end) {
    std::array<const double*, kPanel> due;
    std::array<double, kPanel> f;
    std::size_t count = 0;
    for (std::size_t j = begin; j < end; ++j) {
        due[count] = rows + j * kStrip;
        f[count] = factors[j];
        count += factors[j] != 0.0 ? 1 : 0;
    }
    std::size_t done = 0;
    for (; done + 8 <= count; done += 8)
        _addEightRows(target, &due[done], &f[done], columns);
    for (; done < count; ++done)
        _addRow(target, due[done], f[done], columns);
}

}  // namespace

GaussJordan::GaussJordan(double* entries, std::size_t size, std::size_t width, Mode mode,
                         const Progress& progress)
    : entries_(entries),
      size_(size),
      width_(width),
      mode_(mode),
      progress_(progress),
      panel_(size * kPanel),
      factors_(size * kPanel) {
    pivotRows_.reserve(size);
}

GaussJordan::Outcome GaussJordan::run() {
    for (std::size_t first = 0; first < size_; first += kPanel) {
        const std::size_t last = (std::min)(first + kPanel, size_);
        iTell(first, 0);
        const Outcome outcome = iReducePanel(first, last);
        if (outcome != Outcome::Complete && mode_ == Mode::InPlace) return outcome;
        iCatchUp(first, 0, first);
        iCatchUp(first, last, width_);
        if (outcome != Outcome::Complete) return outcome;
    }
    return Outcome::Complete;
}

/// Tells that the panel from row `first` on has reached column c.
void GaussJordan::iTell(std::size_t first, std::size_t c) const {
    if (!progress_) return;
    const std::size_t panels = (size_ + kPanel - 1) / kPanel;
    const std::size_t done = first / kPanel;
    const double ofPanel = static_cast<double>(c) / static_cast<double>(width_);
    progress_((static_cast<double>(done) + ofPanel) / static_cast<double>(panels));
}

GaussJordan::Outcome GaussJordan::iReducePanel(std::size_t first, std::size_t last) {
    const std::size_t panelWidth = last - first;
    for (std::size_t i = 0; i < size_; ++i)
        std::copy_n(iRow(i) + first, panelWidth, iPanelRow(i));

    Outcome outcome = Outcome::Complete;
    for (steps_ = 0; steps_ < panelWidth; ++steps_) {
        outcome = iStep(first + steps_, steps_, panelWidth);
        if (outcome != Outcome::Complete) break;
    }

    for (std::size_t i = 0; i < size_; ++i)
        std::copy_n(iPanelRow(i), panelWidth, iRow(i) + first);
    return outcome;
}

/// Eliminates column k, which is column j of the panel, from the panel's columns.
GaussJordan::Outcome GaussJordan::iStep(std::size_t k, std::size_t j, std::size_t panelWidth) {
    const bool inPlace = mode_ == Mode::InPlace;
    if (inPlace && !iIsColumnFinite(j)) return Outcome::NotFinite;

    const std::size_t pivot = iFindPivot(k, j);
    if (iPanelRow(pivot)[j] == 0.0) return Outcome::ZeroPivot;
    const double s = 1.0 / iPanelRow(pivot)[j];
    if (inPlace && !std::isfinite(s)) return Outcome::NotFinite;
    pivotRows_.push_back(pivot);
    scales_[j] = s;

    if (pivot != k) {
        std::swap_ranges(iPanelRow(k), iPanelRow(k) + panelWidth, iPanelRow(pivot));
        std::swap_ranges(iFactorRow(k), iFactorRow(k) + j, iFactorRow(pivot));
    }
    for (std::size_t i = 0; i < size_; ++i) {
        iFactorRow(i)[j] = -iPanelRow(i)[j];
        if (inPlace) iPanelRow(i)[j] = 0.0;
    }
    iFactorRow(k)[j] = 0.0;
    if (inPlace) iPanelRow(k)[j] = 1.0;

    callWide<_scaleRow>(iPanelRow(k), panelWidth, s);
    for (std::size_t i = 0; i < size_; ++i) {
        const double f = iFactorRow(i)[j];
        if (f != 0.0) callWide<_addRow>(iPanelRow(i), iPanelRow(k), f, panelWidth);
    }
    return Outcome::Complete;
}

std::size_t GaussJordan::iFindPivot(std::size_t k, std::size_t j) {
    std::size_t pivot = k;
    double largest = std::abs(iPanelRow(k)[j]);
    for (std::size_t i = k + 1; i < size_; ++i) {
        const double entry = std::abs(iPanelRow(i)[j]);
        if (entry > largest) {
            largest = entry;
            pivot = i;
        }
    }
    return pivot;
}

bool GaussJordan::iIsColumnFinite(std::size_t j) {
    for (std::size_t i = 0; i < size_; ++i) {
        if (!std::isfinite(iPanelRow(i)[j])) return false;
    }
    return true;
}

/// Applies the panel's pivots, which start at row `first`, to the columns from `begin` to `end`.
void GaussJordan::iCatchUp(std::size_t first, std::size_t begin, std::size_t end) {
    for (std::size_t c = begin; c < end; c += kStrip) {
        iTell(first, c);
        iCatchUpStrip(first, c, (std::min)(kStrip, end - c));
    }
}

void GaussJordan::iCatchUpStrip(std::size_t first, std::size_t begin, std::size_t columns) {
    for (std::size_t j = 0; j < steps_; ++j) {
        double* const pivot = iRow(pivotRows_[first + j]) + begin;
        double* const own = iRow(first + j) + begin;
        if (pivot != own) std::swap_ranges(own, own + columns, pivot);
    }

    // Each pivot row as it stands at its own step, which is what the other rows add.
    std::array<double, kPanel * kStrip> pivots;
    for (std::size_t j = 0; j < steps_; ++j) {
        double* const pivot = pivots.data() + j * kStrip;
        std::copy_n(iRow(first + j) + begin, columns, pivot);
        callWide<_addRows>(pivot, columns, pivots.data(), iFactorRow(first + j), std::size_t{0}, j);
        callWide<_scaleRow>(pivot, columns, scales_[j]);
    }

    for (std::size_t i = 0; i < size_; ++i) {
        double* const target = iRow(i) + begin;
        std::size_t due = 0;
        if (i >= first && i < first + steps_) {
            due = i - first;
            std::copy_n(pivots.data() + due * kStrip, columns, target);
        }
        callWide<_addRows>(target, columns, pivots.data(), iFactorRow(i), due, steps_);
    }
}

}  // namespace geomKit::detail
