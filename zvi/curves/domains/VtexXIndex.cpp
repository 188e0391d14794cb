#include "zvi/curves/domains/VtexXIndex.h"

#include <bit>
#include <cmath>

namespace zvi::lib {

namespace {

/// Cells are a thousandth of a drawing unit wide, ten tolerances, and centred on the multiples of that: a point with
/// round coordinates looks at one cell, and any other at 1.4 of them on average. Vertices stand at least one tolerance
/// apart in x or y, so a cell holds few.
constexpr double kCellsPerUnit = 0.1 / kVtexMergeTolerance;

/// Coordinates from this cell number on are farther apart than the tolerance, so they only meet equals.
constexpr double kLastExactCell = 4503599627370496.0;

constexpr std::size_t kFirstSlotCount = 32;

/// The cell number of a coordinate as a number that is not yet whole.
double ScaledOf(double coordinate) {
    return coordinate * kCellsPerUnit + 0.5;
}

std::int64_t Floor(double value) {
    auto const cut = static_cast<std::int64_t>(value);
    return cut - (static_cast<double>(cut) > value ? 1 : 0);
}

/// Every coordinate too large for a cell stands for itself.
std::int64_t CellOf(double coordinate) {
    double const scaled = ScaledOf(coordinate);
    return std::abs(scaled) < kLastExactCell ? Floor(scaled) : std::bit_cast<std::int64_t>(coordinate);
}

/// The cells, from first to last, in which a vertex less than the tolerance away can lie. Rounding is monotone, so a
/// vertex between x - tolerance and x + tolerance lies between their cells.
struct CellSpan {
    std::int64_t first;
    std::int64_t last;
};

CellSpan SpanOf(double coordinate) {
    if (!(std::abs(ScaledOf(coordinate)) < kLastExactCell))
        return {CellOf(coordinate), CellOf(coordinate)};
    return {Floor(ScaledOf(coordinate - kVtexMergeTolerance)), Floor(ScaledOf(coordinate + kVtexMergeTolerance))};
}

std::uint32_t HashOf(std::int64_t cellX, std::int64_t cellY) {
    std::uint64_t hash = static_cast<std::uint64_t>(cellX) * 0x9E3779B97F4A7C15u;
    hash = (hash ^ (hash >> 32) ^ static_cast<std::uint64_t>(cellY)) * 0xD6E8FEB86659FD93u;
    return static_cast<std::uint32_t>(hash >> 32);
}

bool IsFinite(DM_VTEX const &point) {
    return std::isfinite(point.x) && std::isfinite(point.y);
}

bool IsNear(DM_VTEX const &a, DM_VTEX const &b) {
    return std::abs(a.x - b.x) < kVtexMergeTolerance && std::abs(a.y - b.y) < kVtexMergeTolerance;
}

} // namespace

int VtexXIndex::Find(DM_VTEX const &point, zvi::MArray<DM_VTEX> const &coordinates) const {
    if (m_slots.Empty() || !IsFinite(point))
        return -1;
    CellSpan const spanX = SpanOf(point.x);
    CellSpan const spanY = SpanOf(point.y);
    int best = -1;
    for (std::int64_t cellX = spanX.first; cellX <= spanX.last; ++cellX) {
        for (std::int64_t cellY = spanY.first; cellY <= spanY.last; ++cellY)
            best = BestInCell(point, coordinates, HashOf(cellX, cellY), best);
    }
    return best;
}

int VtexXIndex::BestInCell(DM_VTEX const &point, zvi::MArray<DM_VTEX> const &coordinates, std::uint32_t hash,
                           int best) const {
    std::size_t const mask = m_slots.Size() - 1;
    for (std::size_t at = hash & mask; m_slots[at].vtex >= 0; at = (at + 1) & mask) {
        int const vtex = m_slots[at].vtex;
        if (m_slots[at].hash != hash || !IsNear(coordinates[static_cast<std::size_t>(vtex)], point))
            continue;
        double const x = coordinates[static_cast<std::size_t>(vtex)].x;
        double const bestX = best < 0 ? x : coordinates[static_cast<std::size_t>(best)].x;
        if (best < 0 || x < bestX || (x == bestX && vtex < best))
            best = vtex;
    }
    return best;
}

void VtexXIndex::Insert(DM_VTEX const &point, int vtex) {
    if (!IsFinite(point))
        return;
    if (2 * (m_count + 1) > m_slots.Size())
        Grow();
    Place({HashOf(CellOf(point.x), CellOf(point.y)), vtex});
    ++m_count;
}

void VtexXIndex::Place(Slot slot) {
    std::size_t const mask = m_slots.Size() - 1;
    std::size_t at = slot.hash & mask;
    while (m_slots[at].vtex >= 0)
        at = (at + 1) & mask;
    m_slots[at] = slot;
}

void VtexXIndex::Grow() {
    zvi::MArray<Slot> slots(m_slots.Empty() ? kFirstSlotCount : 2 * m_slots.Size());
    for (Slot &slot : slots)
        slot = {0, -1};
    m_slots.Swap(slots);
    for (Slot const &slot : slots) {
        if (slot.vtex >= 0)
            Place(slot);
    }
}

} // namespace zvi::lib
