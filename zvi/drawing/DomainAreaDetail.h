#pragma once

#include "zvi/drawing/StretchDetail.h"

namespace zvi::lib::drawing {

/// The share of a stretch in the area of a domain that it borders: the triangle of its chord with `origin`, and what
/// lies between chord and arc. Over a closed loop, one origin for all of it, the shares sum up to what the loop
/// encloses, positive counter-clockwise; holes run clockwise and so take theirs off.
inline double AreaShare(Stretch const &s, bool isReversed, DrawingPoint origin) {
    double const share = 0.5 * Cross(s.start - origin, s.end - origin) + SegmentAreaOf(s);
    return share * (1 - 2 * static_cast<int>(isReversed)); // nothing foretells a branch
}

} // namespace zvi::lib::drawing
