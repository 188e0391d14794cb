#pragma once

#include "zvi/drawing/PlaneDetail.h"

#include <cstdint>
#include <vector>

namespace zvi::lib::drawing {

/// Points with numbers, found by position in a grid of square cells.
class PlaceIndex {
public:
    /// `reach` is the largest distance that searches will be asked for, `expected` about how many places there will be.
    PlaceIndex(double reach, std::size_t expected);

    std::vector<DrawingPoint> const &Places() const { return m_places; }

    /// The place nearest to `p` and nearer than `distance`, or at the very same coordinates; -1 if there is none.
    /// Of two places equally near the earlier one is taken.
    int Nearest(DrawingPoint p, double distance) const;

    /// Adds a place at `p`, whatever is near.
    int Add(DrawingPoint p);

    /// The place found by Nearest, or a new one.
    int NearestOrAdd(DrawingPoint p, double distance);

    /// Calls `look(place, distance)` for each place nearer to `p` than `distance`, in no fixed order.
    template <typename Look>
    void ForEachNear(DrawingPoint p, double distance, Look look) const {
        Range const range = RangeAround(p, distance);
        for (double y = range.y0; y <= range.y1; ++y)
            for (double x = range.x0; x <= range.x1; ++x)
                for (int i = FirstIn(x, y); i >= 0; i = m_next[At(i)])
                    if (double const d = Distance(m_places[At(i)], p); d < distance)
                        look(i, d);
    }

private:
    struct Cell {
        double x = 0.0, y = 0.0;
        int first = -1; ///< latest place of the cell, -1 in an empty slot
    };
    /// Cells, by the whole numbers of their corners; at most two each way.
    struct Range {
        double x0, y0, x1, y1;
    };

    Range RangeAround(DrawingPoint p, double distance) const;
    std::size_t SlotOf(double x, double y) const;
    int FirstIn(double x, double y) const { return m_cells[SlotOf(x, y)].first; }
    void Grow();

    std::vector<DrawingPoint> m_places;
    std::vector<Cell> m_cells;
    std::vector<int> m_next; ///< earlier place of the same cell
    std::size_t m_used = 0;
    double m_inverseSize;
};

} // namespace zvi::lib::drawing
