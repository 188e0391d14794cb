#pragma once

#include "zvi/drawing/StretchDetail.h"

#include <algorithm>
#include <array>
#include <vector>

namespace zvi::lib::drawing {

/// Distances are compared in steps of so many snap distances, which rounding hardly ever changes.
inline constexpr double kStepInSnaps = 1024.0;

/// Two points that move with a drawing: how it is turned, mirrored or ordered does not change where they lie in it.
struct Landmarks {
    std::array<DrawingPoint, 2> points;
    double size = 0.0; ///< mean distance of the curves from the first point, and their mean length on top

    /// Whether things that differ by so much are alike: by less than a ten-thousandth of the drawing.
    bool AreAlike(double difference) const {
        constexpr double kAlike = 1e-4;
        return difference < kAlike * size;
    }

    /// Tells places apart by how far they are from both.
    double Rank(DrawingPoint p) const {
        constexpr double kGoldenRatio = 0.6180339887498949; // no likely ratio of two distances in a drawing
        return Distance(p, points[0]) + kGoldenRatio * Distance(p, points[1]);
    }
};

/// The middle of the curves, and their middle by length.
Landmarks LandmarksOf(std::vector<Stretch> const &stretches);

/// Something of some length at some place, in the order in which short things are dealt with.
struct Measured {
    int kind = 0; ///< the lower ones come first
    double length = 0.0;
    double rank = 0.0; ///< by the landmarks
    DrawingPoint place;
    int number = 0; ///< the caller's
};

/// Sorts by kind and length. Lengths that follow one another by less than `same` are equal, and such ties are settled
/// by where the things lie in the drawing, so that turning it or ordering its curves anew does not change them.
void SortShortestFirst(std::vector<Measured> &things, double same);

} // namespace zvi::lib::drawing
