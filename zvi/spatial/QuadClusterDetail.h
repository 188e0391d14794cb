#pragma once

#include "zvi/spatial/MQuadMBR2D.h"

#include <algorithm>
#include <cmath>

namespace zvi::lib::spatial {

/// What is known of an overfull leaf whose objects lie in one quadrant, so that the next object need not look at all
/// of them again: that quadrant and a box around the centres.
struct QuadCluster {
    int quadrant;
    MQuadMBR2D centres;

    void Add(MQuadPoint2D const &centre) {
        centres = {std::min(centres.minX, centre.x), std::min(centres.minY, centre.y), std::max(centres.maxX, centre.x),
                   std::max(centres.maxY, centre.y)};
    }

    /// A distance that none of the centres exceeds, by the same roundings as their own distances.
    double FarthestFrom(MQuadPoint2D const &point) const {
        double const dx = std::max(std::fabs(centres.minX - point.x), std::fabs(centres.maxX - point.x));
        double const dy = std::max(std::fabs(centres.minY - point.y), std::fabs(centres.maxY - point.y));
        return std::sqrt(dx * dx + dy * dy);
    }
};

} // namespace zvi::lib::spatial
