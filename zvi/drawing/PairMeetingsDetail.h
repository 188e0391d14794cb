#pragma once

#include "zvi/drawing/MeetingsDetail.h"
#include "zvi/drawing/NetworkDetail.h"

#include <algorithm>
#include <array>

namespace zvi::lib::drawing {

/// What a meeting of two edges is.
enum class MeetingKind {
    kEnd,     ///< the second one ends at `place`, inside the first one
    kInside,  ///< both are cut at the point `at`
    kTogether ///< they cross where they keep together, and have no place there for it
};

/// Where two edges meet, or how.
struct EdgeMeeting {
    MeetingKind kind = MeetingKind::kTogether;
    EdgePair edges;
    int place = -1;
    DrawingPoint at;
    bool isShallow = false; ///< inside both, and rounding may put the point off along them
};

/// Finds where pairs of edges meet, without changing the network.
class PairMeetings {
public:
    /// With `keepStarts` circles start at a place, as if they ended there.
    PairMeetings(Network const &network, bool keepStarts) : m_network(network), m_keepStarts(keepStarts) {}

    /// Calls `note(EdgeMeeting)` for each meeting of a pair.
    template <typename Note>
    void LookAt(EdgePair pair, Note const &note) {
        NetworkEdge const &a = EdgeAt(pair.first), &b = EdgeAt(pair.second);
        m_contactCount = 0;
        LookAtEnds(a, {pair.second, pair.first}, note);
        LookAtEnds(b, pair, note);
        if (m_contactCount > 0 && !a.stretch.isArc && !b.stretch.isArc)
            return;
        Meetings const crossings = CrossingsOf(a.stretch, b.stretch);
        bool const isLens = crossings.count == 2 &&
                            StayNear(a.stretch, b.stretch, crossings.points[0], crossings.points[1], m_network.snap);
        // Curves that keep together between two crossings, or all but cross, touch.
        if (crossings.count == 0 || isLens) {
            // Arcs of one circle touch where one of them ends.
            DrawingPoint const aside = m_contactCount > 0 ? m_contacts[0] : a.stretch.start;
            Approach const approach = ApproachOf(a.stretch, b.stretch, aside - a.stretch.center);
            if (approach.exists && approach.distance < m_network.snap) {
                if (isLens && Distance(crossings.points[0], crossings.points[1]) >= kAtContact * m_network.snap)
                    note(EdgeMeeting{MeetingKind::kTogether, pair, -1, {}});
                AddMeeting(pair, approach.onFirst, note);
                return;
            }
        }
        for (int i = 0; i < crossings.count; ++i)
            AddMeeting(pair, crossings.points[i], note);
    }

private:
    /// Rounding may put the point where curves cross at an angle of a lesser sine a snap distance off along them.
    static constexpr double kShallowSine = 0x1p-4;

    /// Where an end lies on another curve, the two do not cross anew within so many snap distances.
    static constexpr double kAtContact = 16.0;

    NetworkEdge const &EdgeAt(int i) const { return m_network.edges[Index(i)]; }

    /// Looks at the ends of the second edge of a pair, `own`, beside the first one. Where a circle is taken to start is
    /// none, unless starts are kept.
    template <typename Note>
    void LookAtEnds(NetworkEdge const &own, EdgePair pair, Note const &note) {
        bool const isFullTurn = own.stretch.IsFullTurn();
        if (!isFullTurn || m_keepStarts)
            LookAtEnd(own.startPlace, pair, note);
        if (!isFullTurn)
            LookAtEnd(own.endPlace, pair, note);
    }

    template <typename Note>
    void LookAtEnd(int place, EdgePair pair, Note const &note) {
        NetworkEdge const &e = EdgeAt(pair.first);
        DrawingPoint const p = m_network.Place(place);
        bool const isEnd = e.EndsAt(place);
        if (!isEnd && !FootOn(e.stretch, p, m_network.snap))
            return;
        m_contacts[Index(m_contactCount++)] = p;
        if (!isEnd)
            note(EdgeMeeting{MeetingKind::kEnd, pair, place, p});
    }

    /// Notes a meeting point of two curves, unless it is one of their contacts but for rounding; or that they keep
    /// together, where they do not part from one another between the two.
    template <typename Note>
    void AddMeeting(EdgePair pair, DrawingPoint p, Note const &note) {
        Stretch const &a = EdgeAt(pair.first).stretch, &b = EdgeAt(pair.second).stretch;
        auto const begin = m_contacts.begin(), end = begin + m_contactCount;
        auto const isAt = [&](DrawingPoint contact) { return Distance(contact, p) < AtContact(a, b); };
        auto const keepTogether = [&](DrawingPoint contact) { return StayNear(a, b, contact, p, m_network.snap); };
        if (std::any_of(begin, end, isAt))
            return;
        if (std::any_of(begin, end, keepTogether))
            note(EdgeMeeting{MeetingKind::kTogether, pair, -1, p});
        else
            note(EdgeMeeting{MeetingKind::kInside, pair, -1, p, AreShallow(a, b, p)});
    }

    /// How near to a contact of theirs two stretches do not cross anew. Across a small circle they do.
    double AtContact(Stretch const &a, Stretch const &b) const {
        double const distance = kAtContact * m_network.snap;
        return std::min({distance, a.isArc ? a.radius : distance, b.isArc ? b.radius : distance});
    }

    /// Whether two stretches cross at a small angle in a point.
    static bool AreShallow(Stretch const &a, Stretch const &b, DrawingPoint p) {
        DrawingPoint const u = a.isArc ? Left(p - a.center) : a.end - a.start;
        DrawingPoint const v = b.isArc ? Left(p - b.center) : b.end - b.start;
        double const cross = Cross(u, v);
        return cross * cross < kShallowSine * kShallowSine * Dot(u, u) * Dot(v, v);
    }

    Network const &m_network;
    bool m_keepStarts;
    std::array<DrawingPoint, 4> m_contacts; ///< of the pair looked at: ends of one edge that lie on the other
    int m_contactCount = 0;
};

} // namespace zvi::lib::drawing
