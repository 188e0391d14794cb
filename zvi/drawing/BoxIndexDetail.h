#pragma once

#include "zvi/drawing/NetworkDetail.h"

#include <cstdint>
#include <vector>

namespace zvi::lib::drawing {

/// Tells which of a fixed set of boxes meet a box.
class BoxIndex {
public:
    explicit BoxIndex(std::vector<Box> someBoxes);

    /// Fills `out` with the indices of the boxes that meet `query` (touching counts), in an order that depends on the
    /// boxes alone.
    void Find(Box const &query, std::vector<int> &out) const;

private:
    struct Node {
        Box box;
        int first = 0, count = 0; ///< children, or items where `isLeaf`
        bool isLeaf = false;
    };

    std::vector<Box> boxes;
    std::vector<int> order;
    std::vector<Node> nodes; ///< the root comes last
};

} // namespace zvi::lib::drawing
