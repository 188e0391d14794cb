#pragma once

#include "zvi/core/MArray.h"
#include "zvi/core/MVector.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace zvi::lib::spatial {

/// Distance of two points.
inline double Distance(MVector<double, 3> const &p, MVector<double, 3> const &q) {
    MVector<double, 3> const d = p - q;
    return std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
}

/// Bounds of a cluster of points, a box and a ball, by which one sees at once that all of them are near a place. Points
/// may leave the cluster; the bounds then hold all the same.
class PointCluster {
public:
    /// `child`: the child of its node that every point goes to.
    PointCluster(int child, MArray<MVector<double, 3>> const &positions) : m_child(child) { Measure(positions); }

    int Child() const { return m_child; }

    /// Makes the bounds tight.
    void Measure(MArray<MVector<double, 3>> const &positions) {
        constexpr double kInfinity = std::numeric_limits<double>::infinity();
        m_low = {kInfinity, kInfinity, kInfinity};
        m_high = -m_low;
        m_radius = 0.0;
        for (MVector<double, 3> const &position : positions)
            Widen(position);
        m_center = (m_low + m_high) * 0.5;
        for (MVector<double, 3> const &position : positions)
            m_radius = std::max(m_radius, Distance(position, m_center));
    }

    void Add(MVector<double, 3> const &position) {
        Widen(position);
        m_radius = std::max(m_radius, Distance(position, m_center));
    }

    /// Whether surely no point is as far from `place` as `limit`; false says nothing. What is not a number is not far
    /// from anything.
    bool IsNear(MVector<double, 3> const &place, double limit) const {
        if (std::isnan(place[0]) || std::isnan(place[1]) || std::isnan(place[2]))
            return true;
        /// Part by which the bounds may be too small for the rounding in them.
        constexpr double kRounding = 1e-12;
        MVector<double, 3> corner;
        for (std::size_t axis = 0; axis < 3; ++axis)
            corner[axis] = std::max(std::abs(place[axis] - m_low[axis]), std::abs(place[axis] - m_high[axis]));
        /// Length by which the sum of two distances may fall short of a third where their squares are too small to be
        /// held: three squares lose 7.5e-324 at the most, the root of which each distance may be wrong by.
        constexpr double kUnderflow = 1e-161;
        double const farthest = std::min(Distance(corner, {}), Distance(place, m_center) + m_radius + kUnderflow);
        return farthest * (1.0 + kRounding) < limit;
    }

private:
    void Widen(MVector<double, 3> const &position) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            m_low[axis] = std::min(m_low[axis], position[axis]);
            m_high[axis] = std::max(m_high[axis], position[axis]);
        }
    }

    int m_child;
    MVector<double, 3> m_low;
    MVector<double, 3> m_high;
    MVector<double, 3> m_center;
    double m_radius = 0.0;
};

} // namespace zvi::lib::spatial
