#pragma once

#include "zvi/drawing/LandmarksDetail.h"

#include <algorithm>
#include <cassert>
#include <vector>

namespace zvi::lib::drawing {

/// Distances that differ by less are the same: by what rounding may make of them, and what makes no difference to the
/// tolerance. It follows the size of the drawing where that tells more than rounding does, so that it stays what it is
/// when the drawing is moved.
inline double SameDistance(double tolerance, double snap, Landmarks const &landmarks) {
    constexpr double kInSnaps = 16.0, kInSizes = 1e-10, kInTolerances = 1e-6, kAtMostInTolerances = 1e-2;
    return std::max({kInSnaps * snap, kInTolerances * tolerance,
                     std::min(kInSizes * landmarks.size, kAtMostInTolerances * tolerance)});
}

/// Borders farther from one another than so many snap distances have not changed places by rounding.
inline constexpr double kMovedInSnaps = 64.0;

/// A distance in steps that rounding hardly ever changes; what is the same is above 0.
inline double StepsOf(double distance, double same) {
    assert(same > 0.0);
    constexpr double kStep = 64.0;
    return std::round(distance / (kStep * same));
}

/// Something of some length at some place, in the order in which short things are dealt with.
struct Measured {
    int kind = 0; ///< the lower ones come first
    double length = 0.0;
    double rank = 0.0; ///< by the landmarks
    DrawingPoint place;
    int number = 0;      ///< the caller's
    double spread = 0.0; ///< by how much the ranks of its two ends differ, where it has two
};

/// Sorts by kind and length. Lengths that follow one another by less than `same` are equal, and such ties are settled
/// by where the things lie in the drawing, so that turning it or ordering its curves anew does not change them.
void SortShortestFirst(std::vector<Measured> &things, double same);

} // namespace zvi::lib::drawing
