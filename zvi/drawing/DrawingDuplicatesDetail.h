#pragma once

#include "zvi/drawing/NetworkDetail.h"

namespace zvi::lib::drawing {

/// A duplicate that stays, and the index of the edge that it lies on.
struct KeptDuplicate {
    Edge edge;
    int original = 0;
};

/// Takes out each edge that runs between the same two places as an earlier one and stays within the snap distance
/// of it. Such edges are counted and become leftovers, or, when `kept` is given, go there with the index that
/// their original has afterwards.
void DropDuplicates(Network &network, std::vector<DrawingCurve> const &curves, std::vector<KeptDuplicate> *kept);

} // namespace zvi::lib::drawing
