#include "zvi/drawing/PlaceIndexDetail.h"

namespace zvi::lib::drawing {

namespace {

/// Width of a cell in reaches: wide enough that most searches touch one cell.
constexpr double kCellWidth = 8.0;

} // namespace

PlaceIndex::PlaceIndex(double reach) : m_inverseSize(reach > 0.0 ? 1.0 / (kCellWidth * reach) : 1.0) {}

int PlaceIndex::Nearest(DrawingPoint p, double distance) const {
    double best = distance;
    int found = -1;
    // Keys of different cells may be equal, so a place may be met twice.
    ForEachBeside(p, distance, [&](int place) {
        double const d = Distance(m_places[Index(place)], p);
        if (d < best || (d == best && found >= 0 && place < found) || (d == 0.0 && found < 0)) {
            best = d;
            found = place;
        }
    });
    return found;
}

int PlaceIndex::Add(DrawingPoint p) {
    int const place = static_cast<int>(m_places.size());
    m_places.push_back(p);
    m_cells.Add(base::CellKey(Step(p.x), Step(p.y)), place);
    return place;
}

int PlaceIndex::NearestOrAdd(DrawingPoint p, double distance) {
    int const found = Nearest(p, distance);
    return found >= 0 ? found : Add(p);
}

} // namespace zvi::lib::drawing
