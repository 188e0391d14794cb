#pragma once

namespace zvi::lib {

/// Settings of a quadtree.
struct MQuadNodeInfo {
    /// Width and height, in the unit of length, by which the first object's rectangle is widened in all (half on each
    /// side) to become the root region.
    double width = 100.0;  ///< in x
    double height = 100.0; ///< in y
    /// Objects that a leaf holds before it considers splitting. Below 2, a leaf splits by distance alone.
    int capacity = 128;
};

} // namespace zvi::lib
