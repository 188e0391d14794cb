#pragma once

#include "zvi/drawing/MakeDrawingDomains.h"

#include <string>
#include <vector>

namespace drawing_fixtures {

/// Curves from text: "line ID x1 y1 x2 y2", "arc ID cx cy r startDeg endDeg" (counter-clockwise), "circle ID cx cy r",
/// separated by semicolons.
std::vector<zvi::lib::DrawingCurve> Curves(std::string const &text);

std::size_t HoleCount(zvi::lib::DrawingResult const &result);
double TotalArea(zvi::lib::DrawingResult const &result);

/// What every result keeps, whatever was drawn: each stretch of each curve is either on the border of a domain, at most
/// once to each side, or among the leftovers, once; loops are closed, outer ones run counter-clockwise and holes
/// clockwise; areas are those of the pieces. Empty when nothing is wrong.
std::string WhatIsWrong(std::vector<zvi::lib::DrawingCurve> const &curves, zvi::lib::DrawingResult const &result);

} // namespace drawing_fixtures
