#include <cmath>
#include <vector>

#include "geomKit/meshFunc2d/MeshFunction2D.h"
#include "geomKit/queries/PolylineProjector.h"
#include "tests/golden/Digest.h"

namespace {

using Point = ktNM::vect2<double>;

void digestProjections() {
    InputSource in(20);
    Digest digest("PolylineProjector");
    for (const int n : {2, 19, 20, 100, 3000}) {
        std::vector<Vector3> points;
        for (int i = 0; i < n; ++i)
            points.push_back(in.vector(1.0) + Vector3(0.1 * i, 0.0, 0.0));
        PolylineProjector line(points);
        for (const double length : line.arcLength)
            digest.add(length);
        for (int q = 0; q < 300; ++q) {
            line.project(q % 3 == 0 ? points[static_cast<std::size_t>(in.index(n))]
                                    : in.vector(0.2 * n));
            digest.add(line.segment);
            digest.add(line.param);
            digest.add(line.point);
        }
    }
}

/// A jittered grid with holes, sampling rough values.
MeshFunction2D roughMesh(int side) {
    InputSource in(static_cast<std::uint64_t>(side));
    std::vector<Point> params;
    std::vector<Point> values;
    std::vector<float> floats;
    std::vector<int> facets;
    for (int i = 0; i < side; ++i) {
        for (int j = 0; j < side; ++j) {
            const Vector3 jitter = in.vector(0.3);
            const Vector3 value = in.vector(1.0);
            params.emplace_back(i + jitter.x, j + jitter.y);
            values.emplace_back(value.x, value.y);
            floats.push_back(static_cast<float>(value.z));
            const int a = i * side + j;
            if (i + 1 == side || j + 1 == side || (i % 5 == 2 && j % 4 == 1)) continue;
            facets.insert(facets.end(), {a, a + side, a + side + 1, a, a + side + 1, a + 1});
        }
    }
    return {params, values, facets, floats};
}

void digestFunctions() {
    InputSource in(21);
    Digest digest("MeshFunction2D");
    for (const int side : {2, 30, 140}) {
        const MeshFunction2D f = roughMesh(side);
        for (const auto& cell : f.cells)
            digest.add(cell.size());
        for (std::size_t k = 0; k < f.boundaries.size(); ++k) {
            for (const int facet : f.boundaryFacets[k])
                digest.add(facet);
            for (const Vector3& p : f.boundaries[k]->points)
                digest.add(p);
        }
        for (int q = 0; q < 3000; ++q) {
            const Vector3 v = in.vector(side);
            const Point p(v.x, v.y);
            Point value;
            float cosine = 0.0f;
            digest.add(f.evaluate(p, &value, &cosine));
            digest.add(f.extrapolate(p, &value, &cosine));
            digest.add(value.u);
            digest.add(value.v);
            digest.add(static_cast<double>(cosine));
            digest.add(f.extrapolateOld(p, &value, &cosine));
            digest.add(value.u);
            bool interior = false;
            digest.add(f.iDistToEdge(q % 4, (q + 1) % 4, p, &interior, q % 2 == 0));
            digest.add(interior);
        }
    }
}

}  // namespace

void digestMeshFunctions() {
    digestProjections();
    digestFunctions();
}
