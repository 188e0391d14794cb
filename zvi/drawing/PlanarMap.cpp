#include "zvi/drawing/PlanarMapDetail.h"

#include "zvi/base/DisjointSets.h"

#include <algorithm>
#include <utility>

namespace zvi::lib::drawing {

void PlanarMap::Reserve(std::size_t edges) {
    m_edges.reserve(edges);
    m_nextPart.reserve(edges);
    m_ccw.reserve(2 * edges);
    m_cw.reserve(2 * edges);
    m_borderOf.reserve(2 * edges);
}

int PlanarMap::AddEdge(MapEdge const &edge) {
    int const number = EdgeCount();
    m_edges.push_back(edge);
    m_nextPart.push_back(-1);
    for (HalfEdge const h : {HalfEdge::Along(number), HalfEdge::Against(number)}) {
        m_ccw.push_back(h);
        m_cw.push_back(h);
        m_borderOf.push_back(-1);
    }
    return number;
}

void PlanarMap::SetOrder(std::vector<HalfEdge> const &leaving) {
    for (std::size_t i = 0; i < leaving.size(); ++i)
        Link(leaving[i], leaving[(i + 1) % leaving.size()]);
}

void PlanarMap::Unlink(HalfEdge h) {
    Link(m_cw[Index(h.number)], Ccw(h));
    Link(h, h);
}

void PlanarMap::Remove(int edge, EdgeState why) {
    Unlink(HalfEdge::Along(edge));
    Unlink(HalfEdge::Against(edge));
    m_edges[Index(edge)].state = why;
}

void PlanarMap::SetBorder(HalfEdge h, Stretch const &border) {
    m_borderOf[Index(h.number)] = static_cast<int>(m_borders.size());
    m_borders.push_back(border);
}

void PlanarMap::Drop(HalfEdge dropped, HalfEdge kept) {
    Stretch const border = Border(dropped.Twin());
    SetBorder(kept, dropped.Twin().IsReversed() == kept.IsReversed() ? border : Reversed(border));
    Remove(dropped.Edge(), EdgeState::kDuplicate);
}

void PlanarMap::ForgetBorders() {
    m_borders.clear();
    m_borderOf.assign(m_borderOf.size(), -1);
}

void PlanarMap::Contract(int edge, EdgeState why) {
    HalfEdge const along = HalfEdge::Along(edge), against = HalfEdge::Against(edge);
    HalfEdge const before = m_cw[Index(along.number)], beforeTwin = m_cw[Index(against.number)];
    int const start = m_edges[Index(edge)].startPlace, end = m_edges[Index(edge)].endPlace;
    Remove(edge, why);
    if (!(before == along) && !(beforeTwin == against))
        MergeAcrossFace(before, beforeTwin);
    else
        m_places.Unite(start, end);
}

int PlanarMap::Split(int edge, double t, DrawingPoint p) {
    MapEdge second = m_edges[Index(edge)];
    Stretch const whole = second.stretch;
    int const middle = m_places.Add(p);
    second.stretch = PartOf(whole, t, 1.0);
    second.startPlace = middle;
    MapEdge &first = m_edges[Index(edge)];
    first.stretch = PartOf(whole, 0.0, t);
    first.endPlace = middle;
    int const number = AddEdge(second);
    m_nextPart[Index(number)] = std::exchange(m_nextPart[Index(edge)], number);
    for (HalfEdge const h : {HalfEdge::Along(edge), HalfEdge::Against(edge)}) {
        if (m_borderOf[Index(h.number)] < 0)
            continue;
        Stretch const border = Border(h);
        double const at = BorderCut(border, p);
        m_borders[Index(m_borderOf[Index(h.number)])] = PartOf(border, 0.0, at);
        SetBorder(h.IsReversed() ? HalfEdge::Against(number) : HalfEdge::Along(number), PartOf(border, at, 1.0));
    }
    if (!IsInMap(edge))
        return number;
    // The second part takes the place of the old end; the new place has two half-edges.
    HalfEdge const oldEnd = HalfEdge::Against(edge), newEnd = HalfEdge::Against(number);
    if (HalfEdge const before = m_cw[Index(oldEnd.number)]; !(before == oldEnd)) {
        Link(newEnd, Ccw(oldEnd));
        Link(before, newEnd);
    }
    SetOrder({oldEnd, HalfEdge::Along(number)});
    return number;
}

void PlanarMap::MergeAcrossFace(HalfEdge a, HalfEdge b) {
    m_places.Unite(Origin(a), Origin(b));
    HalfEdge const afterA = Ccw(a), afterB = Ccw(b);
    Link(a, afterB);
    Link(b, afterA);
}

bool PlanarMap::IsPlanar() const {
    base::DisjointSets parts(Index(m_places.Count()));
    std::vector<bool> isSeen(m_ccw.size(), false);
    std::vector<bool> hasEdge(Index(m_places.Count()), false);
    int faces = 0, edges = 0, places = 0, partCount = 0;
    auto const note = [&](int place) {
        if (hasEdge[Index(place)])
            return;
        hasEdge[Index(place)] = true;
        ++places;
        ++partCount;
    };
    for (int e = 0; e < EdgeCount(); ++e) {
        if (!IsInMap(e))
            continue;
        ++edges;
        int const start = Origin(HalfEdge::Along(e)), end = Origin(HalfEdge::Against(e));
        note(start);
        note(end);
        partCount -= parts.Unite(start, end) ? 1 : 0;
        for (HalfEdge const first : {HalfEdge::Along(e), HalfEdge::Against(e)}) {
            if (isSeen[Index(first.number)])
                continue;
            ++faces;
            HalfEdge h = first;
            do {
                isSeen[Index(h.number)] = true;
                h = Next(h);
            } while (!(h == first));
        }
    }
    return places - edges + faces == 2 * partCount;
}

} // namespace zvi::lib::drawing
