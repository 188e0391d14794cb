#pragma once

#include "zvi/base/Prefetch.h"
#include "zvi/drawing/LargeVectorDetail.h"
#include "zvi/drawing/PlaceClustersDetail.h"
#include "zvi/drawing/StretchDetail.h"

#include <algorithm>
#include <memory>
#include <span>
#include <vector>

namespace zvi::lib::drawing {

/// An edge as it leaves one of its ends: 2e leaves the start of edge e along it, 2e + 1 leaves its end against it.
struct HalfEdge {
    int number = -1;

    static HalfEdge Along(int edge) { return {2 * edge}; }
    static HalfEdge Against(int edge) { return {2 * edge + 1}; }

    int Edge() const { return number >> 1; }
    bool IsReversed() const { return (number & 1) != 0; }
    HalfEdge Twin() const { return {number ^ 1}; }
    bool operator==(HalfEdge const &other) const = default;
};

/// What has become of an edge.
enum class EdgeState : unsigned char {
    kInMap,      ///< it takes part in the map
    kSetAside,   ///< the same face lies on both its sides, so it bounds nothing
    kContracted, ///< its ends are one place
    kDuplicate   ///< another edge bounds what it bounded
};

/// A stretch between two places. A map holds what most steps look at apart from the stretches, which are large.
struct MapEdge {
    Stretch const &stretch;
    int startPlace = 0;
    int endPlace = 0;
    EdgeState state = EdgeState::kInMap;
};

/// The sides of the faces of a map by number, each a closed walk with the face on its left.
struct WalkNumbers {
    LargeVector<HalfEdge> halves; ///< of one walk after the other, each from its half-edge of the lowest number on
    std::vector<int> begins;      ///< where those of each walk begin, and the end; the first ones rise with the walks
    LargeVector<int> ofHalf;      ///< of each half-edge, -1 for those that are not in the map
    std::vector<int> partOf;      ///< of each walk the first one of its connected part

    std::size_t Count() const { return begins.size() - 1; }
    int Of(HalfEdge h) const { return ofHalf[Index(h.number)]; }
    std::span<HalfEdge const> Walk(std::size_t walk) const {
        return std::span(halves).subspan(Index(begins[walk]), Index(begins[walk + 1] - begins[walk]));
    }
};

/// A planar map: edges between places, and the cyclic order in which they leave each place. Faces are what that order
/// makes of them. Each operation keeps a planar map planar, whatever the coordinates are: it is a step on the order
/// alone.
class PlanarMap {
public:
    explicit PlanarMap(std::vector<DrawingPoint> places) : m_places(std::move(places)) {}

    /// Makes room for so many edges.
    void Reserve(std::size_t edges);
    int AddEdge(MapEdge const &edge);
    /// Lets the half-edges leave their place counter-clockwise in this order; done for all places of a new map before
    /// anything else. Several threads may do so for places of their own.
    void SetOrder(std::span<HalfEdge const> leaving);

    int EdgeCount() const { return static_cast<int>(m_states.size()); }
    MapEdge Edge(int edge) const {
        std::size_t const start = 2 * Index(edge);
        return {m_stretches[Index(edge)], m_ends[start], m_ends[start + 1], m_states[Index(edge)]};
    }
    MapEdge Edge(HalfEdge h) const { return Edge(h.Edge()); }
    /// Has the geometry of an edge fetched before it is looked at.
    void Prefetch(HalfEdge h) const { base::Prefetch(m_stretches[Index(h.Edge())]); }
    /// The geometry of an edge; the map itself does not look at it.
    Stretch &StretchOf(int edge) { return m_stretches[Index(edge)]; }
    PlaceClusters const &Places() const { return m_places; }
    /// Lets several threads ask for places until some of them become one.
    void SettlePlaces() { m_places.Settle(); }
    /// The stretch that the face on the left of the half-edge has on its border, in the direction of the edge: that of
    /// the edge itself, or of a dropped one that lay on this side of it.
    Stretch const &Border(HalfEdge h) const {
        int const border = BorderOf(h);
        return border < 0 ? m_stretches[Index(h.Edge())] : m_borders[Index(border)];
    }

