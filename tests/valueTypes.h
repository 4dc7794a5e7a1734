/// @file
/// What is asked of every value type that is a row of numbers and nothing else.
#pragma once

#include <array>
#include <cstring>
#include <functional>
#include <sstream>
#include <string>

#include "tests/support.h"

namespace geomKit {

/// The numbers of a value, one after the other.
template <typename T>
auto numbersOf(const T& value) {
    std::array<double, sizeof(T) / sizeof(double)> numbers;
    std::memcpy(numbers.data(), value.data(), sizeof numbers);
    return numbers;
}

template <typename T>
std::string textOf(const T& value) {
    std::ostringstream text;
    text << value;
    return text.str();
}

/// `==`, where `!=` is its opposite.
struct OwnEquality {
    template <typename T>
    bool operator()(const T& a, const T& b) const {
        EXPECT_NE(a == b, a != b);
        return a == b;
    }
};

/// Equality and hash read each number of `value`, in which both zeros are one and NaN is nothing.
template <typename T, typename Hash = std::hash<T>, typename Equal = OwnEquality>
void expectExactEquality(const T& value) {
    const Hash hash{};
    const Equal equal{};
    EXPECT_TRUE(equal(value, T(value)));
    for (std::size_t i = 0; i < sizeof(T) / sizeof(double); ++i) {
        SCOPED_TRACE(i);
        const auto with = [&value, i](double number) {
            T changed = value;
            std::memcpy(reinterpret_cast<char*>(&changed) + i * sizeof number, &number,
                        sizeof number);
            return changed;
        };
        EXPECT_FALSE(equal(with(1e-300), with(2e-300)));
        EXPECT_NE(hash(with(1e-300)), hash(with(2e-300)));
        EXPECT_TRUE(equal(with(0.0), with(-0.0)));
        EXPECT_EQ(hash(with(0.0)), hash(with(-0.0)));
        EXPECT_FALSE(equal(with(kNaN), with(kNaN)));
    }
}

/// The operators that work on each number for itself, and their compound forms.
template <typename T>
void expectArithmetic(const T& a, const T& b, double s, double (*quotient)(double, double)) {
    const struct {
        const char* name;
        T plain;
        T compound;
        std::function<double(double, double)> ofNumbers;
    } rows[] = {
        {"a + b", a + b, T(a) += b, std::plus<>()},
        {"a - b", a - b, T(a) -= b, std::minus<>()},
        {"a * s", a * s, T(a) *= s, [s](double x, double) { return x * s; }},
        {"s * a", s * a, s * a, [s](double x, double) { return s * x; }},
        {"a / s", a / s, T(a) /= s, [s, quotient](double x, double) { return quotient(x, s); }},
        {"-a", -a, -a, [](double x, double) { return -x; }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        auto want = numbersOf(a);
        for (std::size_t i = 0; i < want.size(); ++i)
            want[i] = row.ofNumbers(want[i], numbersOf(b)[i]);
        EXPECT_EQ(numbersOf(row.plain), want);
        EXPECT_EQ(numbersOf(row.compound), want);
    }
}

/// Maps `a` and `b` are applied one after the other, and undone; `p` is where that is looked at.
template <typename T>
void expectComposition(const T& a, const T& b, const Vector3& p) {
    constexpr double kRounding = 1e-11;
    EXPECT_LE(dist((a * b) * p, a * (b * p)), kRounding);
    EXPECT_LE(dist((a.inverse() * a) * p, p), kRounding);
    EXPECT_LE(dist((b * b.inverse()) * p, p), kRounding);
    T c = a;
    EXPECT_EQ(&(c *= b), &c);
    EXPECT_EQ(c, a * b);
    c *= c;
    EXPECT_EQ(c, (a * b) * (a * b)) << "in place";
}

}  // namespace geomKit
