#include "examples/gallery/contours.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <utility>

using namespace geomKit;

namespace gallery {
namespace {

/// An edge of the grid: between the corners of these two indices.
using Edge = std::pair<std::size_t, std::size_t>;

/// For each crossed edge, the edges that the contour goes on to: one or two.
using Links = std::map<Edge, std::vector<Edge>>;

/// The corners where the contour enters and leaves each cell.
Links cellCrossings(const std::vector<double>& values, std::size_t nx, std::size_t ny,
                    double level) {
    Links links;
    for (std::size_t j = 0; j < ny; ++j) {
        for (std::size_t i = 0; i < nx; ++i) {
            const std::size_t first = i + j * (nx + 1);
            const std::size_t corners[] = {first, first + 1, first + nx + 2, first + nx + 1};
            std::vector<Edge> crossed;
            for (std::size_t k = 0; k < 4; ++k) {
                const auto [a, b] = std::minmax(corners[k], corners[(k + 1) % 4]);
                if ((values[a] < level) != (values[b] < level)) crossed.emplace_back(a, b);
            }
            // Four crossings are joined in pairs of neighbours. Both ways of pairing give a
            // contour.
            for (std::size_t k = 0; k + 1 < crossed.size(); k += 2) {
                links[crossed[k]].push_back(crossed[k + 1]);
                links[crossed[k + 1]].push_back(crossed[k]);
            }
        }
    }
    return links;
}

/// Takes the contour that starts at this edge out of the links.
std::vector<Edge> takeChain(Links& links, Edge at) {
    const Edge start = at;
    std::vector<Edge> chain = {at};
    while (!links[at].empty()) {
        const Edge next = links[at].back();
        links[at].pop_back();
        std::vector<Edge>& back = links[next];
        back.erase(std::find(back.begin(), back.end(), at));
        chain.push_back(next);
        at = next;
        if (at == start) break;
    }
    return chain;
}

}  // namespace

std::vector<Vector3> gridCorners(const Vector3& low, const Vector3& high, int nx, int ny) {
    std::vector<Vector3> corners;
    for (int j = 0; j <= ny; ++j) {
        for (int i = 0; i <= nx; ++i) {
            corners.emplace_back(low.x + (high.x - low.x) * i / nx,
                                 low.y + (high.y - low.y) * j / ny, 0.0);
        }
    }
    return corners;
}

std::vector<std::vector<Vector3>> contours(const std::vector<double>& values, const Vector3& low,
                                           const Vector3& high, int nx, int ny, double level) {
    const std::vector<Vector3> corners = gridCorners(low, high, nx, ny);
    const auto crossing = [&](const Edge& edge) {
        const auto [a, b] = edge;
        const double t = (level - values[a]) / (values[b] - values[a]);
        return corners[a] + (corners[b] - corners[a]) * t;
    };
    Links links =
        cellCrossings(values, static_cast<std::size_t>(nx), static_cast<std::size_t>(ny), level);
    std::vector<std::vector<Vector3>> curves;
    // Open contours from an end first; what is left is closed.
    for (const std::size_t degree : {1U, 2U}) {
        for (const auto& entry : links) {
            if (entry.second.size() != degree) continue;
            std::vector<Vector3>& curve = curves.emplace_back();
            for (const Edge& edge : takeChain(links, entry.first))
                curve.push_back(crossing(edge));
        }
    }
    return curves;
}

std::vector<std::vector<Vector3>> contours(const std::function<double(const Vector3&)>& f,
                                           const Vector3& low, const Vector3& high, int nx, int ny,
                                           double level) {
    std::vector<double> values;
    for (const Vector3& p : gridCorners(low, high, nx, ny))
        values.push_back(f(p));
    return contours(values, low, high, nx, ny, level);
}

}  // namespace gallery
