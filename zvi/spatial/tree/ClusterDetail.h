#pragma once

#include "zvi/spatial/tree/ExtentDetail.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace zvi::lib::spatial {

/// What is known of an overfull leaf whose objects lie in one part of it, so that the next object need not look at all
/// of them again: that part, a box around the centres, and how many objects it holds for.
template <int dimension>
struct Cluster {
    int part;
    Extent<dimension> centres;
    std::size_t count = 1;

    Cluster(int ofPart, Spot<dimension> const &centre) : part(ofPart) {
        std::copy_n(centre.at, dimension, centres.min);
        std::copy_n(centre.at, dimension, centres.max);
    }

    void Add(Spot<dimension> const &centre) {
        ++count;
        for (int a = 0; a < dimension; ++a) {
            centres.min[a] = std::min(centres.min[a], centre[a]);
            centres.max[a] = std::max(centres.max[a], centre[a]);
        }
    }

    /// Whether it is true of an object of a leaf with this region.
    bool Holds(Extent<dimension> const &region, Extent<dimension> const &box) const {
        Spot<dimension> const centre = CentreOf(box);
        for (int a = 0; a < dimension; ++a) {
            if (centre[a] < centres.min[a] || centre[a] > centres.max[a])
                return false;
        }
        return PartContaining(region, box) == part;
    }

    /// A distance that none of the centres exceeds, by the same roundings as their own distances.
    double FarthestFrom(Spot<dimension> const &point) const {
        Spot<dimension> farthest;
        for (int a = 0; a < dimension; ++a)
            farthest[a] = std::max(std::fabs(centres.min[a] - point[a]), std::fabs(centres.max[a] - point[a]));
        return Length(farthest);
    }
};

} // namespace zvi::lib::spatial
