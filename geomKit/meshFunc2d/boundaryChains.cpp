#include "geomKit/meshFunc2d/boundaryChains.h"

#include <algorithm>
#include <cstddef>

namespace {

constexpr int kNone = -1;

std::size_t at(int i) {
    return static_cast<std::size_t>(i);
}

/// The half-edges not cancelled so far, in one short linked list a vertex: that of the smaller end.
/// An edge waits in one direction only, since the other one cancels it.
class OpenEdges {
public:
    struct Edge {
        int from;
        int to;
        int facet;
        int next;
    };

    explicit OpenEdges(int vertexCount) : heads_(at(vertexCount), kNone) {}

    /// Cancels a waiting to->from; otherwise records from->to, in place of an earlier one.
    void add(int from, int to, int facet) {
        int& head = heads_[at((std::min)(from, to))];
        for (int* link = &head; *link != kNone; link = &edges_[at(*link)].next) {
            Edge& edge = edges_[at(*link)];
            if (edge.from == to && edge.to == from) {
                const int removed = *link;
                *link = edge.next;
                edge.next = free_;
                free_ = removed;
                return;
            }
            if (edge.from == from && edge.to == to) {
                edge.facet = facet;
                return;
            }
        }
        head = store({from, to, facet, head});
    }

    template <typename Visitor>
    void visit(Visitor&& visitor) const {
        for (const int head : heads_) {
            for (int e = head; e != kNone; e = edges_[at(e)].next)
                visitor(edges_[at(e)]);
        }
    }

private:
    int store(const Edge& edge) {
        if (free_ == kNone) {
            edges_.push_back(edge);
            return static_cast<int>(edges_.size()) - 1;
        }
        const int slot = free_;
        free_ = edges_[at(slot)].next;
        edges_[at(slot)] = edge;
        return slot;
    }

    std::vector<int> heads_;
    std::vector<Edge> edges_;
    int free_ = kNone;
};

/// Half-edges grouped by source vertex, each group by ascending target, taken one after the other.
class OutgoingEdges {
public:
    struct Target {
        int vertex;
        int facet;
    };

    OutgoingEdges(const OpenEdges& open, int vertexCount)
        : next_(at(vertexCount) + 1, 0), end_(at(vertexCount)) {
        open.visit([this](const OpenEdges::Edge& e) { ++next_[at(e.from) + 1]; });
        for (std::size_t v = 1; v < next_.size(); ++v)
            next_[v] += next_[v - 1];
        targets_.resize(at(next_.back()));
        std::copy(next_.begin(), next_.end() - 1, end_.begin());
        open.visit([this](const OpenEdges::Edge& e) {
            targets_[at(end_[at(e.from)]++)] = {e.to, e.facet};
        });
        for (std::size_t v = 0; v < end_.size(); ++v) {
            std::sort(targets_.begin() + next_[v], targets_.begin() + end_[v],
                      [](const Target& a, const Target& b) { return a.vertex < b.vertex; });
        }
    }

    bool has(int v) const { return next_[at(v)] < end_[at(v)]; }
    const Target& take(int v) { return targets_[at(next_[at(v)]++)]; }

private:
    std::vector<int> next_;
    std::vector<int> end_;
    std::vector<Target> targets_;
};

}  // namespace

std::vector<BoundaryChain> findBoundaryChains(const std::vector<int>& facets, int vertexCount) {
    OpenEdges open(vertexCount);
    const auto isVertex = [vertexCount](int i) { return i >= 0 && i < vertexCount; };
    for (std::size_t i = 0; i + 2 < facets.size(); i += 3) {
        const int v[3] = {facets[i], facets[i + 1], facets[i + 2]};
        if (!isVertex(v[0]) || !isVertex(v[1]) || !isVertex(v[2])) continue;
        const int facet = static_cast<int>(i / 3);
        open.add(v[0], v[1], facet);
        open.add(v[1], v[2], facet);
        open.add(v[2], v[0], facet);
    }

    OutgoingEdges outgoing(open, vertexCount);
    std::vector<BoundaryChain> chains;
    for (int start = 0; start < vertexCount; ++start) {
        while (outgoing.has(start)) {
            BoundaryChain chain;
            chain.vertices.push_back(start);
            for (int v = start; outgoing.has(v);) {
                const OutgoingEdges::Target& target = outgoing.take(v);
                chain.vertices.push_back(target.vertex);
                chain.facets.push_back(target.facet);
                v = target.vertex;
            }
            chains.push_back(std::move(chain));
        }
    }
    return chains;
}
