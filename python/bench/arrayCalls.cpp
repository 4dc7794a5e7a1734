// The calls of the library itself, for the benchmark of the Python package.
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "geomKit/implicits/Implicit.h"
#include "geomKit/meshFunc2d/MeshFunction2D.h"
#include "geomKit/queries/PolylineProjector.h"

using geomKit::MeshFunction2D;
using geomKit::Vector3;
using Point = MeshFunction2D::Point;

// In the calls below, coordinates are numbers side by side, and answers go to new arrays, as
// Python's calls make them. Those of `results`, which may be null, are copied outside of the time.
namespace {

/// An array without values, as NumPy's are.
template <typename Item>
class NewArray {
public:
    void allocate(std::size_t count) {
        items_.reset(static_cast<Item*>(::operator new[](count * sizeof(Item))));
    }
    Item* items() const { return items_.get(); }

private:
    struct Free {
        void operator()(Item* items) const { ::operator delete[](items); }
    };
    std::unique_ptr<Item[], Free> items_;
};

const Vector3* vectors(const double* coordinates) {
    return reinterpret_cast<const Vector3*>(coordinates);
}

template <typename Work>
double secondsOf(const Work& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

}  // namespace

extern "C" {

MeshFunction2D* newFunction(const double* params, const double* values, std::size_t vertices,
                            const int* facets, std::size_t facetCount) {
    const auto* const first = reinterpret_cast<const Point*>(params);
    const auto* const firstValue = reinterpret_cast<const Point*>(values);
    return new MeshFunction2D(std::vector<Point>(first, first + vertices),
                              std::vector<Point>(firstValue, firstValue + vertices),
                              std::vector<int>(facets, facets + 3 * facetCount), {});
}

void deleteFunction(MeshFunction2D* function) {
    delete function;
}

double secondsOfPoints(const MeshFunction2D* function, const double* coordinates, std::size_t count,
                       bool extrapolate, double* results) {
    const auto* const points = reinterpret_cast<const Point*>(coordinates);
    NewArray<Point> values;
    NewArray<bool> found;
    const double seconds = secondsOf([&] {
        values.allocate(count);
        found.allocate(count);
        if (extrapolate) {
            function->extrapolate(points, count, values.items(), nullptr, found.items());
        } else {
            function->evaluate(points, count, values.items(), nullptr, found.items());
        }
    });
    for (std::size_t i = 0; results != nullptr && i < count; ++i) {
        results[2 * i] = found.items()[i] ? values.items()[i].u : 0.0;
        results[2 * i + 1] = found.items()[i] ? values.items()[i].v : 0.0;
    }
    return seconds;
}

/// The nearest points on a polyline, in a plain loop.
double secondsOfNearest(const double* vertices, std::size_t vertexCount, const double* queries,
                        std::size_t count, double* results) {
    const Vector3* const first = vectors(vertices);
    const geomKit::PolylineProjector line(std::vector<Vector3>(first, first + vertexCount));
    NewArray<std::int32_t> segments;
    NewArray<double> params;
    NewArray<Vector3> points;
    const double seconds = secondsOf([&] {
        segments.allocate(count);
        params.allocate(count);
        points.allocate(count);
        for (std::size_t i = 0; i < count; ++i) {
            const geomKit::PolylineProjection nearest = line.nearest(vectors(queries)[i]);
            segments.items()[i] = nearest.segment;
            params.items()[i] = nearest.param;
            points.items()[i] = nearest.point;
        }
    });
    for (std::size_t i = 0; results != nullptr && i < count; ++i)
        reinterpret_cast<Vector3*>(results)[i] = points.items()[i];
    return seconds;
}

/// A field through samples.
double secondsOfField(const double* samples, const double* sampleValues, std::size_t sampleCount,
                      const double* points, std::size_t count, double* results) {
    std::vector<std::pair<Vector3, double>> pairs(sampleCount);
    for (std::size_t i = 0; i < sampleCount; ++i)
        pairs[i] = {vectors(samples)[i], sampleValues[i]};
    const geomKit::Implicit field(pairs);
    NewArray<double> values;
    const double seconds = secondsOf([&] {
        values.allocate(count);
        field.evaluate(vectors(points), count, values.items());
    });
    for (std::size_t i = 0; results != nullptr && i < count; ++i)
        results[i] = values.items()[i];
    return seconds;
}
}
