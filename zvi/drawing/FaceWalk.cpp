#include "zvi/drawing/FaceWalkDetail.h"

#include "zvi/drawing/DomainAreaDetail.h"

#include <algorithm>
#include <array>
#include <cassert>

namespace zvi::lib::drawing {

namespace {

/// Edges are fetched so many half-edges before they are looked at.
constexpr std::size_t kAhead = 16;

/// Sums the area and the length of a closed walk, half-edge by half-edge, seen from where it begins.
class WalkSum {
public:
    WalkSum(PlanarMap const &map, HalfEdge first) : m_map(map), m_origin(BeginOf(map, first)), m_reached(m_origin) {}

    void Add(HalfEdge h) {
        Stretch const &s = m_map.Border(h);
        std::array const ends{s.start, s.end};
        m_area += Step(m_reached, ends[h.IsReversed() ? 1 : 0]) + AreaShare(s, h.IsReversed(), m_origin);
        m_length += LengthOf(s);
        m_reached = ends[h.IsReversed() ? 0 : 1];
    }
    double Area() const { return m_area; }
    double Length() const { return m_length; }

private:
    double Step(DrawingPoint from, DrawingPoint to) const { return 0.5 * Cross(from - m_origin, to - m_origin); }

    PlanarMap const &m_map;
    DrawingPoint m_origin;
    DrawingPoint m_reached;
    double m_area = 0.0;
    double m_length = 0.0;
};

void MarkOutsides(FaceWalks &faces) {
    std::vector<int> const &parts = faces.numbers->partOf;
    std::vector<int> least(faces.walks.size(), -1);
    for (int w = 0; w < static_cast<int>(faces.walks.size()); ++w) {
        int &outside = least[Index(parts[Index(w)])];
        if (outside < 0 || faces.walks[Index(w)].area < faces.walks[Index(outside)].area)
            outside = w;
    }
    for (int const outside : least)
        if (outside >= 0)
            faces.walks[Index(outside)].isOutside = true;
}

} // namespace

DrawingPoint BeginOf(PlanarMap const &map, HalfEdge h) {
    return h.IsReversed() ? map.Border(h).end : map.Border(h).start;
}

DrawingPoint EndOf(PlanarMap const &map, HalfEdge h) {
    return h.IsReversed() ? map.Border(h).start : map.Border(h).end;
}

std::vector<HalfEdge> WalkFrom(PlanarMap const &map, HalfEdge first) {
    assert(map.IsInMap(first.Edge()));
    std::vector<HalfEdge> walk;
    HalfEdge h = first;
    do {
        walk.push_back(h);
        h = map.Next(h);
    } while (!(h == first));
    return walk;
}

double AreaOf(PlanarMap const &map, std::vector<HalfEdge> const &walk) {
    WalkSum sum(map, walk.front());
    for (HalfEdge const h : walk)
        sum.Add(h);
    return sum.Area();
}

FaceWalks WalkFaces(PlanarMap const &map, base::Workers const &workers) {
    FaceWalks faces;
    faces.numbers = map.Walks();
    faces.walks.resize(faces.numbers->Count());
    std::span<HalfEdge const> const halves = faces.numbers->halves;
    workers.ForEach(faces.walks.size(), [&](std::size_t w) {
        std::span const walk = faces.numbers->Walk(w);
        WalkSum sum(map, walk.front());
        std::size_t ahead = Index(faces.numbers->begins[w]) + kAhead;
        for (HalfEdge const h : walk) {
            map.Prefetch(halves[std::min(ahead++, halves.size() - 1)]);
            sum.Add(h);
        }
        faces.walks[w] = {walk.front(), sum.Area(), sum.Length()};
    });
    MarkOutsides(faces);
    return faces;
}

void SetAsideUnboundingEdges(PlanarMap &map) {
    std::shared_ptr<WalkNumbers const> const walks = map.Walks();
    for (int e = 0; e < map.EdgeCount(); ++e)
        if (map.IsInMap(e) && walks->Of(HalfEdge::Along(e)) == walks->Of(HalfEdge::Against(e)))
            map.Remove(e, EdgeState::kSetAside);
}

} // namespace zvi::lib::drawing
