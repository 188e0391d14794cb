#pragma once

#include "zvi/drawing/NetworkDetail.h"

#include <cstdint>
#include <vector>

namespace zvi::lib::drawing {

/// Finds places by position. It refers to the array of places and registers those that it is told of.
class PlaceIndex {
public:
    /// `snap` is the largest distance that Nearest will be asked for.
    PlaceIndex(std::vector<DrawingPoint> &places, double snap);

    /// The place nearest to `p` and nearer than `distance`, or at the very same coordinates; -1 if there is none.
    /// Of two places equally near the earlier one is taken.
    int Nearest(DrawingPoint p, double distance) const;

    /// Adds a place at `p`, whatever is near.
    int Add(DrawingPoint p);

    /// The place found by Nearest, or a new one.
    int NearestOrAdd(DrawingPoint p, double distance);

    /// Registers all places anew after some have moved.
    void Rebuild();

private:
    struct Cell {
        double x = 0.0, y = 0.0;
        int first = -1; ///< latest place of the cell, -1 in an empty slot
    };

    std::size_t SlotOf(double x, double y) const;
    void Register(int place);
    void Grow();
    void Search(double cellX, double cellY, DrawingPoint p, double &best, int &found) const;

    std::vector<DrawingPoint> &places;
    std::vector<Cell> cells;
    std::vector<int> next; ///< earlier place of the same cell
    std::size_t used = 0;
    double inverseSize;
};

} // namespace zvi::lib::drawing
