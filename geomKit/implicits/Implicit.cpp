#include "geomKit/implicits/Implicit.h"

#include <algorithm>
#include <cmath>

#include "geomKit/implicits/DenseMatrix.h"
#include "geomKit/implicits/RadialSums.h"

namespace geomKit {

namespace {

using detail::addGradients;
using detail::addGradientsToLanes;
using detail::addTerms;
using detail::addTermsToLanes;
using detail::DenseMatrix;
using detail::kLanes;
using detail::RadialTerms;

using Samples = std::vector<std::pair<Vector3, double>>;

/// Rows that the polynomial adds to the system: 1, x, y, z.
constexpr std::size_t kPolynomialTerms = 4;

/// [K P; P^T 0]: K the cubed distances between the samples, P their rows (1, x, y, z).
DenseMatrix _buildSystem(const Samples& samples, const Implicit::Progress& progress) {
    const std::size_t n = samples.size();
    DenseMatrix A(n + kPolynomialTerms);
    for (std::size_t i = 0; i < n; ++i) {
        if (progress) progress(0.0);
        const Vector3& p = samples[i].first;
        for (std::size_t j = 0; j < i; ++j) {
            const double s = (p - samples[j].first).lengthSq();
            A.row(i)[j] = s * std::sqrt(s);
        }
        A.row(n)[i] = 1.0;
        A.row(n + 1)[i] = p.x;
        A.row(n + 2)[i] = p.y;
        A.row(n + 3)[i] = p.z;
    }
    for (std::size_t i = 0; i < A.size(); ++i) {
        if (progress) progress(0.0);
        for (std::size_t j = 0; j < i; ++j)
            A.row(j)[i] = A.row(i)[j];
    }
    return A;
}

RadialTerms _termsOf(const Implicit& field) {
    return {field.centers.data(), field.weights.data(),
            (std::min)(field.centers.size(), field.weights.size())};
}

double _polynomial(const Implicit& field, const Vector3& p) {
    const Vector3& a = field.linear;
    return field.offset + (a.z * p.z + (a.x * p.x + a.y * p.y));
}

}  // namespace

Implicit::Implicit(const Samples& samples) : Implicit(samples, Progress()) {}

Implicit::Implicit(const Samples& samples, const Progress& progress) {
    const std::size_t n = samples.size();
    DenseMatrix A = _buildSystem(samples, progress);
    std::vector<double> b(A.size(), 0.0);
    centers.reserve(n);
    for (std::size_t i = 0; i < n; ++i) {
        b[i] = samples[i].second;
        centers.push_back(samples[i].first);
    }
    metZeroPivot_ = !A.invert(progress);
    weights = A * b;
    offset = weights[n];
    linear = Vector3(weights[n + 1], weights[n + 2], weights[n + 3]);
    weights.resize(n);
    if (progress) progress(1.0);
}

double Implicit::evaluate(const Vector3& p) const noexcept {
    return addTerms(_termsOf(*this), p, _polynomial(*this, p));
}

Vector3 Implicit::getGradient(const Vector3& p) const noexcept {
    return addGradients(_termsOf(*this), p, linear);
}

void Implicit::evaluate(const Vector3* points, std::size_t count, double* values) const noexcept {
    if (values == nullptr) return;
    const RadialTerms terms = _termsOf(*this);
    for (std::size_t i = 0; i < count; ++i)
        values[i] = _polynomial(*this, points[i]);
    std::size_t i = 0;
    for (; i + kLanes <= count; i += kLanes)
        addTermsToLanes(terms, points + i, values + i);
    for (; i < count; ++i)
        values[i] = addTerms(terms, points[i], values[i]);
}

void Implicit::getGradient(const Vector3* points, std::size_t count,
                           Vector3* gradients) const noexcept {
    if (gradients == nullptr) return;
    const RadialTerms terms = _termsOf(*this);
    std::size_t i = 0;
    for (; i + kLanes <= count; i += kLanes)
        addGradientsToLanes(terms, points + i, linear, gradients + i);
    for (; i < count; ++i)
        gradients[i] = addGradients(terms, points[i], linear);
}

double Implicit::maxResidual(const Samples& samples) const noexcept {
    double largest = 0.0;
    for (const auto& [point, value] : samples) {
        const double residual = std::abs(evaluate(point) - value);
        if (!(residual <= largest)) largest = residual;
        if (std::isnan(largest)) break;
    }
    return largest;
}

}  // namespace geomKit
