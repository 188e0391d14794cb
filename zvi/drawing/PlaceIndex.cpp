#include "zvi/drawing/PlaceIndexDetail.h"

#include <algorithm>
#include <bit>

namespace zvi::lib::drawing {

namespace {

/// Width of a cell in reaches: wide enough that most searches touch one cell.
constexpr double kCellWidth = 8.0;
constexpr std::size_t kFirstSlots = 64;

std::uint64_t Mix(std::uint64_t h) {
    h ^= h >> 32;
    h *= 0x9E3779B97F4A7C15ull;
    return h ^ (h >> 29);
}

} // namespace

PlaceIndex::PlaceIndex(double reach, std::size_t expected)
    : m_cells(std::max(kFirstSlots, std::bit_ceil(2 * expected))),
      m_inverseSize(reach > 0.0 ? 1.0 / (kCellWidth * reach) : 1.0) {
    m_places.reserve(expected);
    m_next.reserve(expected);
}

std::size_t PlaceIndex::SlotOf(double x, double y) const {
    // Adding 0 turns -0 into 0, so that equal cells have equal bits.
    std::uint64_t const hash = Mix(Mix(std::bit_cast<std::uint64_t>(x + 0.0)) + std::bit_cast<std::uint64_t>(y + 0.0));
    std::size_t slot = hash & (m_cells.size() - 1);
    while (m_cells[slot].first >= 0 && (m_cells[slot].x != x || m_cells[slot].y != y))
        slot = (slot + 1) & (m_cells.size() - 1);
    return slot;
}

PlaceIndex::Range PlaceIndex::RangeAround(DrawingPoint p, double distance) const {
    double const reach = distance * m_inverseSize;
    double const x = p.x * m_inverseSize, y = p.y * m_inverseSize;
    return {std::floor(x - reach), std::floor(y - reach), std::floor(x + reach), std::floor(y + reach)};
}

int PlaceIndex::Nearest(DrawingPoint p, double distance) const {
    Range const range = RangeAround(p, distance);
    double best = distance;
    int found = -1;
    for (double y = range.y0; y <= range.y1; ++y)
        for (double x = range.x0; x <= range.x1; ++x)
            for (int i = FirstIn(x, y); i >= 0; i = m_next[At(i)]) {
                double const d = Distance(m_places[At(i)], p);
                if (d < best || (d == best && found >= 0 && i < found) || (d == 0.0 && found < 0)) {
                    best = d;
                    found = i;
                }
            }
    return found;
}

void PlaceIndex::Grow() {
    std::vector<Cell> old(m_cells.size() * 2);
    old.swap(m_cells);
    for (Cell const &cell : old)
        if (cell.first >= 0)
            m_cells[SlotOf(cell.x, cell.y)] = cell;
}

int PlaceIndex::Add(DrawingPoint p) {
    if (2 * m_used >= m_cells.size())
        Grow();
    int const place = static_cast<int>(m_places.size());
    double const x = std::floor(p.x * m_inverseSize), y = std::floor(p.y * m_inverseSize);
    Cell &cell = m_cells[SlotOf(x, y)];
    if (cell.first < 0) {
        cell.x = x;
        cell.y = y;
        ++m_used;
    }
    m_places.push_back(p);
    m_next.push_back(cell.first);
    cell.first = place;
    return place;
}

int PlaceIndex::NearestOrAdd(DrawingPoint p, double distance) {
    int const found = Nearest(p, distance);
    return found >= 0 ? found : Add(p);
}

} // namespace zvi::lib::drawing
