/// @file
/// What the tests of all folders share: the library, inputs, values that are not finite, bits and
/// threads.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "tests/golden/Digest.h"

namespace geomKit {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Equal bit for bit, by digest: whatever `Digest` takes. Every NaN equals every other.
template <typename T>
bool sameBits(const T& a, const T& b) {
    Digest bits[2];
    bits[0].add(a);
    bits[1].add(b);
    return bits[0] == bits[1];
}

/// Calls `work(0)` to `work(count - 1)`, each in a thread of its own.
template <typename Work>
void inThreads(int count, const Work& work) {
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i)
        threads.emplace_back(work, i);
    for (std::thread& thread : threads)
        thread.join();
}

}  // namespace geomKit
