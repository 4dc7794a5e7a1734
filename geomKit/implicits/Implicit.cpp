#include "geomKit/implicits/Implicit.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "geomKit/implicits/DenseMatrix.h"

namespace {

using Samples = std::vector<std::pair<Vector3, double>>;

/// Rows that the polynomial adds to the system: 1, x, y, z.
constexpr std::size_t kPolynomialTerms = 4;

/// Terms computed side by side before they are added one after the other.
constexpr std::size_t kTerms = 16;

/// Points that go through the samples side by side.
constexpr std::size_t kLanes = 16;

/// [K P; P^T 0]: K the cubed distances between the samples, P their rows (1, x, y, z).
DenseMatrix buildSystem(const Samples& samples) {
    const std::size_t n = samples.size();
    DenseMatrix A(n + kPolynomialTerms);
    for (std::size_t i = 0; i < n; ++i) {
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
    for (std::size_t i = 0; i < A.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            A.row(j)[i] = A.row(i)[j];
    return A;
}

/// As many points side by side as go through the samples together.
struct Lanes {
    std::array<double, kLanes> x;
    std::array<double, kLanes> y;
    std::array<double, kLanes> z;

    explicit Lanes(const Vector3* points) {
        for (std::size_t l = 0; l < kLanes; ++l) {
            x[l] = points[l].x;
            y[l] = points[l].y;
            z[l] = points[l].z;
        }
    }
};

/// Centres that have a weight.
std::size_t termCount(const Implicit& field) {
    return (std::min)(field.centers.size(), field.weights.size());
}

double polynomial(const Implicit& field, const Vector3& p) {
    const Vector3& a = field.linear;
    return field.offset + (a.z * p.z + (a.x * p.x + a.y * p.y));
}

void evaluateLanes(const Implicit& field, const Vector3* points, double* values) {
    const Lanes p(points);
    std::array<double, kLanes> sum;
    for (std::size_t l = 0; l < kLanes; ++l)
        sum[l] = polynomial(field, points[l]);
    const std::size_t n = termCount(field);
    for (std::size_t i = 0; i < n; ++i) {
        const Vector3 c = field.centers[i];
        const double w = field.weights[i];
        for (std::size_t l = 0; l < kLanes; ++l) {
            const double dx = p.x[l] - c.x;
            const double dy = p.y[l] - c.y;
            const double dz = p.z[l] - c.z;
            const double s = dz * dz + (dx * dx + dy * dy);
            sum[l] = (s * std::sqrt(s)) * w + sum[l];
        }
    }
    std::copy(sum.begin(), sum.end(), values);
}

void getGradientLanes(const Implicit& field, const Vector3* points, Vector3* gradients) {
    const Lanes p(points);
    std::array<double, kLanes> gx;
    std::array<double, kLanes> gy;
    std::array<double, kLanes> gz;
    gx.fill(field.linear.x);
    gy.fill(field.linear.y);
    gz.fill(field.linear.z);
    const std::size_t n = termCount(field);
    for (std::size_t i = 0; i < n; ++i) {
        const Vector3 c = field.centers[i];
        const double w = field.weights[i];
        for (std::size_t l = 0; l < kLanes; ++l) {
            const double dx = p.x[l] - c.x;
            const double dy = p.y[l] - c.y;
            const double dz = p.z[l] - c.z;
            const double r3 = 3.0 * std::sqrt(dz * dz + dx * dx + dy * dy);
            gx[l] += dx * r3 * w;
            gy[l] += dy * r3 * w;
            gz[l] += dz * r3 * w;
        }
    }
    for (std::size_t l = 0; l < kLanes; ++l)
        gradients[l] = Vector3(gx[l], gy[l], gz[l]);
}

}  // namespace

Implicit::Implicit(const Samples& samples) {
    const std::size_t n = samples.size();
    DenseMatrix A = buildSystem(samples);
    std::vector<double> b(A.size(), 0.0);
    centers.reserve(n);
    for (std::size_t i = 0; i < n; ++i) {
        b[i] = samples[i].second;
        centers.push_back(samples[i].first);
    }
    metZeroPivot_ = !A.invert();
    weights = A * b;
    offset = weights[n];
    linear = Vector3(weights[n + 1], weights[n + 2], weights[n + 3]);
    weights.resize(n);
}

double Implicit::evaluate(const Vector3& p) const {
    double sum = polynomial(*this, p);
    std::array<double, kTerms> terms;
    const std::size_t n = termCount(*this);
    for (std::size_t first = 0; first < n; first += kTerms) {
        const std::size_t count = (std::min)(kTerms, n - first);
        const Vector3* const c = &centers[first];
        const double* const w = &weights[first];
        for (std::size_t i = 0; i < count; ++i) {
            const double dx = p.x - c[i].x;
            const double dy = p.y - c[i].y;
            const double dz = p.z - c[i].z;
            const double s = dz * dz + (dx * dx + dy * dy);
            terms[i] = (s * std::sqrt(s)) * w[i];
        }
        for (std::size_t i = 0; i < count; ++i)
            sum = terms[i] + sum;
    }
    return sum;
}

Vector3 Implicit::getGradient(const Vector3& p) const {
    Vector3 gradient = linear;
    std::array<double, kTerms> x;
    std::array<double, kTerms> y;
    std::array<double, kTerms> z;
    const std::size_t n = termCount(*this);
    for (std::size_t first = 0; first < n; first += kTerms) {
        const std::size_t count = (std::min)(kTerms, n - first);
        const Vector3* const c = &centers[first];
        const double* const w = &weights[first];
        for (std::size_t i = 0; i < count; ++i) {
            const double dx = p.x - c[i].x;
            const double dy = p.y - c[i].y;
            const double dz = p.z - c[i].z;
            const double r3 = 3.0 * std::sqrt(dz * dz + dx * dx + dy * dy);
            x[i] = dx * r3 * w[i];
            y[i] = dy * r3 * w[i];
            z[i] = dz * r3 * w[i];
        }
        for (std::size_t i = 0; i < count; ++i)
            gradient += Vector3(x[i], y[i], z[i]);
    }
    return gradient;
}

void Implicit::evaluate(const Vector3* points, double* values, std::size_t count) const {
    std::size_t i = 0;
    for (; i + kLanes <= count; i += kLanes)
        evaluateLanes(*this, points + i, values + i);
    for (; i < count; ++i)
        values[i] = evaluate(points[i]);
}

void Implicit::getGradient(const Vector3* points, Vector3* gradients, std::size_t count) const {
    std::size_t i = 0;
    for (; i + kLanes <= count; i += kLanes)
        getGradientLanes(*this, points + i, gradients + i);
    for (; i < count; ++i)
        gradients[i] = getGradient(points[i]);
}

double Implicit::maxResidual(const Samples& samples) const {
    double largest = 0.0;
    for (const auto& [point, value] : samples) {
        const double residual = std::abs(evaluate(point) - value);
        if (!(residual <= largest)) largest = residual;
        if (std::isnan(largest)) break;
    }
    return largest;
}
