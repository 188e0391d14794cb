#include "zvi/drawing/FaceWalkDetail.h"

#include "zvi/base/DisjointSets.h"

namespace zvi::lib::drawing {

namespace {

/// Sums the area and the length of a closed walk, half-edge by half-edge, seen from where it begins.
class WalkSum {
public:
    WalkSum(PlanarMap const &map, HalfEdge first) : m_map(map), m_origin(BeginOf(map, first)), m_reached(m_origin) {}

    void Add(HalfEdge h) {
        Stretch const &s = m_map.Border(h);
        m_area +=
            Step(m_reached, BeginOf(m_map, h)) + (h.IsReversed() ? -AreaShare(s, m_origin) : AreaShare(s, m_origin));
        m_length += LengthOf(s);
        m_reached = EndOf(m_map, h);
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

std::vector<int> NumberWalks(PlanarMap const &map, std::vector<HalfEdge> &firsts) {
    std::vector<int> walkOfHalf(2 * Index(map.EdgeCount()), -1);
    for (int number = 0; number < 2 * map.EdgeCount(); ++number) {
        HalfEdge const first{number};
        if (!map.IsInMap(first.Edge()) || walkOfHalf[Index(number)] >= 0)
            continue;
        int const walk = static_cast<int>(firsts.size());
        firsts.push_back(first);
        HalfEdge h = first;
        do {
            walkOfHalf[Index(h.number)] = walk;
            h = map.Next(h);
        } while (!(h == first));
    }
    return walkOfHalf;
}

void MarkOutsides(PlanarMap const &map, FaceWalks &faces) {
    base::DisjointSets parts(faces.walks.size());
    for (int e = 0; e < map.EdgeCount(); ++e)
        if (map.IsInMap(e))
            parts.Unite(faces.Of(HalfEdge::Along(e)), faces.Of(HalfEdge::Against(e)));
    std::vector<int> least(faces.walks.size(), -1);
    for (int w = 0; w < static_cast<int>(faces.walks.size()); ++w) {
        int &outside = least[Index(parts.Find(w))];
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

FaceWalks WalkFaces(PlanarMap const &map) {
    std::vector<HalfEdge> firsts;
    FaceWalks faces;
    faces.walkOfHalf = NumberWalks(map, firsts);
    faces.walks.reserve(firsts.size());
    for (HalfEdge const first : firsts) {
        WalkSum sum(map, first);
        HalfEdge h = first;
        do {
            sum.Add(h);
            h = map.Next(h);
        } while (!(h == first));
        faces.walks.push_back({first, sum.Area(), sum.Length()});
    }
    MarkOutsides(map, faces);
    return faces;
}

void SetAsideUnboundingEdges(PlanarMap &map) {
    std::vector<HalfEdge> firsts;
    std::vector<int> const walkOfHalf = NumberWalks(map, firsts);
    for (int e = 0; e < map.EdgeCount(); ++e)
        if (map.IsInMap(e) &&
            walkOfHalf[Index(HalfEdge::Along(e).number)] == walkOfHalf[Index(HalfEdge::Against(e).number)])
            map.Remove(e, EdgeState::kSetAside);
}

} // namespace zvi::lib::drawing
