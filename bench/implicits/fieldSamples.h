/// @file
/// The samples that the benchmarks of the radial-basis field share.
#pragma once

#include "tests/reference/InputSource.h"
#include "tests/reference/plainElimination.h"

inline PlainSamples fieldSamples(std::size_t count) {
    InputSource in(71);
    PlainSamples samples(count);
    for (auto& [point, value] : samples) {
        point = in.vector(1.0);
        value = in.uniform(-1.0, 1.0);
    }
    return samples;
}
