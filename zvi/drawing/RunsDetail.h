#pragma once

#include "zvi/drawing/StretchDetail.h"

#include <array>

namespace zvi::lib::drawing {

/// A part of a stretch along which y only rises or only falls.
struct Run {
    double lowY = 0.0, highY = 0.0;
    double side = 0.0;   ///< of an arc: -1 for its left half, 1 for its right half
    bool upward = false; ///< the stretch runs upward here
};

/// The parts of a stretch that rise or fall, at most three; returns how many there are. Where an arc turns round no
/// higher above one of its ends, or lower below it, than `snap` and what its ends are off its circle, no part ends.
int RunsOf(Stretch const &s, double snap, std::array<Run, 3> &runs);

/// Where the run, which is not level, passes the height `y`.
double XAt(Stretch const &s, Run const &run, double y);

} // namespace zvi::lib::drawing
