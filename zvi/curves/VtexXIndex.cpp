#include "zvi/curves/VtexXIndex.h"

#include <bit>
#include <cmath>

namespace zvi::lib {

namespace {

/// Side of a cell. Vertices stand at least one tolerance apart in x or y, so a cell holds few of them.
constexpr double kCellSize = 4 * kVtexMergeTolerance;

/// Cell numbers from here on have no exact neighbour; coordinates of that size only meet equals.
constexpr double kLastExactCell = 4503599627370496.0;

constexpr std::size_t kFirstBucketCount = 16;

double CellOf(double coordinate) {
    return std::floor(coordinate / kCellSize);
}

/// The cells, from first to last, in which a vertex less than the tolerance away can lie. Rounding is monotone, so a
/// vertex between x - tolerance and x + tolerance lies between their cells.
struct CellSpan {
    double first;
    double last;
};

CellSpan SpanOf(double coordinate) {
    double const cell = CellOf(coordinate);
    if (!(std::abs(cell) < kLastExactCell))
        return {cell, cell};
    return {CellOf(coordinate - kVtexMergeTolerance), CellOf(coordinate + kVtexMergeTolerance)};
}

bool IsNear(DM_VTEX const &a, DM_VTEX const &b) {
    return std::abs(a.x - b.x) < kVtexMergeTolerance && std::abs(a.y - b.y) < kVtexMergeTolerance;
}

} // namespace

int VtexXIndex::Find(DM_VTEX const &point) const {
    if (m_entries.Empty() || std::isnan(point.x) || std::isnan(point.y))
        return -1;
    CellSpan const spanX = SpanOf(point.x);
    CellSpan const spanY = SpanOf(point.y);
    int best = -1;
    for (double cellX = spanX.first;; cellX += 1) {
        for (double cellY = spanY.first;; cellY += 1) {
            best = BestInCell(point, cellX, cellY, best);
            if (!(cellY < spanY.last))
                break;
        }
        if (!(cellX < spanX.last))
            break;
    }
    return best < 0 ? -1 : m_entries[static_cast<std::size_t>(best)].vtex;
}

void VtexXIndex::Insert(DM_VTEX const &point, int vtex) {
    if (m_entries.Size() >= m_buckets.Size())
        Grow();
    int &head = m_buckets[BucketOf(CellOf(point.x), CellOf(point.y))];
    int const entry = static_cast<int>(m_entries.Size());
    m_entries.PushBack(Entry{point, vtex, head});
    head = entry;
}

int VtexXIndex::BestInCell(DM_VTEX const &point, double cellX, double cellY, int best) const {
    for (int at = m_buckets[BucketOf(cellX, cellY)]; at >= 0; at = m_entries[static_cast<std::size_t>(at)].next) {
        DM_VTEX const &candidate = m_entries[static_cast<std::size_t>(at)].point;
        if (!IsNear(candidate, point))
            continue;
        double const bestX = best < 0 ? 0.0 : m_entries[static_cast<std::size_t>(best)].point.x;
        if (best < 0 || candidate.x < bestX || (candidate.x == bestX && at < best))
            best = at;
    }
    return best;
}

std::uint32_t VtexXIndex::BucketOf(double cellX, double cellY) const {
    // Adding 0.0 gives both zeros the same bits.
    std::uint64_t hash = std::bit_cast<std::uint64_t>(cellX + 0.0) * 0x9E3779B97F4A7C15u;
    hash = (hash ^ (hash >> 32) ^ std::bit_cast<std::uint64_t>(cellY + 0.0)) * 0xD6E8FEB86659FD93u;
    return static_cast<std::uint32_t>(hash >> 32) & static_cast<std::uint32_t>(m_buckets.Size() - 1);
}

void VtexXIndex::Grow() {
    std::size_t const count = m_buckets.Empty() ? kFirstBucketCount : 2 * m_buckets.Size();
    m_buckets.Resize(count);
    for (int &head : m_buckets)
        head = -1;
    for (std::size_t i = 0; i < m_entries.Size(); ++i) {
        int &head = m_buckets[BucketOf(CellOf(m_entries[i].point.x), CellOf(m_entries[i].point.y))];
        m_entries[i].next = head;
        head = static_cast<int>(i);
    }
}

} // namespace zvi::lib
