#pragma once

#include "apps/zvi/domains/model/ChordError.h"

#include <optional>
#include <string>
#include <vector>

namespace zvi::app {

/// What to take of a drawing, and how.
struct ReadingOptions {
    ChordError chordError;
    /// The join tolerance that is asked for; none: that which suits the size of the drawing.
    std::optional<double> join;
    /// Layers to take, by name or by a pattern with `*` and `?`, capitals or not; empty takes all that are on and
    /// thawed. A layer named here is taken also when it is off or frozen.
    std::vector<std::string> layers;
};

/// The one drawing that the words of a command line name; "-", standard input, when there are none. Throws UsageError
/// for an empty name and for a second one.
std::string DrawingNamed(std::vector<std::string> const &words);

} // namespace zvi::app
