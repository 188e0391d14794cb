#pragma once

#include "zvi/drawing/PlaneDetail.h"

#include <vector>

namespace zvi::lib::drawing {

/// Tells which of a fixed set of boxes meet a box: a tree of boxes, packed in the order of a space-filling curve
/// through their middles (Kamel and Faloutsos 1993, with Morton's curve).
class BoxIndex {
public:
    explicit BoxIndex(std::vector<Box> const &boxes);

    /// Fills `out` with the indices of the boxes that meet `query` (touching counts), in an order that depends on the
    /// boxes alone.
    void Find(Box const &query, std::vector<int> &out) const;

private:
    void AddLevels();
    void Visit(std::size_t level, std::size_t first, std::size_t count, Box const &query, std::vector<int> &out) const;

    std::vector<int> m_order;          ///< of the leaves, which box each is
    std::vector<Box> m_boxes;          ///< of the leaves, then of each level above them
    std::vector<std::size_t> m_levels; ///< where each level begins in `m_boxes`, and the end
};

} // namespace zvi::lib::drawing
