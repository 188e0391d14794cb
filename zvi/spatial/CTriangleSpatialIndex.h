#pragma once

#include "zvi/Export.h"
#include "zvi/spatial/ICompTri.h"

#include <cstdint>

namespace zvi::lib {

namespace spatial {
class TriangleGrid;
}

/// Triangles of several bodies in the cubic cells of a grid, to find pairs of different bodies that lie within a
/// tolerance of each other: only triangles that share a cell are compared. What a triangle is stays with the caller:
/// the index holds a pointer and the number of its body, its group, and asks an `ICompTri`.
///
/// A triangle is stored in every cell that it touches, grown by the tolerance of its insertion. So no pair within a
/// tolerance is missed whose triangles were inserted with half of it or more, and a little more for the rounding of
/// `float` in which cells are tested, as long as the triangles come near each other within the grid: what lies outside
/// is in no cell, and a triangle wholly outside is not stored.
///
/// An index whose cells cannot be had (where their edge would not be above 0, as for a box that is a point or inside
/// out without a smallest cell, for a box that is not finite, for 2^31 cells and more or more than memory holds) stores
/// and finds nothing. When memory runs short otherwise, `std::bad_alloc` is raised and the index is as it was. One
/// thread per index; a search tells the progress bar of the process.
class ZVI_API CTriangleSpatialIndex {
public:
    /// Lays cells over `box`, the lowest x, y, z and then the highest: the longest extent, enlarged by a hundredth, is
    /// divided by `divisions` (an even one raised by 1), but a cell's edge is not below `minCell`; every axis then has
    /// an odd number of cells, enough for its extent and a margin. Extents are those of the numbers in `double`.
    CTriangleSpatialIndex(float const *box, long divisions, float minCell);
    /// Frees the cells. The items are the caller's.
    virtual ~CTriangleSpatialIndex();
    CTriangleSpatialIndex(CTriangleSpatialIndex const &) = delete;
    CTriangleSpatialIndex &operator=(CTriangleSpatialIndex const &) = delete;

    /// Stores `item` in the cells that touch the triangle `a`, `b`, `c` when they are grown by `tol` on all sides, and
    /// gives their number. 0 for a triangle beside the grid, and for coordinates or a tolerance that are not finite.
    int Insert(float const *a, float const *b, float const *c, int group, float tol, void *item);

    /// The steps along x, y and z of the lowest and the highest cell that the corners reach with `tol`; not 0 if there
    /// are any. With 0 only the axes before the one that failed are written.
    int GetBoxIndexByTriangle(float const *a, float const *b, float const *c, float tol, long *low, long *high) const;

    /// Compares every two triangles of different groups that share a cell, the one stored later first, and reports
    /// those that `comp` finds within `tol`; a pair that shares several cells is compared and reported for each. Cells
    /// come x first and z last. The percentage of cells goes to the progress bar whenever it changes.
    void FindTriWithinTol(float tol, ICompTri *comp);

    /// Writes the triangles of all cells to a file, in the manner of ASCII STL, for people who look for mistakes; one
    /// in several cells comes several times. Nothing happens when the file cannot be opened.
    void WriteIndexedTriangle(wchar_t const *path, ICompTri *comp) const;

    /// Takes all triangles out; the grid stays.
    void RemoveAll();

    /// Triangles in cells: one in several cells counts for each.
    std::int32_t GetItemCount() const;

    /// Whether the grid is as its rules make it and the items are as many as are counted. Walks all cells.
    bool IsConsistent() const;

private:
    spatial::TriangleGrid *m_grid;
};

} // namespace zvi::lib
