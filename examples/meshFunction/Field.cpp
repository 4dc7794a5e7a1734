#include "examples/meshFunction/Field.h"

#include <algorithm>
#include <chrono>
#include <cmath>

using namespace geomKit;

namespace demo {
namespace {

/// With four times as many boundary chains every second pixel is asked for, and so on.
constexpr double kChainsForEveryPixel = 60.0;

using Query = bool (MeshFunction2D::*)(const ktNM::vect2<double>&, ktNM::vect2<double>*,
                                       float*) const;

/// Asks at the middle of every block of `blockSide` x `blockSide` samples.
Field ask(const MeshFunction2D& function, Query query, int width, int height, int perPixel,
          int blockSide) {
    Field field;
    field.width = width;
    field.height = height;
    field.perPixel = perPixel;
    const int columns = width * perPixel;
    const int rows = height * perPixel;
    field.samples.resize(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows));

    const auto start = std::chrono::steady_clock::now();
    for (int y = 0; y < rows; y += blockSide) {
        for (int x = 0; x < columns; x += blockSide) {
            const double half = 0.5 * blockSide;
            const ktNM::vect2<double> p((x + half) / perPixel, (y + half) / perPixel);
            FieldSample sample;
            sample.isKnown = (function.*query)(p, &sample.value, &sample.number);
            ++field.queries;
            field.answers += sample.isKnown ? 1 : 0;
            for (int j = y; j < std::min(y + blockSide, rows); ++j) {
                for (int i = x; i < std::min(x + blockSide, columns); ++i) {
                    field.samples[static_cast<std::size_t>(j) * static_cast<std::size_t>(columns) +
                                  static_cast<std::size_t>(i)] = sample;
                }
            }
        }
    }
    field.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return field;
}

}  // namespace

const FieldSample& Field::at(int pixelX, int pixelY, int sample) const {
    const int x = pixelX * perPixel + sample % perPixel;
    const int y = pixelY * perPixel + sample / perPixel;
    return samples[static_cast<std::size_t>(y) * static_cast<std::size_t>(width * perPixel) +
                   static_cast<std::size_t>(x)];
}

Field evaluateOver(const MeshFunction2D& function, int width, int height, int perPixel) {
    return ask(function, &MeshFunction2D::evaluate, width, height, perPixel, 1);
}

Field extrapolateOver(const MeshFunction2D& function, int width, int height) {
    const double chains = static_cast<double>(function.boundaries.size());
    const int blockSide = std::max(1, static_cast<int>(std::sqrt(chains / kChainsForEveryPixel)));
    return ask(function, &MeshFunction2D::extrapolate, width, height, 1, blockSide);
}

}  // namespace demo
