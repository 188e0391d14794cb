#pragma once

#include "zvi/drawing/DrawingRecords.h"

#include <string>

namespace zvi::app {

/// A number as pictures have it, with 12 digits.
std::string SvgNumber(double value);

/// A point as pictures have it, "X Y": y grows downwards.
std::string SvgPlace(lib::DrawingPoint const &p);

/// Path commands that draw a piece from where the pen is. An arc over more than half a turn is drawn in two, because a
/// single command cannot tell an arc that nearly closes from one that has no length.
std::string SvgPathAlong(lib::DrawingPiece const &piece);

/// Text of a picture, also within quotes.
std::string SvgEscaped(std::string const &text);

} // namespace zvi::app
