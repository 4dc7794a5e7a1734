#include "examples/meshFunction/refineMesh.h"

#include <algorithm>
#include <map>
#include <utility>

namespace demo {
namespace {

class Refiner {
public:
    explicit Refiner(Mesh& mesh) : mesh_(mesh) {}

    void cutEachInFour() {
        const std::vector<int> old = std::move(mesh_.facets);
        mesh_.facets.clear();
        for (std::size_t i = 0; i + 2 < old.size(); i += 3) {
            const int ab = middle(old[i], old[i + 1]);
            const int bc = middle(old[i + 1], old[i + 2]);
            const int ca = middle(old[i + 2], old[i]);
            mesh_.facets.insert(mesh_.facets.end(), {old[i], ab, ca, ab, old[i + 1], bc, ca, bc,
                                                     old[i + 2], ab, bc, ca});
        }
    }

private:
    int middle(int a, int b) {
        const auto [place, isNew] = middles_.try_emplace(std::minmax(a, b), -1);
        if (isNew) place->second = appendBetween(mesh_, mesh_, a, b, 0.5);
        return place->second;
    }

    Mesh& mesh_;
    std::map<std::pair<int, int>, int> middles_;
};

}  // namespace

Mesh refineMesh(Mesh mesh, std::size_t facetCount) {
    while (!mesh.facets.empty() && mesh.facets.size() / 3 < facetCount) {
        Refiner(mesh).cutEachInFour();
    }
    return mesh;
}

}  // namespace demo
