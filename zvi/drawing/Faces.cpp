#include "zvi/drawing/FacesDetail.h"

#include "zvi/drawing/NestingDetail.h"

#include <algorithm>
#include <cassert>

namespace zvi::lib::drawing {

namespace {

/// The places of a map from left to right, and those above one another from below. Places whose distances from the left
/// follow one another by less than the snap distance are above one another.
class PlaceOrder {
public:
    PlaceOrder(PlanarMap const &map, double snap) : m_map(map), m_ranks(Index(map.Places().Count()), -1) {
        std::vector<Ranked> places;
        for (int e = 0; e < map.EdgeCount(); ++e)
            if (map.IsInMap(e))
                for (HalfEdge const h : {HalfEdge::Along(e), HalfEdge::Against(e)})
                    if (int &rank = m_ranks[Index(map.Origin(h))]; rank < 0) {
                        rank = 0;
                        places.push_back({BeginOf(map, h), map.Origin(h)});
                    }
        std::sort(places.begin(), places.end(), [](Ranked const &a, Ranked const &b) { return a.at.x < b.at.x; });
        for (auto begin = places.begin(); begin != places.end();) {
            auto end = begin + 1;
            while (end != places.end() && end->at.x - (end - 1)->at.x < snap)
                ++end;
            std::sort(begin, end, [](Ranked const &a, Ranked const &b) { return a.at.y < b.at.y; });
            begin = end;
        }
        for (std::size_t i = 0; i < places.size(); ++i)
            m_ranks[Index(places[i].place)] = static_cast<int>(i);
    }

    int RankOf(HalfEdge h) const { return m_ranks[Index(m_map.Origin(h))]; }

private:
    struct Ranked {
        DrawingPoint at;
        int place;
    };

    PlanarMap const &m_map;
    std::vector<int> m_ranks; ///< of each place that stands for a cluster
};

/// Takes walks apart where they come back to a place.
class LoopSplitter {
public:
    LoopSplitter(PlanarMap const &map, PlaceOrder const &order)
        : m_map(map), m_order(order), m_stackOfPlace(Index(map.Places().Count()), -1) {}

    std::vector<Loop> LoopsOf(HalfEdge first) {
        std::vector<Loop> loops;
        std::vector<HalfEdge> open;
        HalfEdge h = first;
        do {
            m_stackOfPlace[Index(m_map.Origin(h))] = static_cast<int>(open.size());
            open.push_back(h);
            if (int const begin = m_stackOfPlace[Index(m_map.Target(h))]; begin >= 0) {
                loops.push_back(MakeLoop({open.begin() + begin, open.end()}));
                open.resize(Index(begin));
            }
            h = m_map.Next(h);
        } while (!(h == first));
        assert(open.empty());
        return loops;
    }

private:
    Loop MakeLoop(std::vector<HalfEdge> halves) {
        auto first = halves.begin();
        for (auto h = halves.begin(); h != halves.end(); ++h) {
            m_stackOfPlace[Index(m_map.Origin(*h))] = -1;
            if (m_order.RankOf(*h) < m_order.RankOf(*first))
                first = h;
        }
        std::rotate(halves.begin(), first, halves.end());
        double const area = AreaOf(m_map, halves);
        return {std::move(halves), area};
    }

    PlanarMap const &m_map;
    PlaceOrder const &m_order;
    std::vector<int> m_stackOfPlace; ///< where the walk left each place, -1 when the place is not open
};

/// Orders loops by their places, and by how far left the edges between the same places bulge.
bool LoopComesFirst(PlanarMap const &map, PlaceOrder const &order, Loop const &a, Loop const &b) {
    return std::lexicographical_compare(
        a.halves.begin(), a.halves.end(), b.halves.begin(), b.halves.end(), [&](HalfEdge h, HalfEdge other) {
            if (order.RankOf(h) != order.RankOf(other))
                return order.RankOf(h) < order.RankOf(other);
            return h.Edge() != other.Edge() &&
                   ComesFirst(PointAt(map.Edge(h).stretch, 0.5), PointAt(map.Edge(other).stretch, 0.5));
        });
}

/// The faces in the order of their outer loops.
std::vector<Face> Sorted(std::vector<Face> faces, PlanarMap const &map, PlaceOrder const &order) {
    std::vector<std::pair<int, std::size_t>> ranks; // of the place where the outer loop begins
    ranks.reserve(faces.size());
    for (std::size_t i = 0; i < faces.size(); ++i)
        ranks.emplace_back(order.RankOf(faces[i].outer.halves.front()), i);
    std::sort(ranks.begin(), ranks.end(), [&](auto const &a, auto const &b) {
        return a.first != b.first ? a.first < b.first
                                  : LoopComesFirst(map, order, faces[a.second].outer, faces[b.second].outer);
    });
    std::vector<Face> sorted;
    sorted.reserve(faces.size());
    for (auto const &[rank, face] : ranks)
        sorted.push_back(std::move(faces[face]));
    return sorted;
}

/// The face that a walk bounds: of its loops the one that runs counter-clockwise is the border.
Face FaceOf(std::vector<Loop> loops) {
    Face face;
    auto const outer =
        std::max_element(loops.begin(), loops.end(), [](Loop const &a, Loop const &b) { return a.area < b.area; });
    face.outer = std::move(*outer);
    loops.erase(outer);
    face.holes = std::move(loops);
    return face;
}

} // namespace

std::vector<Face> FindFaces(PlanarMap const &map, FaceWalks const &walks, double snap) {
    PlaceOrder const order(map, snap);
    LoopSplitter splitter(map, order);
    std::vector<int> const parents = NestOutsides(map, walks, snap);
    std::vector<int> faceOfWalk(walks.walks.size(), -1);
    std::vector<Face> faces;
    for (std::size_t w = 0; w < walks.walks.size(); ++w) {
        if (walks.walks[w].isOutside || !(walks.walks[w].area > 0.0))
            continue;
        faceOfWalk[w] = static_cast<int>(faces.size());
        faces.push_back(FaceOf(splitter.LoopsOf(walks.walks[w].first)));
    }
    for (std::size_t w = 0; w < walks.walks.size(); ++w) {
        if (parents[w] < 0 || faceOfWalk[Index(parents[w])] < 0)
            continue;
        std::vector<Loop> &holes = faces[Index(faceOfWalk[Index(parents[w])])].holes;
        for (Loop &loop : splitter.LoopsOf(walks.walks[w].first))
            holes.push_back(std::move(loop));
    }
    for (Face &face : faces)
        std::sort(face.holes.begin(), face.holes.end(),
                  [&](Loop const &a, Loop const &b) { return LoopComesFirst(map, order, a, b); });
    return Sorted(std::move(faces), map, order);
}

} // namespace zvi::lib::drawing
