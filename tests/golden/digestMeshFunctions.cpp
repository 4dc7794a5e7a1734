#include <cmath>
#include <vector>

#include "tests/golden/Digest.h"

using namespace geomKit;

namespace {

using Point = ktNM::vect2<double>;

void addProjections(Digest& digest, InputSource& in, int i) {
    const int counts[] = {2, 19, 20, 100, 3000};
    const int n = counts[i];
    std::vector<Vector3> points;
    for (int k = 0; k < n; ++k)
        points.push_back(in.vector(1.0) + Vector3(0.1 * k, 0.0, 0.0));
    PolylineProjector line(points);
    digest.add(line.arcLength);
    for (int q = 0; q < 300; ++q) {
        line.project(q % 3 == 0 ? points[static_cast<std::size_t>(in.index(n))]
                                : in.vector(0.2 * n));
        digest.add(line.segment, line.param, line.point);
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
            const Vector3 jitter = in.vector(0.3), value = in.vector(1.0);
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

void addFunctions(Digest& digest, InputSource& in, int i) {
    const int sides[] = {2, 30, 140};
    const MeshFunction2D f = roughMesh(sides[i]);
    for (const auto& cell : f.cells)
        digest.add(cell.size());
    for (std::size_t k = 0; k < f.boundaries.size(); ++k)
        digest.add(f.boundaryFacets[k], f.boundaries[k]->points);
    for (int q = 0; q < 3000; ++q) {
        const Vector3 v = in.vector(sides[i]);
        const Point p(v.x, v.y);
        Point value;
        float cosine = 0.0f;
        bool interior = false;
        digest.add(f.evaluate(p, &value, &cosine));
        digest.add(f.extrapolate(p, &value, &cosine), value.u, value.v, cosine);
        digest.add(f.extrapolateOld(p, &value, &cosine), value.u);
        digest.add(f.iDistToEdge(q % 4, (q + 1) % 4, p, &interior, q % 2 == 0), interior);
    }
}

}  // namespace

void digestMeshFunctions() {
    sample("PolylineProjector", 20, 5, addProjections);
    sample("MeshFunction2D", 21, 3, addFunctions);
}
