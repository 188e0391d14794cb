#pragma once

#include "zvi/Export.h"
#include "zvi/core/MList.h"
#include "zvi/spatial/ICalcDist.h"

#include <cstdint>

namespace zvi::lib {

/// What every index of points does: it takes values, usually numbers of points, and finds those near a point. Points
/// are three adjacent coordinates. The order of the virtual operations is fixed, because client code is compiled
/// against it. What each does is told by the classes that fulfil it.
class ZVI_API IPointSpatialIndex {
public:
    /// Stores a value in the cell with these steps along x, y and z: 1, or 0 when there is no such cell.
    virtual int Insert(int i, int j, int k, std::uint64_t value) = 0;
    /// Stores a value in the cell of the point: 1, or 0 when there is no such cell.
    virtual int Insert(double const *const point, std::uint64_t value) = 0;
    /// Takes a value out of the cell of the point: 1, or 0.
    virtual int Delete(double const *const point, std::uint64_t value) = 0;
    /// The steps along x, y and z of the lowest and the highest cell round a triangle.
    virtual void GetBoxIndexByTriangle(float const *const a, float const *const b, float const *const c, int *const low,
                                       int *const high) const = 0;
    /// The value nearest to the point, or 0.
    virtual std::uint64_t FindNearest(double const *const point, double tol, ICalcDist const *calc) const = 0;
    /// Fills the list with the values within `tol` of the point, and gives their number.
    virtual int FindWithinTol(float const *const point, double tol, MList<std::uint64_t> &list,
                              ICalcDist const *calc) const = 0;
    /// The same for a point in double precision.
    virtual int FindWithinTol(double const *const point, double tol, MList<std::uint64_t> &list,
                              ICalcDist const *calc) const = 0;
    /// 1 if there is a value within `tol` of the point, else 0.
    virtual int ExistDuplicate(double const *const point, double tol, ICalcDist const *calc) const = 0;

protected:
    /// For classes derived from it alone.
    IPointSpatialIndex() = default;
    IPointSpatialIndex(IPointSpatialIndex const &) = default;
    IPointSpatialIndex &operator=(IPointSpatialIndex const &) = default;
    ~IPointSpatialIndex() = default;
};

} // namespace zvi::lib
