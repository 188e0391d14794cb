#pragma once

#include "zvi/core/MArray.h"
#include "zvi/curves/DomainRecords.h"

#include <cassert>
#include <cmath>
#include <cstddef>
#include <utility>

namespace zvi::lib::curves {

/// Two unit vectors whose dot product reaches this (an angle of 0.081 degrees) run along one another. A larger value
/// would let slivers between a boundary and an edge that nearly covers it become domains.
inline constexpr double kRunsAlong = 0.999999;

/// Cosine below which two directions certainly do not run along one another, far from the rounding of `kRunsAlong`.
inline constexpr double kSurelyApart = 0.999998;

/// A vector shorter than this (drawing units) has no direction and is left as it is.
inline constexpr double kNoDirection = 1e-12;

/// A division of one loop is given up after looking at this many domains for each edge of the graph.
inline constexpr long long kDivisionsPerEdge = 10;

/// The other end of an edge of `vtex`.
inline int FarEnd(std::pair<int, int> const &ends, int vtex) {
    assert(ends.first == vtex || ends.second == vtex);
    return ends.first == vtex ? ends.second : ends.first;
}

/// A list of `count` entries that are to be filled.
inline MArray<int> ListOf(std::size_t count) {
    MArray<int> list;
    list.Reserve(count);
    list.Resize(count);
    return list;
}

/// Unit vector from `from` to `to`; the plain difference when that is shorter than `kNoDirection`.
inline DM_VTEX UnitVector(DM_VTEX const &from, DM_VTEX const &to) {
    DM_VTEX vector{to.x - from.x, to.y - from.y};
    double const length = std::sqrt(vector.x * vector.x + vector.y * vector.y);
    if (!(length < kNoDirection)) {
        vector.x /= length;
        vector.y /= length;
    }
    return vector;
}

inline double Dot(DM_VTEX const &a, DM_VTEX const &b) {
    return a.x * b.x + a.y * b.y;
}

inline bool RunsAlong(DM_VTEX const &a, DM_VTEX const &b) {
    return Dot(a, b) >= kRunsAlong;
}

} // namespace zvi::lib::curves
