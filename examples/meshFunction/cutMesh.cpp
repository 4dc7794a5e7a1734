#include "examples/meshFunction/cutMesh.h"

#include <algorithm>
#include <map>
#include <utility>

namespace demo {
namespace {

class Cutter {
public:
    Cutter(const Mesh& source, const std::vector<double>& side)
        : source_(source), side_(side), copies_(source.positions.size(), -1) {}

    /// Walks round the triangle and keeps a polygon of up to four corners.
    void add(const int* corners) {
        std::vector<int> kept;
        for (int k = 0; k < 3; ++k) {
            const int a = corners[k];
            const int b = corners[(k + 1) % 3];
            if (isKept(a)) kept.push_back(copyOf(a));
            if (isKept(a) != isKept(b)) kept.push_back(crossing(a, b));
        }
        for (std::size_t k = 2; k < kept.size(); ++k) {
            result.facets.insert(result.facets.end(), {kept[0], kept[k - 1], kept[k]});
        }
    }

    Mesh result;

private:
    static std::size_t at(int vertex) { return static_cast<std::size_t>(vertex); }
    bool isKept(int vertex) const { return side_[at(vertex)] > 0.0; }

    int copyOf(int vertex) {
        int& copy = copies_[at(vertex)];
        if (copy < 0) copy = appendBetween(result, source_, vertex, vertex, 0.0);
        return copy;
    }

    int crossing(int a, int b) {
        const auto [low, high] = std::minmax(a, b);
        const auto [place, isNew] = crossings_.try_emplace({low, high}, -1);
        if (isNew) {
            const double t = side_[at(low)] / (side_[at(low)] - side_[at(high)]);
            place->second = appendBetween(result, source_, low, high, t);
        }
        return place->second;
    }

    const Mesh& source_;
    const std::vector<double>& side_;
    std::vector<int> copies_;
    std::map<std::pair<int, int>, int> crossings_;
};

}  // namespace

Mesh cutMesh(const Mesh& mesh, const std::vector<double>& side) {
    Cutter cutter(mesh, side);
    for (std::size_t i = 0; i + 2 < mesh.facets.size(); i += 3) {
        cutter.add(&mesh.facets[i]);
    }
    return std::move(cutter.result);
}

}  // namespace demo
