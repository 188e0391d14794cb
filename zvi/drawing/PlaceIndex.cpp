#include "zvi/drawing/PlaceIndexDetail.h"

#include <algorithm>
#include <bit>

namespace zvi::lib::drawing {

namespace {

/// Width of a cell in snap distances: wide enough that most searches touch one cell.
constexpr double kCellWidth = 8.0;
constexpr std::size_t kFirstSlots = 1024;

std::uint64_t Mix(std::uint64_t h) {
    h ^= h >> 32;
    h *= 0x9E3779B97F4A7C15ull;
    return h ^ (h >> 29);
}

} // namespace

PlaceIndex::PlaceIndex(std::vector<DrawingPoint> &somePlaces, double snap)
    : places(somePlaces), cells(std::max(kFirstSlots, std::bit_ceil(4 * somePlaces.size()))),
      inverseSize(snap > 0.0 ? 1.0 / (kCellWidth * snap) : 1.0) {
    Rebuild();
}

std::size_t PlaceIndex::SlotOf(double x, double y) const {
    // Adding 0 turns -0 into 0, so that equal cells have equal bits.
    std::uint64_t const hash = Mix(Mix(std::bit_cast<std::uint64_t>(x + 0.0)) + std::bit_cast<std::uint64_t>(y + 0.0));
    std::size_t slot = hash & (cells.size() - 1);
    while (cells[slot].first >= 0 && (cells[slot].x != x || cells[slot].y != y))
        slot = (slot + 1) & (cells.size() - 1);
    return slot;
}

void PlaceIndex::Search(double cellX, double cellY, DrawingPoint p, double &best, int &found) const {
    for (int i = cells[SlotOf(cellX, cellY)].first; i >= 0; i = next[At(i)]) {
        double const d = Distance(places[At(i)], p);
        if (d < best || (d == best && found >= 0 && i < found) || (d == 0.0 && found < 0)) {
            best = d;
            found = i;
        }
    }
}

int PlaceIndex::Nearest(DrawingPoint p, double distance) const {
    double const reach = distance * inverseSize;
    double const x = p.x * inverseSize, y = p.y * inverseSize;
    double const x0 = std::floor(x - reach), x1 = std::floor(x + reach);
    double const y0 = std::floor(y - reach), y1 = std::floor(y + reach);
    double best = distance;
    int found = -1;
    Search(x0, y0, p, best, found);
    if (x1 != x0)
        Search(x1, y0, p, best, found);
    if (y1 != y0) {
        Search(x0, y1, p, best, found);
        if (x1 != x0)
            Search(x1, y1, p, best, found);
    }
    return found;
}

void PlaceIndex::Grow() {
    std::vector<Cell> old(cells.size() * 2);
    old.swap(cells);
    for (Cell const &cell : old)
        if (cell.first >= 0)
            cells[SlotOf(cell.x, cell.y)] = cell;
}

void PlaceIndex::Register(int place) {
    if (2 * used >= cells.size())
        Grow();
    DrawingPoint const p = places[At(place)];
    double const x = std::floor(p.x * inverseSize), y = std::floor(p.y * inverseSize);
    Cell &cell = cells[SlotOf(x, y)];
    if (cell.first < 0) {
        cell.x = x;
        cell.y = y;
        ++used;
    }
    next[At(place)] = cell.first;
    cell.first = place;
}

int PlaceIndex::Add(DrawingPoint p) {
    places.push_back(p);
    next.push_back(-1);
    Register(static_cast<int>(places.size()) - 1);
    return static_cast<int>(places.size()) - 1;
}

int PlaceIndex::NearestOrAdd(DrawingPoint p, double distance) {
    int const found = Nearest(p, distance);
    return found >= 0 ? found : Add(p);
}

void PlaceIndex::Rebuild() {
    cells.assign(cells.size(), Cell{});
    next.assign(places.size(), -1);
    used = 0;
    for (std::size_t i = 0; i < places.size(); ++i)
        Register(static_cast<int>(i));
}

} // namespace zvi::lib::drawing
