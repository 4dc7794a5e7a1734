/// @file
/// A mesh function sampled over a picture.
#pragma once

#include <cstddef>
#include <vector>

#include <geomKit/meshFunc2d/MeshFunction2D.h>

namespace demo {

/// The answer at one sample; `isKnown` is false where there is none.
struct FieldSample {
    bool isKnown = false;
    ktNM::vect2<double> value;
    float number = 0.0F;
};

/// `perPixel` x `perPixel` samples for every pixel, and how long it took to ask for them.
struct Field {
    int width = 0;
    int height = 0;
    int perPixel = 1;
    std::vector<FieldSample> samples;
    std::size_t queries = 0;
    std::size_t answers = 0;
    double seconds = 0.0;

    const FieldSample& at(int pixelX, int pixelY, int sample) const;
};

/// Asks `evaluate` for every sample.
Field evaluateOver(const geomKit::MeshFunction2D& function, int width, int height, int perPixel);

/// Asks `extrapolate` at the middle of every pixel, or, since a query searches all boundary chains,
/// of every few pixels when the function has hundreds of them.
Field extrapolateOver(const geomKit::MeshFunction2D& function, int width, int height);

}  // namespace demo
