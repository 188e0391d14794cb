#pragma once

#include "zvi/Export.h"
#include "zvi/spatial/IPointSpatialIndex.h"
#include "zvi/spatial/MPointSpatialIndex.h"

namespace zvi::lib {

namespace spatial {
class HashPointGrid;
}

/// Values in the cubic cells of a grid over a box that is known beforehand, found near a point. The grid holds no
/// coordinates: an `ICalcDist` of the caller knows where the values are. A value may be stored several times.
///
/// Cells count x fastest and z slowest, and the number of a cell alone decides whether it exists: a point beyond the
/// end of a row is stored in the next row, and one less than a cell below the origin in the first cell of its row.
/// Searches look at the cells that the cube of half edge `tol` around the point meets, z outermost and x innermost, and
/// in a cell at the value stored last first; so they find a value only where its cell is one of them.
///
/// Call `SetBoundaryAndDivision` first; an index without a grid stores and finds nothing. Searches do not change the
/// index and may run on several threads at once; anything else needs it alone. When memory runs short `Insert` raises
/// `std::bad_alloc` and the searches that fill a list `MStatusError`; the index stays as it was.
///
/// Copying is shallow, deliberately: a copy shares the grid, and the destructor of each deletes it. Whoever copies an
/// index sees to it that exactly one of the copies is destroyed, the last one in use.
class ZVI_API MHashPointSpatialIndex : public MPointSpatialIndex, public IPointSpatialIndex {
public:
    /// No grid.
    MHashPointSpatialIndex() = default;
    /// Shares the grid, see above.
    MHashPointSpatialIndex(MHashPointSpatialIndex const &other) = default;
    /// Likewise; a grid that this index had is not deleted.
    MHashPointSpatialIndex &operator=(MHashPointSpatialIndex const &other) = default;
    /// Deletes the grid.
    ~MHashPointSpatialIndex() override;

    IPointSpatialIndex *GetInterface() override;

    /// Lays a grid over the box from `minimum` to `maximum`: its longest extent, enlarged by a thousandth, is divided
    /// by `division`, an even one raised by 1; every axis then has an odd number of cells, enough for its extent and a
    /// margin, and the middle cell lies on the middle of the box. Call it once: a grid that is there already is not
    /// deleted, since a copy may be using it. A box that is a point, inside out by a cell or more on any axis, or not
    /// finite leaves the index without a grid, as does one of 2^32 cells and more or of more than memory holds.
    void SetBoundaryAndDivision(double const *const minimum, double const *const maximum, int division);

    /// Takes all values out; the grid stays.
    void RemoveAll();

    int Insert(int i, int j, int k, std::uint64_t value) override;
    int Insert(double const *const point, std::uint64_t value) override;

    /// Takes out the value that was stored last among equal ones of the cell: 1; 0 when the cell does not hold it.
    int Delete(double const *const point, std::uint64_t value) override;

    /// Each step of a corner lowers `low`, which begins at the last cell, and raises `high`, which begins at 0; then
    /// `low` is raised to 0 and `high` lowered to the last cell. Nothing else is limited, so that a triangle beside
    /// the grid gets cells of its border. Without a grid `high` is -1.
    void GetBoxIndexByTriangle(float const *const a, float const *const b, float const *const c, int *const low,
                               int *const high) const override;

    /// The value with the smallest distance, if that is below `tol`; among equal ones the first that is met. 0 for
    /// none, which a stored 0 cannot be told from.
    std::uint64_t FindNearest(double const *const point, double tol, ICalcDist const *calc) const override;

    /// The list is emptied first. A distance of exactly `tol` counts, unlike in `FindNearest`. The values come in the
    /// order in which they are met.
    int FindWithinTol(float const *const point, double tol, MList<std::uint64_t> &list,
                      ICalcDist const *calc) const override;
    int FindWithinTol(double const *const point, double tol, MList<std::uint64_t> &list,
                      ICalcDist const *calc) const override;

    /// A distance of exactly `tol` counts.
    int ExistDuplicate(double const *const point, double tol, ICalcDist const *calc) const override;

    /// Whether the grid is as its rules make it and each stored value is in one cell. Walks all cells; an index without
    /// a grid is consistent.
    bool IsConsistent() const;

private:
    spatial::HashPointGrid *m_grid = nullptr;
};

} // namespace zvi::lib
