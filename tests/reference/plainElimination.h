/// @file
/// Oracle and peer of the radial-basis fit: the documented elimination as three plain loops over a
/// matrix and the inverse in the making, without blocks, known zeros or restarts.
#pragma once

#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include "geomKit/vAlgebra/vectorUtils.h"

struct PlainFit {
    std::vector<double> coefficients;  ///< weights, offset, linear
    bool metZeroPivot = false;
};

using PlainSamples = std::vector<std::pair<geomKit::Vector3, double>>;

/// The symmetric system of the fit, row by row.
inline std::vector<double> plainSystem(const PlainSamples& samples) {
    const std::size_t n = samples.size();
    const std::size_t size = n + 4;
    std::vector<double> A(size * size, 0.0);
    for (std::size_t i = 0; i < n; ++i) {
        const geomKit::Vector3& p = samples[i].first;
        for (std::size_t j = 0; j < i; ++j) {
            const double s = geomKit::distSq(p, samples[j].first);
            A[i * size + j] = A[j * size + i] = s * std::sqrt(s);
        }
        const double row[] = {1.0, p.x, p.y, p.z};
        for (std::size_t k = 0; k < 4; ++k)
            A[(n + k) * size + i] = A[i * size + n + k] = row[k];
    }
    return A;
}

/// Turns A into its inverse, or leaves it partly reduced and returns false.
inline bool plainInvert(std::vector<double>& A, std::size_t size) {
    std::vector<double> R(size * size, 0.0);
    for (std::size_t i = 0; i < size; ++i)
        R[i * size + i] = 1.0;
    for (std::size_t k = 0; k < size; ++k) {
        std::size_t pivot = k;
        for (std::size_t i = k + 1; i < size; ++i)
            if (std::abs(A[i * size + k]) > std::abs(A[pivot * size + k])) pivot = i;
        if (A[pivot * size + k] == 0.0) return false;
        for (std::size_t c = 0; c < size && pivot != k; ++c) {
            std::swap(A[k * size + c], A[pivot * size + c]);
            std::swap(R[k * size + c], R[pivot * size + c]);
        }
        const double s = 1.0 / A[k * size + k];
        for (std::size_t c = 0; c < size && s != 1.0; ++c) {
            A[k * size + c] *= s;
            R[k * size + c] *= s;
        }
        for (std::size_t i = 0; i < size; ++i) {
            const double f = -A[i * size + k];
            if (i == k || f == 0.0) continue;
            for (std::size_t c = 0; c < size; ++c)
                A[i * size + c] = A[k * size + c] * f + A[i * size + c];
            for (std::size_t c = 0; c < size; ++c)
                R[i * size + c] = R[k * size + c] * f + R[i * size + c];
        }
    }
    A = R;
    return true;
}

inline PlainFit plainFit(const PlainSamples& samples) {
    const std::size_t size = samples.size() + 4;
    std::vector<double> A = plainSystem(samples);
    PlainFit fit;
    fit.metZeroPivot = !plainInvert(A, size);
    fit.coefficients.assign(size, 0.0);
    for (std::size_t r = 0; r < size; ++r)
        for (std::size_t c = 0; c < size; ++c)
            fit.coefficients[r] += A[r * size + c] * (c < samples.size() ? samples[c].second : 0.0);
    return fit;
}
