#include "examples/meshFunction/Field.h"

#include <chrono>

namespace demo {
namespace {

using Query = bool (MeshFunction2D::*)(const ktNM::vect2<double>&, ktNM::vect2<double>*,
                                       float*) const;

Field ask(const MeshFunction2D& function, Query query, int width, int height, int perPixel) {
    Field field;
    field.width = width;
    field.height = height;
    field.perPixel = perPixel;
    const int columns = width * perPixel;
    const int rows = height * perPixel;
    field.queries = static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows);
    field.samples.resize(field.queries);

    const auto start = std::chrono::steady_clock::now();
    FieldSample* sample = field.samples.data();
    for (int y = 0; y < rows; ++y) {
        for (int x = 0; x < columns; ++x, ++sample) {
            const ktNM::vect2<double> p((x + 0.5) / perPixel, (y + 0.5) / perPixel);
            sample->isKnown = (function.*query)(p, &sample->value, &sample->number);
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
    return ask(function, &MeshFunction2D::evaluate, width, height, perPixel);
}

Field extrapolateOver(const MeshFunction2D& function, int width, int height) {
    return ask(function, &MeshFunction2D::extrapolate, width, height, 1);
}

}  // namespace demo
