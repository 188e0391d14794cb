#pragma once

#include "zvi/drawing/PlaneDetail.h"
#include "zvi/spatial/MQuadTree.h"

#include <vector>

namespace zvi::lib::drawing {

/// Tells which of a fixed set of boxes meet a box, by a quadtree. The tree sees the boxes moved to the origin and
/// scaled to a common extent, so that its own absolute tolerance means the same share of every drawing.
class BoxIndex {
public:
    explicit BoxIndex(std::vector<Box> const &boxes);

    /// Fills `out` with the indices of the boxes that meet `query` (touching counts), in an order that depends on the
    /// boxes alone.
    void Find(Box const &query, std::vector<int> &out);

private:
    MQuadMBR2D Scaled(Box const &box) const;

    std::vector<MQuadObj> objects;
    MQuadTree tree;
    MList<MQuadObj *> hits;
    DrawingPoint origin;
    double scale = 1.0;
};

} // namespace zvi::lib::drawing
