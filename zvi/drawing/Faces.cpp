#include "zvi/drawing/FacesDetail.h"

#include "zvi/base/KeySort.h"
#include "zvi/drawing/NestingDetail.h"

#include <algorithm>
#include <cassert>

namespace zvi::lib::drawing {

namespace {

/// Something at some point.
struct Placed {
    DrawingPoint at;
    std::size_t number = 0;
};

/// Sorts from left to right, and what is above one another from below. Things whose distances from the left follow one
/// another by less than the snap distance are above one another.
void SortFromLeft(std::vector<Placed> &things, double snap) {
    if (things.size() < 2)
        return;
    std::vector<base::Keyed> order(things.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = {base::OrderedBits(things[i].at.y), i};
    base::SortByKeys(order);
    for (base::Keyed &keyed : order)
        keyed.key = base::OrderedBits(things[keyed.of].at.x);
    base::SortByKeys(order);
    std::vector<Placed> sorted;
    sorted.reserve(things.size());
    for (base::Keyed const &keyed : order)
        sorted.push_back(things[keyed.of]);
    things = std::move(sorted);
    for (auto begin = things.begin(); begin != things.end();) {
        auto end = begin + 1;
        while (end != things.end() && end->at.x - (end - 1)->at.x < snap)
            ++end;
        std::sort(begin, end, [](Placed const &a, Placed const &b) { return a.at.y < b.at.y; });
        begin = end;
    }
}

/// The places of a map from left to right, and those above one another from below.
class PlaceOrder {
public:
    PlaceOrder(PlanarMap const &map, double snap) : m_map(map), m_snap(snap), m_ranks(Index(map.Places().Count()), -1) {
        std::vector<Placed> places;
        for (int e = 0; e < map.EdgeCount(); ++e)
            if (map.IsInMap(e))
                for (HalfEdge const h : {HalfEdge::Along(e), HalfEdge::Against(e)})
                    if (int &rank = m_ranks[Index(map.Origin(h))]; rank < 0) {
                        rank = 0;
                        places.push_back({BeginOf(map, h), Index(map.Origin(h))});
                    }
        SortFromLeft(places, snap);
        for (std::size_t i = 0; i < places.size(); ++i)
            m_ranks[places[i].number] = static_cast<int>(i);
    }

    int RankOfPlace(int place) const { return m_ranks[Index(place)]; }
    int RankOf(HalfEdge h) const { return RankOfPlace(m_map.Origin(h)); }

    /// The order of things that each begin with a half-edge of its own: by where that begins, and those that begin at
    /// one place by the middles of their half-edges.
    std::vector<std::size_t> OrderOf(std::vector<HalfEdge> const &firsts) const {
        std::vector<base::Keyed> ranked(firsts.size());
        for (std::size_t i = 0; i < firsts.size(); ++i)
            ranked[i] = {static_cast<std::uint64_t>(RankOf(firsts[i])), i};
        base::SortByKeys(ranked);
        std::vector<std::size_t> numbers;
        numbers.reserve(firsts.size());
        std::vector<Placed> tied;
        for (auto begin = ranked.begin(); begin != ranked.end();) {
            auto const end = std::find_if(begin + 1, ranked.end(),
                                          [rank = begin->key](base::Keyed const &of) { return of.key != rank; });
            tied.clear();
            for (; begin != end; ++begin)
                tied.push_back({PointAt(m_map.Edge(firsts[begin->of]).stretch, 0.5), begin->of});
            SortFromLeft(tied, m_snap);
            for (Placed const &of : tied)
                numbers.push_back(of.number);
        }
        return numbers;
    }

private:
    PlanarMap const &m_map;
    double m_snap;
    std::vector<int> m_ranks; ///< of each place that stands for a cluster
};

/// Takes walks apart where they come back to a place.
class LoopSplitter {
public:
    LoopSplitter(PlanarMap const &map, PlaceOrder const &order)
        : m_map(map), m_order(order), m_stackOfPlace(Index(map.Places().Count()), -1) {}

    /// The loops of a walk, to be taken before the next one is asked for.
    std::vector<Loop> &LoopsOf(FaceWalk const &walk) {
        std::vector<Loop> &loops = m_loops;
        loops.clear();
        HalfEdge h = walk.first;
        do {
            m_stackOfPlace[Index(m_map.Origin(h))] = static_cast<int>(m_open.size());
            m_open.push_back(h);
            if (int const begin = m_stackOfPlace[Index(m_map.Target(h))]; begin >= 0) {
                loops.push_back({LoopFrom({m_open.begin() + begin, m_open.end()}), walk.area});
                m_open.resize(Index(begin));
            }
            h = m_map.Next(h);
        } while (!(h == walk.first));
        assert(m_open.empty());
        if (loops.size() > 1)
            for (Loop &loop : loops)
                loop.area = AreaOf(m_map, loop.halves);
        return loops;
    }

private:
    std::vector<HalfEdge> LoopFrom(std::vector<HalfEdge> halves) {
        auto first = halves.begin();
        int least = m_order.RankOf(*first);
        for (auto h = halves.begin(); h != halves.end(); ++h) {
            int const place = m_map.Origin(*h), rank = m_order.RankOfPlace(place);
            m_stackOfPlace[Index(place)] = -1;
            if (rank < least) {
                least = rank;
                first = h;
            }
        }
        std::rotate(halves.begin(), first, halves.end());
        return halves;
    }

    PlanarMap const &m_map;
    PlaceOrder const &m_order;
    std::vector<Loop> m_loops;       ///< of the walk
    std::vector<HalfEdge> m_open;    ///< of the walk, not yet in a loop
    std::vector<int> m_stackOfPlace; ///< where the walk left each place, -1 when the place is not open
};

/// Things that begin with loops, in the order of those.
template <typename Thing, typename LoopOf>
std::vector<Thing> Sorted(std::vector<Thing> things, PlaceOrder const &order, LoopOf loopOf) {
    std::vector<HalfEdge> firsts;
    firsts.reserve(things.size());
    for (Thing const &thing : things)
        firsts.push_back(loopOf(thing).halves.front());
    std::vector<Thing> sorted;
    sorted.reserve(things.size());
    for (std::size_t const i : order.OrderOf(firsts))
        sorted.push_back(std::move(things[i]));
    return sorted;
}

/// The face that a walk bounds: of its loops the one that runs counter-clockwise is the border.
Face FaceOf(std::vector<Loop> &loops) {
    Face face;
    if (loops.size() == 1) {
        face.outer = std::move(loops.front());
        return face;
    }
    auto const outer =
        std::max_element(loops.begin(), loops.end(), [](Loop const &a, Loop const &b) { return a.area < b.area; });
    face.outer = std::move(*outer);
    loops.erase(outer);
    face.holes = std::move(loops);
    return face;
}

/// The faces of the walks that bound one; `faceOfWalk` gets which of them that of each walk is.
std::vector<Face> BoundedFaces(PlanarMap const &map, FaceWalks const &walks, PlaceOrder const &order,
                               std::vector<int> &faceOfWalk, base::Workers const &workers) {
    std::vector<std::size_t> bounding;
    for (std::size_t w = 0; w < walks.walks.size(); ++w)
        if (!walks.walks[w].isOutside && walks.walks[w].area > 0.0) {
            faceOfWalk[w] = static_cast<int>(bounding.size());
            bounding.push_back(w);
        }
    std::vector<Face> faces(bounding.size());
    workers.ForEachPart(faces.size(), [&](std::size_t, std::size_t begin, std::size_t end) {
        LoopSplitter splitter(map, order);
        for (std::size_t f = begin; f < end; ++f)
            faces[f] = FaceOf(splitter.LoopsOf(walks.walks[bounding[f]]));
    });
    return faces;
}

} // namespace

std::vector<Face> FindFaces(PlanarMap const &map, FaceWalks const &walks, double snap, double same, double moved,
                            Landmarks const &landmarks, base::Workers const &workers) {
    PlaceOrder const order(map, snap);
    std::vector<int> const parents = NestOutsides(map, walks, snap, same, moved, landmarks, workers);
    std::vector<int> faceOfWalk(walks.walks.size(), -1);
    std::vector<Face> faces = BoundedFaces(map, walks, order, faceOfWalk, workers);
    LoopSplitter splitter(map, order);
    for (std::size_t w = 0; w < walks.walks.size(); ++w) {
        if (parents[w] < 0 || faceOfWalk[Index(parents[w])] < 0)
            continue;
        std::vector<Loop> &holes = faces[Index(faceOfWalk[Index(parents[w])])].holes;
        for (Loop &loop : splitter.LoopsOf(walks.walks[w]))
            holes.push_back(std::move(loop));
    }
    for (Face &face : faces)
        if (face.holes.size() > 1)
            face.holes = Sorted(std::move(face.holes), order, [](Loop const &l) -> Loop const & { return l; });
    return Sorted(std::move(faces), order, [](Face const &f) -> Loop const & { return f.outer; });
}

} // namespace zvi::lib::drawing
