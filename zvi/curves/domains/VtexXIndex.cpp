#include "zvi/curves/domains/VtexXIndexDetail.h"

#include <cmath>
#include <cstdint>

namespace zvi::lib::curves {

using base::Index;

namespace {

/// Cells are a thousandth of a drawing unit wide, ten tolerances, and centred on the multiples of that: a point with
/// round coordinates looks at one cell, and any other at 1.4 of them on average. Vertices stand at least one tolerance
/// apart in x or y, so a cell holds few.
constexpr double kCellsPerUnit = 0.1 / kVtexMergeTolerance;

/// Coordinates from this cell number on are farther apart than the tolerance, so they only meet equals.
constexpr double kFirstLoneCell = 0x1p52;

/// The cell number of a coordinate as a number that is not yet whole.
double ScaledOf(double coordinate) {
    return coordinate * kCellsPerUnit + 0.5;
}

/// The cells, from first to last, in which a vertex less than the tolerance away can lie. Rounding is monotone, so a
/// vertex between x - tolerance and x + tolerance lies between their cells.
struct CellSpan {
    double first;
    double last;
};

CellSpan SpanOf(double coordinate) {
    double const scaled = ScaledOf(coordinate);
    if (!(std::abs(scaled) < kFirstLoneCell))
        return {scaled, scaled};
    return {base::Floor(ScaledOf(coordinate - kVtexMergeTolerance)),
            base::Floor(ScaledOf(coordinate + kVtexMergeTolerance))};
}

bool IsFinite(DM_VTEX const &point) {
    return std::isfinite(point.x) && std::isfinite(point.y);
}

bool IsNear(DM_VTEX const &a, DM_VTEX const &b) {
    return std::abs(a.x - b.x) < kVtexMergeTolerance && std::abs(a.y - b.y) < kVtexMergeTolerance;
}

} // namespace

int VtexXIndex::Find(DM_VTEX const &point, MArray<DM_VTEX> const &coordinates) const {
    if (!IsFinite(point))
        return -1;
    CellSpan const spanX = SpanOf(point.x);
    CellSpan const spanY = SpanOf(point.y);
    int best = -1;
    auto const takeBetter = [&](int vtex) {
        DM_VTEX const &at = coordinates[Index(vtex)];
        if (!IsNear(at, point))
            return;
        double const bestX = best < 0 ? at.x : coordinates[Index(best)].x;
        if (best < 0 || at.x < bestX || (at.x == bestX && vtex < best))
            best = vtex;
    };
    for (double cellX = spanX.first;; cellX += 1.0) {
        for (double cellY = spanY.first;; cellY += 1.0) {
            m_grid.ForEach(base::CellKey(cellX, cellY), takeBetter);
            if (!(cellY < spanY.last))
                break;
        }
        if (!(cellX < spanX.last))
            break;
    }
    return best;
}

void VtexXIndex::Insert(DM_VTEX const &point, int vtex) {
    if (IsFinite(point))
        m_grid.Add(base::CellKey(base::Floor(ScaledOf(point.x)), base::Floor(ScaledOf(point.y))), vtex);
}

} // namespace zvi::lib::curves
