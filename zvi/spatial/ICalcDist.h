#pragma once

#include "zvi/Export.h"

#include <cstdint>

namespace zvi::lib {

/// What an application implements to tell a point index how far its points are apart: the index holds values alone,
/// and the coordinates stay where the application has them. Every result is a **squared** distance, because searches
/// compare it with the square of their tolerance; NaN is farther than everything. The order of the virtual operations
/// is fixed, because client code is compiled against it. Concurrent searches call it concurrently.
class ZVI_API ICalcDist {
public:
    /// Squared distance of the points of two stored values. No index of this library asks for it.
    virtual double CalcDist(std::uint64_t value1, std::uint64_t value2) const = 0;
    /// Squared distance of a point of three adjacent coordinates from the point of a stored value.
    virtual double CalcDist(float const *point, std::uint64_t value) const = 0;
    /// The same for a point in double precision.
    virtual double CalcDist(double const *point, std::uint64_t value) const = 0;

protected:
    /// For classes derived from it alone.
    ICalcDist() = default;
    ICalcDist(ICalcDist const &) = default;
    ICalcDist &operator=(ICalcDist const &) = default;
    ~ICalcDist() = default;
};

} // namespace zvi::lib
