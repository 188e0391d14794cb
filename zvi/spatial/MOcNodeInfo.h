#pragma once

namespace zvi::lib {

/// Settings of an octree.
struct MOcNodeInfo {
    /// Sizes, in the unit of length, by which the first object's box is widened in all (half on each side) to become
    /// the root region.
    double sizeX = 100.0; ///< along x
    double sizeY = 100.0; ///< along y
    double sizeZ = 100.0; ///< along z
    /// Objects that a leaf holds before it considers splitting. Below 2, a leaf splits by distance alone.
    int capacity = 32;
};

} // namespace zvi::lib
