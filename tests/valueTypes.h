/// @file
/// What is asked of every value type that is a row of numbers and nothing else.
#pragma once

#include <cstring>
#include <functional>

#include "tests/support.h"

namespace geomKit {

/// Equality and hash read each number, in which both zeros are one and NaN is nothing.
template <typename T, typename Hash = std::hash<T>, typename Equal = std::equal_to<T>>
void expectExactEquality(const T& value) {
    for (std::size_t i = 0; i < sizeof value / sizeof(double); ++i) {
        SCOPED_TRACE(i);
        const auto with = [&value, i](double x) {
            T changed = value;
            std::memcpy(reinterpret_cast<char*>(&changed) + i * sizeof x, &x, sizeof x);
            return changed;
        };
        const T zero = with(0.0);
        const T next = with(std::numeric_limits<double>::denorm_min());
        EXPECT_TRUE(Equal()(zero, with(-0.0)));
        EXPECT_EQ(Hash()(zero), Hash()(with(-0.0)));
        EXPECT_FALSE(Equal()(zero, next));
        EXPECT_NE(Hash()(zero), Hash()(next));
        EXPECT_FALSE(Equal()(with(kNaN), with(kNaN)));
        EXPECT_NE(zero == next, zero != next);
    }
}

/// The operators that work on each number for itself, and their compound forms.
template <typename T>
void expectArithmetic(const T& a, const T& b, double s, double (*quotient)(double, double)) {
    const auto expect = [&](const char* name, const T& got, const T& compound, const auto& want) {
        for (int i = 0; i < a.end() - a.begin(); ++i) {
            EXPECT_EQ(got.data()[i], want(a.data()[i], b.data()[i])) << name;
            EXPECT_EQ(compound.data()[i], got.data()[i]) << name << '=';
        }
    };
    expect("+", a + b, T(a) += b, std::plus<>());
    expect("-", a - b, T(a) -= b, std::minus<>());
    expect("*", a * s, T(a) *= s, [s](double x, double) { return x * s; });
    expect("/", a / s, T(a) /= s, [s, quotient](double x, double) { return quotient(x, s); });
    expect("s *", s * a, a * s, [s](double x, double) { return s * x; });
    expect("-a", -a, T(a) *= -1.0, [](double x, double) { return -x; });
}

/// Maps are applied one after the other, and undone; `p` is a point where that is looked at.
template <typename T>
void expectComposition(const T& a, const T& b, const Vector3& p) {
    EXPECT_LE(dist((a * b) * p, a * (b * p)), 1e-11);
    EXPECT_LE(dist((a.inverse() * a) * p, p), 1e-11);
    T c = a;
    EXPECT_EQ(c *= b, a * b);
    EXPECT_EQ(c *= c, (a * b) * (a * b)) << "in place";
}

}  // namespace geomKit
