#pragma once

#include "zvi/drawing/DrawingRecords.h"

#include <cstddef>
#include <vector>

namespace zvi::app {

/// Fewest fills of a picture with as many domains; a domain with many neighbours may need more.
inline constexpr std::size_t kFills = 12;

/// A fill for each domain, counted from 0, so that domains on the two sides of a stretch of a curve never share one.
/// In the order of the domains each takes the first fill from its own number on that no neighbour has.
std::vector<std::size_t> FillClasses(std::vector<lib::DrawingDomain> const &domains);

} // namespace zvi::app
