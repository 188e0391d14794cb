#pragma once

#include "zvi/spatial/tree/ExtentDetail.h"

#include <cmath>

namespace zvi::lib::spatial {

/// Margin beside an object for which a leaf's region grows, in widths (along the first axis) of the region.
inline constexpr double kGrowthMargin = 0.25;

/// Rounds after which a region that still does not contain the box is taken as unable to: twice what the whole range of
/// `double` needs by doubling.
inline constexpr int kGrowthRounds = 4200;

/// One half of a round of `ExtendRegion`: `lift(a, amount)` moves a face of axis a outwards. The first axis is compared
/// with each of the others as it was before, so it may move several times, and the region need not come out equal on
/// all axes.
template <int dimension, typename Lift>
void LevelSides(Extent<dimension> const &region, Lift lift) {
    double side[dimension];
    for (int a = 0; a < dimension; ++a)
        side[a] = region.max[a] - region.min[a];
    for (int a = 1; a < dimension; ++a) {
        if (side[0] > side[a])
            lift(a, side[0] - side[a]);
        else
            lift(0, side[a] - side[0]);
    }
}

/// The region, which belongs to a leaf, grows beyond the box with a margin; false when it cannot.
template <int dimension>
bool ExtendRegion(Extent<dimension> &region, Extent<dimension> const &box) {
    int round = 0;
    for (; !Contains(region, box) && round < kGrowthRounds; ++round) {
        double const margin = (region.max[0] - region.min[0]) * kGrowthMargin;
        if (!Contains(region, LowerCorner(box))) {
            for (int a = 0; a < dimension; ++a) {
                if (region.min[a] > box.min[a])
                    region.min[a] = box.min[a] - margin;
            }
            LevelSides(region, [&](int a, double amount) { region.min[a] -= amount; });
        }
        if (!Contains(region, UpperCorner(box))) {
            for (int a = 0; a < dimension; ++a) {
                if (box.max[a] >= region.max[a])
                    region.max[a] = margin + box.max[a];
            }
            LevelSides(region, [&](int a, double amount) { region.max[a] += amount; });
        }
    }
    return round < kGrowthRounds;
}

/// Doubles the region towards the point and gives the part of the new region that the old one is. Along the first axis
/// a point within the region makes it grow upwards, along the others downwards.
template <int dimension>
int DoubleRegion(Extent<dimension> &region, Spot<dimension> const &point) {
    int corner = 0;
    for (int a = 0; a < dimension; ++a) {
        double const side = region.max[a] - region.min[a];
        double const at = point[a];
        bool const isDownwards = a == 0 ? at < region.min[a] : at < region.max[a];
        if (isDownwards) {
            region.min[a] -= side;
            corner |= 1 << a;
        } else {
            region.max[a] += side;
        }
    }
    return corner;
}

/// A region without a side never grows by doubling, and one beyond the numbers is no region.
template <int dimension>
bool CanDouble(Extent<dimension> const &region) {
    for (int a = 0; a < dimension; ++a) {
        double const side = region.max[a] - region.min[a];
        if (!(side > 0.0) || !std::isfinite(side))
            return false;
    }
    return true;
}

/// A region that its mid planes no longer divide along any axis; without this test, clusters at the limit of the
/// numbers would split for ever.
template <int dimension>
bool IsIndivisible(Extent<dimension> const &region) {
    for (int a = 0; a < dimension; ++a) {
        double const mid = Mid(region.min[a], region.max[a]);
        if (region.min[a] < mid && mid < region.max[a])
            return false;
    }
    return true;
}

} // namespace zvi::lib::spatial
