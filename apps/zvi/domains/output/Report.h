#pragma once

#include "apps/zvi/domains/model/DrawingInput.h"

#include "zvi/drawing/DrawingRecords.h"

#include <string>
#include <vector>

namespace zvi::app {

/// All domains together.
struct DomainTotals {
    std::size_t domains = 0;
    std::size_t holes = 0;
    double area = 0.0;
};
DomainTotals TotalsOf(lib::DrawingResult const &result);

/// "N domains, M holes, total area A", one way for every N and M, because programs read it.
std::string TotalsLine(lib::DrawingResult const &result);

/// Table of the domains (number, area, perimeter, curves, holes) with the totals as its last line. `color` makes the
/// heading bold.
std::string DomainTable(lib::DrawingResult const &result, bool color);

/// What was read, changed, left out and left over, one line each, for people: the first leftovers and gaps with their
/// place, curve, layer and line of the file. `joinTolerance` as it was used.
std::vector<std::string> Summary(DrawingInput const &input, lib::DrawingResult const &result, double joinTolerance,
                                 bool allLeftovers);

/// Whether part of the drawing bounds no domain, read curves that could not be drawn included.
bool HasLeftovers(DrawingInput const &input, lib::DrawingResult const &result);

/// Where a piece begins.
lib::DrawingPoint PlaceOf(lib::DrawingPiece const &piece);

/// "dangle", "bridge", "duplicate", "zero-length" or "unsupported".
char const *ReasonName(lib::LeftoverReason reason);

/// "line", "arc" or "circle".
char const *TypeName(lib::DrawingCurveType type);

/// A curve as its user finds it: "curve 12", for DXF with its entity: "curve 12 (ARC 2F on layer WALLS, line 340)".
std::string CurveName(DrawingInput const &input, unsigned int id);

} // namespace zvi::app
