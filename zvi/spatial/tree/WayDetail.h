#pragma once

#include "zvi/spatial/tree/AccessDetail.h"

namespace zvi::lib::spatial {

/// A place in the tree that is come to from above, by the families alone.
template <typename Space>
struct Way {
    static constexpr int kDimension = Space::kDimension;

    using Node = typename Space::Node;
    using Of = Access<Space>;

    explicit Way(Node &start)
        : node(&start), stock(&Of::StockOf(start)), family(Of::FamilyOf(start)), region(Of::RegionOf(start)) {}

    void Enter(int child) {
        node = family->Nodes() + child;
        stock = &family->stocks[child];
        region = PartOf(family->region, child);
        family = family->families[child];
    }

    /// Goes on to the leaf, or to the inner node none of whose children contains the box.
    void GoToward(Extent<kDimension> const &box) {
        while (family) {
            int const child = PartContaining(family->region, box);
            if (child == kPartCount<kDimension>)
                return;
            Enter(child);
        }
    }

    Node *node;
    Stock<Space> *stock;
    Family<Space> *family; ///< of the children, null in a leaf
    Extent<kDimension> region;
};

} // namespace zvi::lib::spatial
