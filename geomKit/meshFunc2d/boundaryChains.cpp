#include "geomKit/meshFunc2d/boundaryChains.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "geomKit/internal/toIndex.h"

namespace geomKit::detail {

namespace {

/// A half-edge as seen from one of its ends.
struct Spoke {
    int otherEnd;
    /// Where in the facets it starts, which tells its facet and its direction.
    int position;
};

/// Spokes by vertex, those of a vertex by other end and position.
class SpokesByVertex {
public:
    explicit SpokesByVertex(int vertexCount) : ends_(toIndex(vertexCount) + 1, 0) {}

    /// The sort is a counting sort: every spoke is announced first, and put after `allocate`.
    void announce(int vertex) { ++ends_[toIndex(vertex) + 1]; }
    void allocate() {
        for (std::size_t v = 1; v < ends_.size(); ++v)
            ends_[v] += ends_[v - 1];
        spokes_.resize(toIndex(ends_.back()));
    }
    /// Leaves `ends_[v]` behind the spokes of v.
    void put(int vertex, const Spoke& spoke) { spokes_[toIndex(ends_[toIndex(vertex)]++)] = spoke; }
    void sort() {
        for (int v = 0; toIndex(v) + 1 < ends_.size(); ++v) {
            std::sort(begin(v), end(v), [](const Spoke& a, const Spoke& b) {
                return a.otherEnd != b.otherEnd ? a.otherEnd < b.otherEnd : a.position < b.position;
            });
        }
    }

    Spoke* begin(int v) { return spokes_.data() + (v == 0 ? 0 : ends_[toIndex(v) - 1]); }
    Spoke* end(int v) { return spokes_.data() + ends_[toIndex(v)]; }

private:
    std::vector<int> ends_;
    std::vector<Spoke> spokes_;
};

class BoundaryFinder {
public:
    BoundaryFinder(const std::vector<int>& facets, int vertexCount)
        : facets_(facets), vertexCount_(vertexCount) {}

    std::vector<BoundaryChain> run() { return iWalk(iBoundaryEdges()); }

private:
    int iFrom(int position) const { return facets_[toIndex(position)]; }
    int iTo(int position) const {
        return facets_[toIndex(position % 3 == 2 ? position - 2 : position + 1)];
    }
    bool iIsVertex(int v) const { return v >= 0 && v < vertexCount_; }

    template <typename Visitor>
    void iForEachHalfEdge(Visitor&& visit) const {
        for (int i = 0; toIndex(i) + 2 < facets_.size(); i += 3) {
            if (!iIsVertex(iFrom(i)) || !iIsVertex(iFrom(i + 1)) || !iIsVertex(iFrom(i + 2)))
                continue;
            for (int k = i; k < i + 3; ++k)
                visit(k);
        }
    }

    /// Half-edges that are not cancelled, by position. The half-edges of an edge are taken in
    /// order. One whose opposite waits cancels it; any other waits, instead of the one before.
    std::vector<int> iBoundaryEdges() const {
        SpokesByVertex spokes(vertexCount_);
        iForEachHalfEdge([&](int k) { spokes.announce((std::min)(iFrom(k), iTo(k))); });
        spokes.allocate();
        iForEachHalfEdge([&](int k) {
            const int a = iFrom(k);
            const int b = iTo(k);
            spokes.put((std::min)(a, b), {(std::max)(a, b), k});
        });
        spokes.sort();

        std::vector<int> open;
        for (int v = 0; v < vertexCount_; ++v) {
            const Spoke* const end = spokes.end(v);
            for (const Spoke* spoke = spokes.begin(v); spoke != end;) {
                const int otherEnd = spoke->otherEnd;
                int waiting = -1;
                for (; spoke != end && spoke->otherEnd == otherEnd; ++spoke) {
                    const bool cancels = waiting >= 0 && iFrom(waiting) == iTo(spoke->position) &&
                                         iTo(waiting) == iFrom(spoke->position);
                    waiting = cancels ? -1 : spoke->position;
                }
                if (waiting >= 0) open.push_back(waiting);
            }
        }
        return open;
    }

    std::vector<BoundaryChain> iWalk(const std::vector<int>& edges) const {
        SpokesByVertex outgoing(vertexCount_);
        for (const int k : edges)
            outgoing.announce(iFrom(k));
        outgoing.allocate();
        for (const int k : edges)
            outgoing.put(iFrom(k), {iTo(k), k});
        outgoing.sort();
        std::vector<const Spoke*> next(toIndex(vertexCount_));
        for (int v = 0; v < vertexCount_; ++v)
            next[toIndex(v)] = outgoing.begin(v);

        std::vector<BoundaryChain> chains;
        for (int start = 0; start < vertexCount_; ++start) {
            while (next[toIndex(start)] != outgoing.end(start)) {
                BoundaryChain chain;
                chain.vertices.push_back(start);
                for (int v = start; next[toIndex(v)] != outgoing.end(v);) {
                    const Spoke& taken = *next[toIndex(v)]++;
                    chain.facets.push_back(taken.position / 3);
                    v = taken.otherEnd;
                    chain.vertices.push_back(v);
                }
                chains.push_back(std::move(chain));
            }
        }
        return chains;
    }

    const std::vector<int>& facets_;
    const int vertexCount_;
};

}  // namespace

std::vector<BoundaryChain> findBoundaryChains(const std::vector<int>& facets, int vertexCount) {
    return BoundaryFinder(facets, vertexCount).run();
}

}  // namespace geomKit::detail
