#include "zvi/drawing/PlanarMapDetail.h"

#include "zvi/base/DisjointSets.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <utility>

namespace zvi::lib::drawing {

namespace {

/// Room is made for one more edge for each so many, which some are split into later.
constexpr std::size_t kEdgesOfSplit = 16;

void FindParts(WalkNumbers &numbers) {
    base::DisjointSets parts(numbers.Count());
    for (std::size_t h = 0; h < numbers.ofHalf.size(); h += 2)
        if (numbers.ofHalf[h] >= 0)
            parts.Unite(numbers.ofHalf[h], numbers.ofHalf[h + 1]);
    numbers.partOf.resize(numbers.Count());
    for (std::size_t w = 0; w < numbers.partOf.size(); ++w)
        numbers.partOf[w] = parts.Find(static_cast<int>(w));
}

} // namespace

void PlanarMap::Reserve(std::size_t edges) {
    edges += edges / kEdgesOfSplit;
    m_stretches.reserve(edges);
    m_states.reserve(edges);
    m_wereArcs.reserve(edges);
    m_ends.reserve(2 * edges);
    m_ccw.reserve(2 * edges);
    m_cw.reserve(2 * edges);
}

int PlanarMap::AddEdge(MapEdge const &edge) {
    int const number = EdgeCount();
    m_walks.reset();
    m_stretches.push_back(edge.stretch);
    m_states.push_back(edge.state);
    m_wereArcs.push_back(edge.stretch.isArc);
    m_ends.push_back(edge.startPlace);
    m_ends.push_back(edge.endPlace);
    for (HalfEdge const h : {HalfEdge::Along(number), HalfEdge::Against(number)}) {
        m_ccw.push_back(h);
        m_cw.push_back(h);
    }
    return number;
}

void PlanarMap::SetOrder(std::span<HalfEdge const> leaving) {
    for (std::size_t i = 0; i < leaving.size(); ++i)
        Link(leaving[i], leaving[(i + 1) % leaving.size()]);
}

void PlanarMap::Unlink(HalfEdge h) {
    Link(m_cw[Index(h.number)], Ccw(h));
    Link(h, h);
}

void PlanarMap::Remove(int edge, EdgeState why) {
    m_walks.reset();
    Unlink(HalfEdge::Along(edge));
    Unlink(HalfEdge::Against(edge));
    m_states[Index(edge)] = why;
}

void PlanarMap::SetBorder(HalfEdge h, Stretch const &border) {
    m_borderOf.resize(m_cw.size(), -1);
    m_borderOf[Index(h.number)] = static_cast<int>(m_borders.size());
    m_borders.push_back(border);
}

void PlanarMap::Drop(HalfEdge dropped, HalfEdge kept) {
    assert(Next(dropped) == kept && Next(kept) == dropped);
    Stretch const border = Border(dropped.Twin());
    SetBorder(kept, dropped.Twin().IsReversed() == kept.IsReversed() ? border : Reversed(border));
    Remove(dropped.Edge(), EdgeState::kDuplicate);
}

void PlanarMap::ForgetBorders() {
    m_borders.clear();
    m_borderOf.clear();
}

void PlanarMap::Contract(int edge, EdgeState why) {
    HalfEdge const along = HalfEdge::Along(edge), against = HalfEdge::Against(edge);
    HalfEdge const before = m_cw[Index(along.number)], beforeTwin = m_cw[Index(against.number)];
    int const start = m_ends[Index(along.number)], end = m_ends[Index(against.number)];
    assert(IsInMap(edge) && Origin(along) != Origin(against));
    Remove(edge, why);
    if (!(before == along) && !(beforeTwin == against))
        MergeAcrossFace(before, beforeTwin);
    else
        m_places.Unite(start, end);
}

int PlanarMap::Split(int edge, double t, DrawingPoint p) {
    assert(t >= 0.0 && t <= 1.0);
    Stretch const whole = m_stretches[Index(edge)];
    int const middle = m_places.Add(p);
    int &end = m_ends[Index(HalfEdge::Against(edge).number)];
    int const oldPlace = std::exchange(end, middle);
    m_stretches[Index(edge)] = PartOf(whole, 0.0, t);
    int const number = AddEdge({PartOf(whole, t, 1.0), middle, oldPlace, m_states[Index(edge)]});
    m_nextPart.resize(m_states.size(), -1);
    m_nextPart[Index(number)] = std::exchange(m_nextPart[Index(edge)], number);
    for (HalfEdge const h : {HalfEdge::Along(edge), HalfEdge::Against(edge)}) {
        if (BorderOf(h) < 0)
            continue;
        Stretch const border = Border(h);
        double const at = BorderCut(border, t, p);
        m_borders[Index(BorderOf(h))] = PartOf(border, 0.0, at);
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
    SetOrder(std::array{oldEnd, HalfEdge::Along(number)});
    return number;
}

void PlanarMap::MergeAcrossFace(HalfEdge a, HalfEdge b) {
    assert(Origin(a) != Origin(b));
    m_walks.reset();
    m_places.Unite(Origin(a), Origin(b));
    HalfEdge const afterA = Ccw(a), afterB = Ccw(b);
    Link(a, afterB);
    Link(b, afterA);
}

void PlanarMap::ForgetOrder() {
    m_walks.reset();
    m_ccw = LargeVector<HalfEdge>();
    m_cw = LargeVector<HalfEdge>();
    m_borders = std::vector<Stretch>();
    m_borderOf = std::vector<int>();
    m_places.ForgetMembers();
}

std::shared_ptr<WalkNumbers const> PlanarMap::Walks() const {
    if (m_walks)
        return m_walks;
    auto const numbers = std::make_shared<WalkNumbers>();
    numbers->ofHalf.assign(m_cw.size(), -1);
    numbers->halves.reserve(m_cw.size());
    numbers->begins.push_back(0);
    for (int number = 0; number < 2 * EdgeCount(); ++number) {
        HalfEdge const first{number};
        if (!IsInMap(first.Edge()) || numbers->ofHalf[Index(number)] >= 0)
            continue;
        int const walk = static_cast<int>(numbers->Count());
        HalfEdge h = first;
        do {
            numbers->ofHalf[Index(h.number)] = walk;
            numbers->halves.push_back(h);
            h = Next(h);
        } while (!(h == first));
        numbers->begins.push_back(static_cast<int>(numbers->halves.size()));
    }
    FindParts(*numbers);
    m_walks = numbers;
    return m_walks;
}

bool PlanarMap::IsPlanar() const {
    std::vector<bool> hasEdge(Index(m_places.Count()), false);
    int edges = 0, places = 0, parts = 0;
    for (int e = 0; e < EdgeCount(); ++e) {
        if (!IsInMap(e))
            continue;
        ++edges;
        for (HalfEdge const h : {HalfEdge::Along(e), HalfEdge::Against(e)})
            if (int const place = Origin(h); !hasEdge[Index(place)]) {
                hasEdge[Index(place)] = true;
                ++places;
            }
    }
    std::shared_ptr<WalkNumbers const> const walks = Walks();
    for (std::size_t w = 0; w < walks->partOf.size(); ++w)
        parts += Index(walks->partOf[w]) == w ? 1 : 0;
    return places - edges + static_cast<int>(walks->Count()) == 2 * parts;
}

} // namespace zvi::lib::drawing
