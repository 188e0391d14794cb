#pragma once

#include "zvi/Export.h"

namespace zvi::lib {

/// A point of space.
struct MOcPoint3D {
    double x = 0.0; ///< first coordinate
    double y = 0.0; ///< second coordinate
    double z = 0.0; ///< third coordinate
};

/// A bounding box with its sides parallel to the axes. Containment is half-open: the minimum faces belong to the box,
/// the maximum faces do not, so that octants never share a point. A corner that is not a number lies in nothing, and
/// contains nothing. The tolerances are larger than those of `MQuadMBR2D`, deliberately.
struct ZVI_API MOcMBR3D {
    double minX = 0.0; ///< low face along x, within
    double minY = 0.0; ///< low face along y, within
    double minZ = 0.0; ///< low face along z, within
    double maxX = 0.0; ///< high face along x, outside
    double maxY = 0.0; ///< high face along y, outside
    double maxZ = 0.0; ///< high face along z, outside

    /// Distance within which two boxes still count as meeting when `strict` is zero, in the unit of length.
    static constexpr double kTouchTolerance = 1e-3;
    /// Overlap, in the unit of length, that two boxes must exceed when `strict` is not zero.
    static constexpr double kLeastOverlap = 1e-4;

    /// A point at the origin.
    MOcMBR3D() = default;
    /// Six values in the order of the fields.
    explicit MOcMBR3D(double const *values)
        : MOcMBR3D(values[0], values[1], values[2], values[3], values[4], values[5]) {}
    /// Between two corners, which are not put in order.
    MOcMBR3D(MOcPoint3D const &low, MOcPoint3D const &high) : MOcMBR3D(low.x, low.y, low.z, high.x, high.y, high.z) {}
    /// The fields in their order.
    MOcMBR3D(double lowX, double lowY, double lowZ, double highX, double highY, double highZ)
        : minX(lowX), minY(lowY), minZ(lowZ), maxX(highX), maxY(highY), maxZ(highZ) {}

    /// 1 if the boxes meet, else 0. With `strict` 0 a gap of up to 0.001 still counts as meeting; otherwise they must
    /// overlap by more than 0.0001.
    int Intersect8OT(MOcMBR3D const &other, int strict) const {
        double const t = strict == 0 ? kTouchTolerance : -kLeastOverlap;
        bool const apart = other.minX - t > maxX || other.minY - t > maxY || other.minZ - t > maxZ ||
                           minX > t + other.maxX || minY > t + other.maxY || minZ > t + other.maxZ;
        return apart ? 0 : 1;
    }

    /// 1 if this box lies in `outer`, half-open, else 0.
    int IsContained8OT(MOcMBR3D const &outer) const {
        bool const isWithin = minX >= outer.minX && minY >= outer.minY && minZ >= outer.minZ && maxX < outer.maxX &&
                              maxY < outer.maxY && maxZ < outer.maxZ;
        return isWithin ? 1 : 0;
    }

    /// 1 if the point lies in this box, half-open, else 0.
    int DoesContain8OT(MOcPoint3D const &point) const {
        bool const isWithin =
            point.x >= minX && point.y >= minY && point.z >= minZ && point.x < maxX && point.y < maxY && point.z < maxZ;
        return isWithin ? 1 : 0;
    }
};

} // namespace zvi::lib
