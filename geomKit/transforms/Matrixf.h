/// @file
/// `Matrixf`, the single-precision 4x4 matrix of a host.
#pragma once

#include <array>
#include <cassert>
#include <type_traits>

namespace geomKit {

/// Sixteen floats stored row by row, laid out as `Matrix` is. The library computes nothing with it:
/// `Matrix` converts from it.
class Matrixf {
public:
    /// The identity.
    constexpr Matrixf() noexcept
        : m_{1.0F, 0.0F, 0.0F, 0.0F,  //
             0.0F, 1.0F, 0.0F, 0.0F,  //
             0.0F, 0.0F, 1.0F, 0.0F,  //
             0.0F, 0.0F, 0.0F, 1.0F} {}

    /// Sixteen numbers, row by row.
    constexpr explicit Matrixf(const std::array<float, 16>& rowByRow) noexcept;

    /// Element in row i, column j, both in 0..3 (asserted in debug builds).
    [[nodiscard]] constexpr float operator()(int i, int j) const noexcept;
    [[nodiscard]] constexpr float& operator()(int i, int j) noexcept;
    /// The sixteen elements, row by row.
    [[nodiscard]] constexpr const float* data() const noexcept { return m_; }
    [[nodiscard]] constexpr float* data() noexcept { return m_; }
    [[nodiscard]] constexpr const float* begin() const noexcept { return m_; }
    [[nodiscard]] constexpr float* begin() noexcept { return m_; }
    [[nodiscard]] constexpr const float* end() const noexcept { return m_ + 16; }
    [[nodiscard]] constexpr float* end() noexcept { return m_ + 16; }

    /// Equal in every element, without tolerance. Both zeros are equal, NaN equals nothing.
    [[nodiscard]] constexpr bool operator==(const Matrixf& b) const noexcept;
    [[nodiscard]] constexpr bool operator!=(const Matrixf& b) const noexcept;

private:
    float m_[16];
};

static_assert(sizeof(Matrixf) == 16 * sizeof(float) && std::is_standard_layout_v<Matrixf> &&
                  std::is_trivially_copyable_v<Matrixf>,
              "arrays of Matrixf read as arrays of float");

constexpr Matrixf::Matrixf(const std::array<float, 16>& rowByRow) noexcept : Matrixf() {
    for (int k = 0; k < 16; ++k)
        m_[k] = rowByRow[static_cast<std::size_t>(k)];
}

constexpr float Matrixf::operator()(int i, int j) const noexcept {
    assert(i >= 0 && i < 4 && j >= 0 && j < 4);
    return m_[4 * i + j];
}

constexpr float& Matrixf::operator()(int i, int j) noexcept {
    assert(i >= 0 && i < 4 && j >= 0 && j < 4);
    return m_[4 * i + j];
}

constexpr bool Matrixf::operator==(const Matrixf& b) const noexcept {
    for (int k = 0; k < 16; ++k) {
        if (!(m_[k] == b.m_[k])) return false;
    }
    return true;
}

constexpr bool Matrixf::operator!=(const Matrixf& b) const noexcept {
    return !(*this == b);
}

}  // namespace geomKit
