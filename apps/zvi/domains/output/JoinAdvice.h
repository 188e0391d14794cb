#pragma once

#include "zvi/drawing/DrawingRecords.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace zvi::app {

/// A join tolerance that is worth a try.
struct JoinAdvice {
    double join = 0.0;      ///< to be typed: three digits
    std::size_t closes = 0; ///< of the gaps, the nearest ones
};

/// The tolerance that closes the gaps in front of the widest jump in their distances, or all where they do not jump by
/// three times; nothing without gaps. `gaps` come nearest first.
std::optional<JoinAdvice> AdviseJoin(std::vector<lib::DrawingGap> const &gaps);

} // namespace zvi::app
