#pragma once

#include "zvi/drawing/DrawingRecords.h"

#include <vector>

namespace zvi::app {

/// The borders of the domains as pieces that meet at their ends alone, each once also where it parts two domains, along
/// the direction of its curve. They come in the order of their curves' ids and along them.
std::vector<lib::DrawingPiece> BorderPieces(std::vector<lib::DrawingDomain> const &domains);

} // namespace zvi::app
