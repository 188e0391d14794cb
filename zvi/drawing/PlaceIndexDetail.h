#pragma once

#include "zvi/base/CellGrid.h"
#include "zvi/drawing/PlaneDetail.h"

#include <cassert>
#include <vector>

namespace zvi::lib::drawing {

/// Points with numbers, found by position.
class PlaceIndex {
public:
    /// `reach` is the largest distance that searches will be asked for.
    explicit PlaceIndex(double reach);

    std::vector<DrawingPoint> const &Places() const { return m_places; }

    /// The place nearest to `p` and nearer than `distance`, or at the very same coordinates; -1 if there is none.
    /// Of two places equally near the earlier one is taken.
    int Nearest(DrawingPoint p, double distance) const;

    /// Has what a search beside `p` looks at first fetched before that.
    void Prefetch(DrawingPoint p) const { m_cells.Prefetch(base::CellKey(Step(p.x), Step(p.y))); }

    /// Adds a place at `p`, whatever is near.
    int Add(DrawingPoint p);

    /// The place found by Nearest, or a new one.
    int NearestOrAdd(DrawingPoint p, double distance);

    /// Calls `look(place, distance)` for each place nearer to `p` than `distance`, in no fixed order; one may
    /// come twice.
    template <typename Look>
    void ForEachNear(DrawingPoint p, double distance, Look look) const {
        ForEachBeside(p, distance, [&](int place) {
            if (double const d = Distance(m_places[Index(place)], p); d < distance)
                look(place, d);
        });
    }

private:
    double Step(double coordinate) const { return base::Floor(coordinate * m_inverseSize); }

    /// Calls `look(place)` for each place of the cells that a square about `p` meets: at most two each way, for no
    /// distance is above the reach.
    template <typename Look>
    void ForEachBeside(DrawingPoint p, double distance, Look look) const {
        double const x0 = Step(p.x - distance), x1 = Step(p.x + distance);
        double const y0 = Step(p.y - distance), y1 = Step(p.y + distance);
        assert(x1 <= x0 + 1.0 && y1 <= y0 + 1.0);
        for (double const y : {y0, y1}) {
            m_cells.ForEach(base::CellKey(x0, y), look);
            if (x1 != x0)
                m_cells.ForEach(base::CellKey(x1, y), look);
            if (y1 == y0)
                break;
        }
    }

    std::vector<DrawingPoint> m_places;
    base::CellGrid m_cells;
    double m_inverseSize;
};

} // namespace zvi::lib::drawing
