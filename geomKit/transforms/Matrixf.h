/// @file
/// `Matrixf`, the single-precision 4x4 matrix of a host.
#pragma once

#include <cassert>

/// Sixteen floats stored row by row, laid out as `Matrix` is. The library computes nothing with it:
/// `Matrix` converts from it.
class Matrixf {
public:
    /// The identity.
    constexpr Matrixf()
        : m_{1.0F, 0.0F, 0.0F, 0.0F,  //
             0.0F, 1.0F, 0.0F, 0.0F,  //
             0.0F, 0.0F, 1.0F, 0.0F,  //
             0.0F, 0.0F, 0.0F, 1.0F} {}

    /// Element in row i, column j, both in 0..3 (asserted in debug builds).
    float operator()(int i, int j) const;
    float& operator()(int i, int j);

private:
    float m_[16];
};

inline float Matrixf::operator()(int i, int j) const {
    assert(i >= 0 && i < 4 && j >= 0 && j < 4);
    return m_[4 * i + j];
}

inline float& Matrixf::operator()(int i, int j) {
    assert(i >= 0 && i < 4 && j >= 0 && j < 4);
    return m_[4 * i + j];
}
