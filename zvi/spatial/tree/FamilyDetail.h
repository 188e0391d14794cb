#pragma once

#include "zvi/spatial/tree/ExtentDetail.h"
#include "zvi/spatial/tree/MemoryDetail.h"
#include "zvi/spatial/tree/StockDetail.h"

#include <cassert>
#include <cstddef>

namespace zvi::lib::spatial {

/// Slabs across the axes, one for each: each object of a pool lies in one of them. Most objects of an inner node are
/// small and lie across one of its mid planes, and most queries miss all slabs.
template <int dimension>
struct Bands {
    Extent<dimension> slabs = Nothing<dimension>();

    void HoldEverything() { slabs = Everything<dimension>(); }

    /// Widens the slab of a mid plane that the box crosses, of the axis along which it is shortest.
    void Add(Extent<dimension> const &box, Extent<dimension> const &region) {
        int across = -1;
        for (int a = 0; a < dimension; ++a) {
            double const mid = Mid(region.min[a], region.max[a]);
            bool const crosses = box.min[a] <= mid && mid <= box.max[a];
            if (crosses && (across < 0 || box.max[a] - box.min[a] < box.max[across] - box.min[across]))
                across = a;
        }
        if (across < 0)
            return HoldEverything();
        slabs.min[across] = std::min(slabs.min[across], box.min[across]);
        slabs.max[across] = std::max(slabs.max[across], box.max[across]);
    }

    /// Whether a query with these bounds misses all slabs.
    bool AreMissed(Extent<dimension> const &bounds) const {
        return (Below<dimension>(slabs.max, bounds.min) | Below<dimension>(bounds.max, slabs.min)) ==
               kAllAxes<dimension>;
    }
};

/// Stands in front of the children of a node and has of each what the way down asks for, so that no node itself is
/// touched on it.
template <typename Space>
struct alignas(64) Family {
    static constexpr int kCount = kPartCount<Space::kDimension>;

    using Node = typename Space::Node;

    explicit Family(Extent<Space::kDimension> const &cut) : region(cut) {}

    /// The family of the first of its nodes.
    static Family &Of(Node *firstChild) {
        assert(firstChild);
        return *(reinterpret_cast<Family *>(firstChild) - 1);
    }
    static Family const &Of(Node const *firstChild) {
        assert(firstChild);
        return *(reinterpret_cast<Family const *>(firstChild) - 1);
    }

    Node *Nodes() { return reinterpret_cast<Node *>(this + 1); }
    Node const *Nodes() const { return reinterpret_cast<Node const *>(this + 1); }

    /// The regions of the children are the parts of this one to the last bit. It can differ from that of their parent
    /// by a rounding, when doubling has made the parent anew around them.
    Extent<Space::kDimension> region;
    /// The families of the children's own children, null for leaves. With the region in one cache line, in the plane:
    /// that is what the way down reads.
    Family *families[kCount] = {};
    /// Where the objects of the parent's pool lie.
    Bands<Space::kDimension> bands;
    /// What stands behind the children's pools.
    Stock<Space> stocks[kCount];

    /// With the nodes, up to the next cache line.
    static constexpr std::size_t kBytes =
        (sizeof(Family) + kCount * sizeof(Node) + alignof(Family) - 1) / alignof(Family) * alignof(Family);
};

} // namespace zvi::lib::spatial
