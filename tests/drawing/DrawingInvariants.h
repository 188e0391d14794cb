#pragma once

#include "tests/drawing/DrawingCurves.h"
#include "zvi/drawing/DrawingRecords.h"

#include <string>
#include <vector>

namespace zvi::lib::test {

std::size_t HoleCount(DrawingResult const &result);
double TotalArea(DrawingResult const &result);
/// Areas of the domains, the largest first.
std::vector<double> AreasOf(DrawingResult const &result);

/// What every result keeps, whatever was drawn; empty when nothing is wrong.
/// - Each stretch of each curve is on the border of a domain, at most once to each side, or a leftover, once.
/// - Pieces begin and end within the tolerance of their curve where `from` and `to` say, and keep to it between.
/// - Loops run head to tail to the last bit and through no point twice, outer ones counter-clockwise and holes
///   clockwise; areas are positive and those of the pieces; faces, edges and places are in Euler's balance.
/// - Beside the middle of each piece, away from all curves, there is its domain on the left, not on the right, and
///   never two domains: loops are simple, holes inside, domains apart.
/// With `split` off only the first, and closed loops; with duplicates kept no balance.
std::string WhatIsWrong(std::vector<DrawingCurve> const &curves, DrawingOptions const &options,
                        DrawingResult const &result);

/// A place that is farther than the tolerance from all curves, and the domain that it lies in, -1 for none.
struct Probe {
    DrawingPoint at;
    int domain = -1;
};
/// Places beside the pieces of the result that keep off the curves by `distance` at least.
std::vector<Probe> ProbesOf(std::vector<DrawingCurve> const &curves, double distance, DrawingResult const &result);
/// The domain that holds the point, -1 for none, -2 for several.
int DomainAt(DrawingResult const &result, DrawingPoint p);

} // namespace zvi::lib::test
