#pragma once

#include "zvi/Export.h"

namespace zvi::lib {

/// A point of the plane.
struct MQuadPoint2D {
    double x = 0.0; ///< to the right
    double y = 0.0; ///< upwards
};

/// A bounding rectangle with its sides parallel to the axes. Containment is half-open: the minimum edges belong to the
/// rectangle, the maximum edges do not, so that quadrants never share a point. A corner that is not a number lies in
/// nothing, and contains nothing.
struct ZVI_API MQuadMBR2D {
    double minX = 0.0; ///< left side, within
    double minY = 0.0; ///< lower side, within
    double maxX = 0.0; ///< right side, outside
    double maxY = 0.0; ///< upper side, outside

    /// Distance within which two rectangles still count as meeting when `strict` is zero, in the unit of length.
    static constexpr double kTouchTolerance = 1e-6;
    /// Overlap, in the unit of length, that two rectangles must exceed when `strict` is not zero.
    static constexpr double kLeastOverlap = 1e-9;

    /// 1 if the rectangles meet, else 0. With `strict` 0 a gap of up to 1e-6 still counts as meeting; otherwise they
    /// must overlap by more than 1e-9, so that rectangles that only touch do not meet.
    int Intersect4QT(MQuadMBR2D const &other, int strict) const {
        double const t = strict == 0 ? kTouchTolerance : -kLeastOverlap;
        bool const apart =
            other.minX - t > maxX || other.minY - t > maxY || minX > t + other.maxX || minY > t + other.maxY;
        return apart ? 0 : 1;
    }

    /// 1 if this rectangle lies in `outer`, half-open, else 0.
    int IsContained4QT(MQuadMBR2D const &outer) const {
        return minX >= outer.minX && minY >= outer.minY && maxX < outer.maxX && maxY < outer.maxY ? 1 : 0;
    }

    /// 1 if the point lies in this rectangle, half-open, else 0.
    int DoesContain4QT(MQuadPoint2D const &point) const {
        return point.x >= minX && point.y >= minY && point.x < maxX && point.y < maxY ? 1 : 0;
    }
};

} // namespace zvi::lib
