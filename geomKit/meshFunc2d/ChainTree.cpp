#include "geomKit/meshFunc2d/ChainTree.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

#include "geomKit/internal/nearestFirst.h"
#include "geomKit/internal/toIndex.h"

namespace geomKit::detail {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
/// A chain must be nearer than this, squared and strictly, to be extrapolated from.
constexpr double kFarthestSq = 1e13;
constexpr int kChainsPerLeaf = 4;
/// Bounds the relative rounding of a foot's coordinates and of a squared distance, several times
/// over.
constexpr double kRounding = 0x1p-48;

}  // namespace

ChainTree::ChainTree(const Chains& chains) : order_(chains.size()) {
    if (chains.empty()) return;
    std::iota(order_.begin(), order_.end(), 0);
    std::vector<Box> boxes;
    boxes.reserve(chains.size());
    for (const auto& chain : chains)
        boxes.push_back(iBoxOf(*chain));
    iAddNode(boxes, 0, static_cast<int>(chains.size()));
}

ChainTree::Box ChainTree::iBoxOf(const PolylineProjector& chain) {
    Box box = {Point(kInfinity, kInfinity), Point(-kInfinity, -kInfinity)};
    for (const Vector3& p : chain.points) {
        // The foot on a segment that is not finite may be anywhere.
        if (!std::isfinite(p.x) || !std::isfinite(p.y)) {
            return {Point(-kInfinity, -kInfinity), Point(kInfinity, kInfinity)};
        }
        for (int k = 0; k < 2; ++k) {
            box.low[k] = (std::min)(box.low[k], p[k]);
            box.high[k] = (std::max)(box.high[k], p[k]);
        }
    }
    // The rounding of a foot is relative to both ends of its segment, so a foot beside a vertex
    // near 0 may be rounded by more than the size of that vertex.
    for (int k = 0; k < 2; ++k) {
        const double margin = kRounding * (std::max)(std::abs(box.low[k]), std::abs(box.high[k]));
        box.low[k] -= margin;
        box.high[k] += margin;
    }
    return box;
}

void ChainTree::iAddNode(const std::vector<Box>& boxes, int first, int last) {
    const std::size_t index = nodes_.size();
    nodes_.emplace_back();
    Node node;
    node.box = boxes[toIndex(order_[toIndex(first)])];
    for (int i = first; i < last; ++i) {
        const Box& box = boxes[toIndex(order_[toIndex(i)])];
        for (int k = 0; k < 2; ++k) {
            node.box.low[k] = (std::min)(node.box.low[k], box.low[k]);
            node.box.high[k] = (std::max)(node.box.high[k], box.high[k]);
        }
    }
    if (last - first <= kChainsPerLeaf) {
        node.first = first;
        node.count = last - first;
    } else {
        const Point extent = node.box.high - node.box.low;
        const int axis = extent.u >= extent.v ? 0 : 1;
        const auto centre = [&boxes, axis](int chain) {
            const double c = boxes[toIndex(chain)].low[axis] + boxes[toIndex(chain)].high[axis];
            return std::isfinite(c) ? c : 0.0;
        };
        const int middle = first + (last - first) / 2;
        std::nth_element(order_.begin() + first, order_.begin() + middle, order_.begin() + last,
                         [&centre](int a, int b) { return centre(a) < centre(b); });
        iAddNode(boxes, first, middle);
        node.secondHalf = static_cast<int>(nodes_.size());
        iAddNode(boxes, middle, last);
    }
    nodes_[index] = node;
}

/// One query.
class ChainTree::Search {
public:
    Search(const ChainTree& tree, const Chains& chains, const Point& p)
        : tree_(tree), chains_(chains), q_(p.u, p.v, 0.0) {}

    Nearest run() {
        visitNearestFirst(0, *this);
        return nearest_;
    }

    bool isLeaf(int node) const { return iNode(node).count != 0; }
    std::pair<int, int> halves(int node) const { return {node + 1, iNode(node).secondHalf}; }
    double boundOf(int node) const {
        const Box& box = iNode(node).box;
        const double du = (std::max)({0.0, box.low.u - q_.x, q_.x - box.high.u});
        const double dv = (std::max)({0.0, box.low.v - q_.y, q_.y - box.high.v});
        return (du * du + dv * dv) * (1.0 - kRounding);
    }
    double best() const { return best_; }
    void visit(int leaf) {
        const Node& node = iNode(leaf);
        for (int i = node.first; i < node.first + node.count; ++i)
            iAsk(tree_.order_[toIndex(i)]);
    }

private:
    const Node& iNode(int node) const { return tree_.nodes_[toIndex(node)]; }

    void iAsk(int chain) {
        if (chains_[toIndex(chain)] == nullptr) return;  // the caller's edit
        const PolylineProjection foot = chains_[toIndex(chain)]->nearest(q_);
        const Vector3 d = foot.point - q_;
        const double distanceSq = d.y * d.y + d.x * d.x + d.z * d.z;
        if (distanceSq < best_ || (distanceSq == best_ && chain < nearest_.chain)) {
            best_ = distanceSq;
            nearest_ = {chain, foot.segment};
        }
    }

    const ChainTree& tree_;
    const Chains& chains_;
    const Vector3 q_;
    double best_ = kFarthestSq;
    Nearest nearest_;
};

ChainTree::Nearest ChainTree::nearest(const Point& p, const Chains& chains) const {
    if (nodes_.empty() || chains.size() != order_.size()) return {};
    return Search(*this, chains, p).run();
}

}  // namespace geomKit::detail
