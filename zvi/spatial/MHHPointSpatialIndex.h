#pragma once

#include "zvi/Export.h"
#include "zvi/spatial/IPointSpatialIndex.h"
#include "zvi/spatial/MPointSpatialIndex.h"

namespace zvi::lib {

namespace spatial {
class FineHashPointGrid;
}

/// The grid of `MHashPointSpatialIndex` with a finer place of each value beside it, a 1024th of each axis, by which
/// `FindNearest` passes over most values without asking for their distance. It is made for that search and offers no
/// other: `FindWithinTol` and `ExistDuplicate` do nothing, deliberately.
///
/// What is said there of cells, grids, threads, memory and shallow copies holds here too.
class ZVI_API MHHPointSpatialIndex : public MPointSpatialIndex, public IPointSpatialIndex {
public:
    /// No grid.
    MHHPointSpatialIndex() = default;
    /// Shares the grid: exactly one of the copies may be destroyed.
    MHHPointSpatialIndex(MHHPointSpatialIndex const &other) = default;
    /// Likewise; a grid that this index had is not deleted.
    MHHPointSpatialIndex &operator=(MHHPointSpatialIndex const &other) = default;
    /// Deletes the grid.
    ~MHHPointSpatialIndex() override;

    IPointSpatialIndex *GetInterface() override;

    /// As in `MHashPointSpatialIndex`.
    void SetBoundaryAndDivision(double const *const minimum, double const *const maximum, int division);

    /// Takes all values out; the grid stays.
    void RemoveAll();

    /// The fine place of the value is the low corner of the cell.
    int Insert(int i, int j, int k, std::uint64_t value) override;
    int Insert(double const *const point, std::uint64_t value) override;

    /// Takes the value out if it is the one that was stored last in the cell of the point: 1. The cell is not searched:
    /// in all other cases the result is 0 and nothing changes, also when the value lies deeper in the cell. Whoever
    /// takes values out in the opposite order of their insertion finds every one.
    int Delete(double const *const point, std::uint64_t value) override;

    /// As in `MHashPointSpatialIndex`.
    void GetBoxIndexByTriangle(float const *const a, float const *const b, float const *const c, int *const low,
                               int *const high) const override;

    /// The value with the smallest distance among those whose fine place meets the cube of half edge `tol` around the
    /// point, if it is below the square root of 2 times `tol`: a value beyond `tol` may come out, deliberately. Among
    /// equal ones the first that is met. 0 for none, which a stored 0 cannot be told from.
    std::uint64_t FindNearest(double const *const point, double tol, ICalcDist const *calc) const override;

    /// 0; the list stays as it is.
    int FindWithinTol(float const *const point, double tol, MList<std::uint64_t> &list,
                      ICalcDist const *calc) const override;
    int FindWithinTol(double const *const point, double tol, MList<std::uint64_t> &list,
                      ICalcDist const *calc) const override;
    /// 0.
    int ExistDuplicate(double const *const point, double tol, ICalcDist const *calc) const override;

    /// As in `MHashPointSpatialIndex`.
    bool IsConsistent() const;

private:
    spatial::FineHashPointGrid *m_grid = nullptr;
};

} // namespace zvi::lib