    /// Whether there are edges of which that has become.
    bool HasEdges(EdgeState state) const {
        return std::find(m_states.begin(), m_states.end(), state) != m_states.end();
    }
    /// Whether an edge was an arc when it was added, which is told without a look at its geometry.
    bool WasArc(int edge) const { return m_wereArcs[Index(edge)]; }
    bool IsInMap(int edge) const { return m_states[Index(edge)] == EdgeState::kInMap; }
    /// The cluster of places that the half-edge leaves.
    int Origin(HalfEdge h) const { return m_places.Root(m_ends[Index(h.number)]); }
    int Target(HalfEdge h) const { return Origin(h.Twin()); }
    /// The next half-edge of the face on the left of `h`.
    HalfEdge Next(HalfEdge h) const { return m_cw[Index(h.Twin().number)]; }

    /// Takes an edge out of the map.
    void Remove(int edge, EdgeState why);
    /// Takes a half-edge's edge out of the map as a duplicate of `kept`, with which it bounds a face of its own. The
    /// face beyond it keeps its border.
    void Drop(HalfEdge dropped, HalfEdge kept);
    /// Lets every face have the edges themselves on its border.
    void ForgetBorders();
    /// Makes one place of the two ends of an edge, which must be different places, and takes it out of the map.
    void Contract(int edge, EdgeState why);
    /// Cuts an edge at the fraction `t` of its length by a new place at `p`, and the borders beside it at theirs. The
    /// edge keeps its first part; returns the edge of the second one.
    int Split(int edge, double t, DrawingPoint p);
    /// The same with the place on the edge.
    int Split(int edge, double t) { return Split(edge, t, PointAt(Edge(edge).stretch, t)); }
    /// The fraction at which a border beside an edge is cut when the edge is cut at the fraction `t` by a place at `p`:
    /// the nearest to that, or the same where all of the border is as near.
    static double BorderCut(Stretch const &border, double t, DrawingPoint p) {
        return IsAtCenter(border, p) ? t : std::clamp(FractionAt(border, p), 0.0, 1.0);
    }
    /// The edge of the part behind `edge` when it was split, -1 when it was not or is the last part.
    int NextPart(int edge) const { return Index(edge) < m_nextPart.size() ? m_nextPart[Index(edge)] : -1; }
    /// Makes one place of the origins of two half-edges of one face, so that the face falls into two. They must be
    /// different places.
    void MergeAcrossFace(HalfEdge a, HalfEdge b);

    /// The walks as the map is now. They are looked for when it has changed since it was asked last.
    std::shared_ptr<WalkNumbers const> Walks() const;

    /// Makes room: lets go of the order round the places and of what serves to change the map. The edges and the places
    /// where they end stay.
    void ForgetOrder();

    /// Whether Euler's formula holds for each connected part.
    bool IsPlanar() const;

private:
    void Link(HalfEdge h, HalfEdge ccw) {
        m_ccw[Index(h.number)] = ccw;
        m_cw[Index(ccw.number)] = h;
    }
    void Unlink(HalfEdge h);
    void SetBorder(HalfEdge h, Stretch const &border);
    int BorderOf(HalfEdge h) const { return Index(h.number) < m_borderOf.size() ? m_borderOf[Index(h.number)] : -1; }
    HalfEdge Ccw(HalfEdge h) const { return m_ccw[Index(h.number)]; }

    PlaceClusters m_places;
    LargeVector<Stretch> m_stretches; ///< of each edge
    std::vector<EdgeState> m_states;  ///< of each edge
    std::vector<bool> m_wereArcs;     ///< of each edge
    LargeVector<int> m_ends;          ///< of each half-edge, the place that it leaves
    std::vector<int> m_nextPart;      ///< of each edge as far as they have been split
    std::vector<Stretch> m_borders;
    std::vector<int> m_borderOf; ///< of each half-edge which border it has, -1 and beyond the end for that of the edge
    LargeVector<HalfEdge> m_ccw; ///< of each half-edge, the next one of its place counter-clockwise
    LargeVector<HalfEdge> m_cw;
    mutable std::shared_ptr<WalkNumbers const> m_walks; ///< none when the map has changed
};

} // namespace zvi::lib::drawing
