#pragma once

#include "zvi/drawing/NetworkDetail.h"

namespace zvi::lib::drawing {

/// Cuts every edge where it meets another: crossings, touchings, ends that lie on it, ends of overlaps.
/// An end within the snap distance of another edge is first moved onto it, so that the edge it meets stays as it is;
/// where several edges pass, it goes where they meet. Meeting points nearer than the snap distance to a place, or to
/// one another, become one place; edges that this bends are looked at again until none is bent any more.
void CutAtMeetings(Network &network);

} // namespace zvi::lib::drawing
