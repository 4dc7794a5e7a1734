/// @file
/// A tree of boxes over the boundary chains of a mesh function. Internal to mesh functions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "geomKit/meshFunc2d/vect2.h"
#include "geomKit/queries/PolylineProjector.h"

namespace geomKit::detail {

/// Finds the boundary chain nearest to a point without asking every chain. The chains are sorted
/// into a binary tree of boxes, up to four to a leaf. Queries are const and allocate nothing.
class ChainTree {
public:
    using Point = ktNM::vect2<double>;
    using Chains = std::vector<std::unique_ptr<PolylineProjector>>;

    struct Nearest {
        /// Number of the chain, or -1.
        int chain = -1;
        std::int32_t segment = -1;
    };

    explicit ChainTree(const Chains& chains);

    /// The chain whose foot is nearest to `p` and its segment there; of equally near chains the
    /// first. None when all are at a squared distance of 1e13 or more, or NaN. `chains` are those
    /// that the tree was built for; those that are null now are passed over, and another number of
    /// them has none.
    Nearest nearest(const Point& p, const Chains& chains) const;

private:
    class Search;

    struct Box {
        Point low;
        Point high;
    };
    /// Nodes in preorder: the first half of a node comes right behind it.
    struct Node {
        Box box;
        int secondHalf = 0;
        /// The chains of a leaf are `count` entries of `order_`, from `first` on. An inner node has
        /// none.
        int first = 0;
        int count = 0;
    };

    static Box iBoxOf(const PolylineProjector& chain);
    void iAddNode(const std::vector<Box>& boxes, int first, int last);

    std::vector<int> order_;
    std::vector<Node> nodes_;
};

}  // namespace geomKit::detail
