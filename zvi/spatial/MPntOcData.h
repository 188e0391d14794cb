#pragma once

#include "zvi/core/MVector.h"

#include <cstdint>

namespace zvi::lib {

/// A point of an `MPntOcTree`. While it is in a tree its fields are the tree's own: who writes to them leaves the tree
/// inconsistent.
struct MPntOcData {
    std::uint64_t key = 0;       ///< unlike all others of the tree
    MVector<double, 3> position; ///< where it lies
};

} // namespace zvi::lib
