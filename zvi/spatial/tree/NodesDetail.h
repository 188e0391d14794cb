#pragma once

#include "zvi/spatial/tree/DeletionDetail.h"
#include "zvi/spatial/tree/InsertionDetail.h"
#include "zvi/spatial/tree/SearchDetail.h"

namespace zvi::lib::spatial {

/// The making, copying and end of a node.
template <typename Space>
struct Nodes {
    using Node = typename Space::Node;
    using Of = Access<Space>;

    /// No region, no parent, no children.
    static void InitClassMembers(Node &node) {
        Of::SetFamily(node, nullptr);
        Of::SetRegion(node, {});
        Of::ParentOf(node) = nullptr;
        Of::StockOf(node).Recode({}, Of::BoxOf);
    }

    static void Close(Node &node) noexcept {
        if (!Of::ParentOf(node))
            Watch<Space>::LeaveAll(node);
        Removal<Space>::DeleteChild(node);
    }

    static void GetSplitRegion(Node const &node, typename Space::PublicBox *regions) {
        for (int i = 0; i < kPartCount<Space::kDimension>; ++i)
            regions[i] = std::bit_cast<typename Space::PublicBox>(PartOf(Of::RegionOf(node), i));
    }

    static int ChildContaining(Node const &node, Spot<Space::kDimension> const &point) {
        Family<Space> const *const family = Of::FamilyOf(node);
        return family ? PartContaining(family->region, BoxAt(point)) : kPartCount<Space::kDimension>;
    }
};

} // namespace zvi::lib::spatial
