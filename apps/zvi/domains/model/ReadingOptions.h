#pragma once

#include "apps/zvi/domains/model/ChordError.h"

#include <string>
#include <vector>

namespace zvi::app {

/// What to take of a drawing, and how.
struct ReadingOptions {
    ChordError chordError;
    /// Layers to take, capitals or not; empty takes all that are on and thawed. A layer named here is taken also when
    /// it is off or frozen.
    std::vector<std::string> layers;
};

} // namespace zvi::app
