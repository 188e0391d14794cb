#pragma once

#include "zvi/base/CellGrid.h"
#include "zvi/curves/GeomRecords.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zvi::lib::curves {

/// Whether the box holds the point, border included.
inline bool Holds(T_REGION2D const &box, T_POINT2D const &p) {
    return !(p.x < box.MinX || p.x > box.MaxX || p.y < box.MinY || p.y > box.MaxY);
}

/// Boxes with a number each, found by a point. A box lies in the cells of a grid whose cells are larger than it is in
/// x and in y, so it is in four of them at most; every size of cells is a level of its own. A query looks at one
/// cell of each level.
class BoxGrid {
public:
    /// The box has finite sides and is not inside out.
    void Insert(T_REGION2D const &box, int number);
    /// Takes out what `Insert` put in; no other box has the number.
    void Remove(T_REGION2D const &box, int number);
    /// Appends the numbers of the boxes that contain the point, border included, in no order; one may come twice.
    void Find(T_POINT2D const &p, std::vector<int> &numbers) const;

private:
    /// A box in one of its cells.
    struct Entry {
        T_REGION2D box;
        int number;
    };
    struct Level {
        int width;        ///< exponent of a cell's width
        int height;       ///< exponent of a cell's height
        double perWidth;  ///< 1 / width of a cell
        double perHeight; ///< 1 / height of a cell
    };

    std::size_t LevelOf(T_REGION2D const &box);
    template <typename Visit>
    void VisitCells(T_REGION2D const &box, Visit visit);

    std::vector<Level> m_levels;
    std::vector<Entry> m_entries;
    base::CellGrid m_cells; ///< entries by their cells
};

} // namespace zvi::lib::curves
