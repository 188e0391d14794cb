#pragma once

#include "apps/zvi/domains/model/DrawingInput.h"

#include <string_view>

namespace zvi::app {

/// Reads curve text, one curve per line, `#` starting a comment:
///     line ID x1 y1 x2 y2
///     arc ID cx cy r startDeg endDeg       counter-clockwise; equal directions make the whole circle
///     arc3 ID x1 y1 xm ym x2 y2            through the middle point; a line when the three points are on one
///     circle ID cx cy r
/// Ids are positive integers and are kept. Throws InputError, with the line, for anything else and for a repeated id.
/// A radius that is not positive is handed on; the curve then is a leftover.
DrawingInput ReadCurveText(std::string_view text);

} // namespace zvi::app
