#pragma once

#include "zvi/drawing/NetworkDetail.h"

#include <utility>
#include <vector>

namespace zvi::lib::drawing {

/// Lines and circles on each of which many edges lie, but for rounding, and overlap one another many times over. Where
/// such edges meet is told by where they begin and end along their carrier, so that they need not be compared with one
/// another: each passes all places of the carrier between its own two ends.
class Carriers {
public:
    /// An edge on a carrier, between its lower and its higher position along that.
    struct Member {
        int edge = 0;
        double low = 0.0;
        double high = 0.0; ///< on a circle above the lower one, by up to a full turn
        int lowPlace = 0;
        int highPlace = 0;
        bool isForward = false; ///< the edge runs from the lower to the higher position
    };

    /// What edges lie on. Positions are distances along a line, or angles round a circle.
    struct Carrier {
        bool isCircle = false;
        DrawingPoint base;      ///< on the line, or the centre
        DrawingPoint direction; ///< of the line, of length 1
        double radius = 0.0;
        std::vector<Member> members; ///< by their edges

        double PositionOf(DrawingPoint p) const;
        double DistanceOf(DrawingPoint p) const;
        /// The difference of the positions of points at a distance from one another.
        double StepOf(double distance) const;
    };

    /// An edge, and the end of another one on the same carrier.
    struct EdgeAtPlace {
        int edge = 0;
        int place = 0;
    };

    /// No carriers at all.
    Carriers() = default;
    /// `reach` is the distance below which edges are of interest to one another.
    Carriers(Network const &network, double reach);

    std::vector<Carrier> const &All() const { return m_carriers; }
    bool IsEmpty() const { return m_carriers.empty(); }
    /// The carrier of an edge by number, -1 for none, as for edges that have come since.
    int CarrierOf(int edge) const {
        return IsEmpty() || Index(edge) >= m_carrierOf.size() ? -1 : m_carrierOf[Index(edge)];
    }
    /// An edge that is on a carrier, as a member of it.
    Member const &MemberOf(int edge) const;
    /// Whether two edges are on one carrier and need not be compared, because they overlap, touch, or are far apart.
    bool AreSettled(int a, int b) const;
    /// Adds the edges on the carrier of an edge with which it must be compared all the same.
    void AddUnsettled(int edge, std::vector<int> &out) const;

    /// The line on which an edge lies, when edges of that end at both places; -1 when there is none, as on a circle.
    int LineThrough(int edge, int place, int other) const;
    /// Adds the edges of a line that end between two places where edges of it end: all others that come near those
    /// places pass both or end there.
    void AddEndingBetween(int line, int place, int other, std::vector<int> &out) const;

    /// For each end that an edge on the same carrier passes farther than `distance` from its own ends, at least one
    /// such edge; some that do not are among them.
    std::vector<EdgeAtPlace> PassedEnds(double distance) const;

private:
    /// An end of a member.
    struct End {
        double position = 0.0;
        int place = 0;
        int edge = 0;
    };

    void FindCircles(Network const &network);
    void FindLines(Network const &network);
    void Add(Network const &network, Carrier carrier, std::vector<int> const &edges);
    void FindUnsettled(Carrier const &line);
    /// The ends on a line from a place on, in their order; none when no edge of it ends there.
    std::vector<End>::const_iterator FindEnd(int line, int place) const;

    Network const *m_network = nullptr;
    double m_reach = 0.0;
    double m_snap = 0.0;
    double m_near = 0.0; ///< how far ends may lie off their carrier
    std::vector<Carrier> m_carriers;
    std::vector<std::vector<End>> m_ends;         ///< of the members of each line, along it
    std::vector<int> m_carrierOf;                 ///< of each edge
    std::vector<int> m_numbers;                   ///< of each edge, which member it is
    std::vector<std::pair<int, int>> m_unsettled; ///< both ways, in order
};

} // namespace zvi::lib::drawing
