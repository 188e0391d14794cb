#include "zvi/curves/domains/VtexXIndex.h"

#include "zvi/base/CellGrid.h"

#include <cmath>

namespace zvi::lib {

using base::Index;

namespace {

/// Cells are a thousandth of a drawing unit wide, ten tolerances, and centred on the multiples of that: a point with
/// round coordinates looks at one cell, and any other at 1.4 of them on average. Vertices stand at least one tolerance
/// apart in x or y, so a cell holds few.
constexpr double kCellsPerUnit = 0.1 / kVtexMergeTolerance;

/// Coordinates from this step on are farther apart than the tolerance, so they only meet equals.
constexpr double kLastExactStep = 0x1p52;

/// A coordinate in widths of cells, counted from the side of a cell.
double ScaledOf(double coordinate) {
    return coordinate * kCellsPerUnit + 0.5;
}

bool IsExact(double coordinate) {
    return std::abs(ScaledOf(coordinate)) < kLastExactStep;
}

/// Every coordinate too large for a step stands for itself.
double StepOf(double coordinate) {
    return IsExact(coordinate) ? base::Floor(ScaledOf(coordinate)) : coordinate;
}

/// The steps, from first to last, in which a vertex less than the tolerance away can lie. Rounding is monotone, so a
/// vertex between x - tolerance and x + tolerance lies between their steps.
struct Span {
    double first;
    double last;
};

Span SpanOf(double coordinate) {
    if (!IsExact(coordinate))
        return {coordinate, coordinate};
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

VtexXIndex::VtexXIndex() = default;

VtexXIndex::VtexXIndex(VtexXIndex const &other)
    : m_cells(other.m_cells ? std::make_unique<base::CellGrid>(*other.m_cells) : nullptr) {}

VtexXIndex &VtexXIndex::operator=(VtexXIndex const &other) {
    m_cells = VtexXIndex(other).m_cells;
    return *this;
}

VtexXIndex::~VtexXIndex() = default;

int VtexXIndex::Find(DM_VTEX const &point, zvi::MArray<DM_VTEX> const &coordinates) const {
    if (!m_cells || !IsFinite(point))
        return -1;
    int best = -1;
    auto const take = [&](int vtex) {
        DM_VTEX const &at = coordinates[Index(vtex)];
        if (!IsNear(at, point))
            return;
        double const bestX = best < 0 ? at.x : coordinates[Index(best)].x;
        if (best < 0 || at.x < bestX || (at.x == bestX && vtex < best))
            best = vtex;
    };
    Span const x = SpanOf(point.x);
    Span const y = SpanOf(point.y);
    for (double stepX = x.first;; stepX += 1.0) {
        for (double stepY = y.first;; stepY += 1.0) {
            m_cells->ForEach(base::CellKey(stepX, stepY), take);
            if (stepY == y.last)
                break;
        }
        if (stepX == x.last)
            return best;
    }
}

void VtexXIndex::Insert(DM_VTEX const &point, int vtex) {
    if (!IsFinite(point))
        return;
    if (!m_cells)
        m_cells = std::make_unique<base::CellGrid>();
    m_cells->Add(base::CellKey(StepOf(point.x), StepOf(point.y)), vtex);
}

} // namespace zvi::lib
