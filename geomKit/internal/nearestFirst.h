/// @file
/// The search of a tree for what is nearest. Internal: not installed.
#pragma once

#include <utility>

namespace geomKit::detail {

/// Visits those leaves of a binary tree that may hold what is nearest, the nearer half of each node
/// first. `Search` has these members:
///
///     bool isLeaf(const Node&) const;
///     std::pair<Node, Node> halves(const Node&) const;
///     double boundOf(const Node&) const;  // what lies below the node is at least so far
///     double best() const;                // how far the nearest is that was visited so far
///     void visit(const Node& leaf);       // may lower best()
///
/// A node is passed over only when its bound is above `best()`, so the search meets everything that
/// is as near as the nearest, and whatever has a NaN bound. In which order it meets them is not
/// promised: a rule for ties is the matter of `visit`.
///
/// A node stands for an index range of `int`, of which each half has half. That is at most 31
/// halvings, and one node waits at each.
template <typename Node, typename Search>
void visitNearestFirst(const Node& root, Search& search) {
    struct Pending {
        Node node;
        double bound;
    };
    Pending waiting[32];
    int count = 0;
    Pending here = {root, search.boundOf(root)};
    for (;;) {
        if (!(here.bound > search.best())) {
            if (!search.isLeaf(here.node)) {
                const auto [first, second] = search.halves(here.node);
                Pending near = {first, search.boundOf(first)};
                Pending far = {second, search.boundOf(second)};
                if (far.bound < near.bound) std::swap(near, far);
                waiting[count++] = far;
                here = near;
                continue;
            }
            search.visit(here.node);
        }
        if (count == 0) return;
        here = waiting[--count];
    }
}

}  // namespace geomKit::detail
