#include "zvi/drawing/ConnectorsDetail.h"

#include "zvi/drawing/MeetingsDetail.h"
#include "zvi/drawing/PlaceClustersDetail.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace zvi::lib::drawing {

namespace {

/// A corner is drawn to a curve that it misses by less than this share of the tolerance: farther off it passes by.
constexpr double kShareOfCorner = 0.1;

/// A foot whose place is taken by what it must not join stands by this share of the tolerance beside it.
constexpr double kBeside = 1.0 / 64.0;

/// Gaps of the first kind are closed before those of the second, and so on. Next to a gap no wider than nothing, the
/// end is no loose one: how exactly the drawing is written does not tell.
enum GapKind { kNothing, kLooseEnd, kCorner };

/// A gap between a place and another place, or a curve, or between two curves.
struct Gap {
    GapKind kind = kLooseEnd;
    double distance = 0.0;
    DrawingPoint from;
    DrawingPoint to;
    int fromPlace = -1; ///< -1 for a point inside `fromEdge`
    int toPlace = -1;   ///< -1 for a point inside `toEdge`
    int fromEdge = -1;
    int toEdge = -1;
};

/// An end of one of two curves that comes near the other one.
struct Contact {
    int place = 0;
    DrawingPoint at;
    double distance = 0.0; ///< from the curve, 0 for ends that are near one another
};

/// A gap between two curves, unless one of the contacts that lie along it is connected.
struct Waist {
    Gap gap;
    std::vector<Contact> contacts;
};

/// What was found beside some curves.
struct FoundGaps {
    std::vector<Gap> gaps;
    std::vector<Waist> waists;
    std::vector<int> metPlaces; ///< that a curve passes through, or where others end but for nothing
};

/// Finds the gaps beside curves, without changing the network.
class GapFinder {
public:
    GapFinder(Network const &network, double tolerance, double same, Landmarks const &landmarks)
        : m_network(network), m_tolerance(tolerance), m_same(same), m_landmarks(landmarks) {}

    /// Gaps between an end and a curve, and between two curves. Finds which ends lie on a curve, too.
    void LookAt(EdgePair pair) {
        NetworkEdge const &a = EdgeAt(pair.first), &b = EdgeAt(pair.second);
        m_contactCount = 0;
        LookAtEnds(pair.first, pair.second);
        LookAtEnds(pair.second, pair.first);
        Approach const approach = ApproachOf(a.stretch, b.stretch, m_landmarks.direction);
        if (!approach.exists || approach.distance >= m_tolerance || approach.distance < m_network.snap ||
            CrossingsOf(a.stretch, b.stretch).count > 0)
            return;
        // Where one of them ends the gap is that of its end.
        if (IsNearEnd(a.stretch, approach.onFirst, m_same) || IsNearEnd(b.stretch, approach.onSecond, m_same))
            return;
        Waist waist{{kCorner, approach.distance, approach.onFirst, approach.onSecond, -1, -1, pair.first, pair.second},
                    {}};
        std::copy_if(m_contacts.begin(), m_contacts.begin() + m_contactCount, std::back_inserter(waist.contacts),
                     [&](Contact const &contact) {
                         return StayNear(a.stretch, b.stretch, contact.at, approach.onFirst, m_tolerance);
                     });
        m_found.waists.push_back(std::move(waist));
    }

    /// Finds which ends lie on a curve of their own carrier.
    void LookAtCarriers(Carriers const &carriers) {
        for (Carriers::EdgeAtPlace const &passed : carriers.PassedEnds(m_tolerance)) {
            m_contactCount = 0;
            LookAtEnd(passed.place, kNoCurve, passed.edge);
        }
    }

    FoundGaps Take() { return std::move(m_found); }

private:
    NetworkEdge const &EdgeAt(int i) const { return m_network.edges[Index(i)]; }

    static bool IsNearEnd(Stretch const &s, DrawingPoint p, double distance) {
        return !s.IsFullTurn() && std::min(Distance(p, s.start), Distance(p, s.end)) < distance;
    }

    /// Looks at the ends of the edge `own` beside another edge. Where a circle is taken to start is no end.
    void LookAtEnds(int own, int other) {
        if (EdgeAt(own).stretch.IsFullTurn())
            return;
        for (int const place : {EdgeAt(own).startPlace, EdgeAt(own).endPlace})
            LookAtEnd(place, own, other);
    }

    void LookAtEnd(int place, int own, int other) {
        NetworkEdge const &e = EdgeAt(other);
        DrawingPoint const p = m_network.Place(place);
        if (e.EndsAt(place) || IsNearEnd(e.stretch, p, m_tolerance)) {
            m_contacts[Index(m_contactCount++)] = {place, p};
            if (e.stretch.IsFullTurn())
                m_found.metPlaces.push_back(place);
            return;
        }
        std::optional<Foot> const foot = FootOn(e.stretch, p, m_tolerance);
        if (!foot)
            return;
        m_contacts[Index(m_contactCount++)] = {place, p, foot->distance};
        if (foot->distance < m_same)
            m_found.metPlaces.push_back(place);
        if (foot->distance >= m_network.snap)
            m_found.gaps.push_back({kLooseEnd, foot->distance, p, foot->point, place, -1, own, other});
    }

    Network const &m_network;
    double m_tolerance;
    double m_same; ///< a distance that is nothing
    Landmarks const &m_landmarks;
    FoundGaps m_found;
    std::array<Contact, 4> m_contacts; ///< of the pair looked at
    int m_contactCount = 0;
};

class Connectors {
public:
    Connectors(Network &network, double tolerance, Landmarks const &landmarks, base::Workers const &workers)
        : m_workers(workers), m_network(network), m_tolerance(tolerance),
          m_same(SameDistance(tolerance, network.snap, landmarks)), m_landmarks(landmarks),
          m_endCounts(network.places.Places().size(), 0), m_isMet(m_endCounts.size(), false),
          m_edgeAt(m_endCounts.size(), -1), m_joined(network.places.Places()), m_near(std::max(m_same, tolerance)) {
        for (DrawingPoint const p : network.places.Places())
            m_near.Add(p);
        for (int i = 0; i < static_cast<int>(m_network.edges.size()); ++i)
            if (NetworkEdge const &e = EdgeAt(i); !e.stretch.IsFullTurn())
                for (int const place : {e.startPlace, e.endPlace}) {
                    ++m_endCounts[Index(place)];
                    m_edgeAt[Index(place)] = i;
                }
    }

    /// Looks at the curves beside one another.
    void LookAtCurves(CandidatePairs const &pairs) {
        std::vector<FoundGaps> parts(pairs.PartCount() + 1);
        m_workers.Do(pairs.PartCount(), [&](std::size_t part) {
            GapFinder finder(m_network, m_tolerance, m_same, m_landmarks);
            pairs.ForEachIn(part, [&](EdgePair pair) { finder.LookAt(pair); });
            parts[part] = finder.Take();
        });
        GapFinder finder(m_network, m_tolerance, m_same, m_landmarks);
        finder.LookAtCarriers(pairs.OneCarrier());
        parts.back() = finder.Take();
        for (FoundGaps const &part : parts) {
            for (int const place : part.metPlaces)
                m_isMet[Index(place)] = true;
            m_gaps.insert(m_gaps.end(), part.gaps.begin(), part.gaps.end());
            m_waists.insert(m_waists.end(), part.waists.begin(), part.waists.end());
        }
    }

    void LookAtPlaces() {
        std::vector<NearEnds> const found =
            m_workers.Collect<NearEnds>(m_endCounts.size(), [&](std::size_t i, std::vector<NearEnds> &ends) {
                int const place = static_cast<int>(i);
                m_near.ForEachNear(m_network.Place(place), std::max(m_same, m_tolerance),
                                   [&](int other, double distance) {
                                       if (place != other && IsEnd(place) && IsEnd(other))
                                           ends.push_back({place, other, distance});
                                   });
            });
        for (NearEnds const &ends : found)
            if (ends.distance < m_same)
                m_isMet[Index(ends.place)] = true;
        for (auto const &[place, other, distance] : found)
            if (place < other && distance < m_tolerance)
                m_gaps.push_back({IsLoose(place) || IsLoose(other) ? kLooseEnd : kCorner, distance,
                                  m_network.Place(place), m_network.Place(other), place, other, -1, -1});
    }

    std::vector<int> Close() {
        for (Waist const &waist : m_waists)
            if (std::none_of(waist.contacts.begin(), waist.contacts.end(),
                             [this](Contact const &contact) { return IsDrawn(contact.place, contact.distance); }))
                m_gaps.push_back(waist.gap);
        for (Gap &gap : m_gaps)
            if (gap.distance < m_same)
                gap.kind = kNothing;
            else if (gap.fromEdge >= 0 && gap.fromPlace >= 0 && !IsLoose(gap.fromPlace))
                gap.kind = kCorner;
        std::erase_if(m_gaps, [&](Gap const &gap) {
            return gap.kind == kCorner && gap.fromPlace >= 0 && gap.toPlace < 0 &&
                   !IsDrawn(gap.fromPlace, gap.distance);
        });
        std::vector<Measured> order;
        for (std::size_t i = 0; i < m_gaps.size(); ++i) {
            Gap const &gap = m_gaps[i];
            DrawingPoint const middle = (gap.from + gap.to) * 0.5;
            order.push_back({gap.kind, gap.distance, m_landmarks.Rank(middle), middle, static_cast<int>(i),
                             std::fabs(m_landmarks.Rank(gap.from) - m_landmarks.Rank(gap.to))});
        }
        SortShortestFirst(order, m_same);
        for (Measured const &gap : order)
            Connect(m_gaps[Index(gap.number)]);
        return std::move(m_owners);
    }

private:
    /// A place where edges end beside another one.
    struct NearEnds {
        int place = 0;
        int other = 0;
        double distance = 0.0;
    };

    NetworkEdge const &EdgeAt(int i) const { return m_network.edges[Index(i)]; }
    bool IsEnd(int place) const { return m_endCounts[Index(place)] > 0; }
    bool IsLoose(int place) const { return m_endCounts[Index(place)] == 1 && !m_isMet[Index(place)]; }

    /// Whether an end is drawn to a curve at a distance from it.
    bool IsDrawn(int place, double distance) const { return IsLoose(place) || distance < kShareOfCorner * m_tolerance; }

    void Connect(Gap const &gap) {
        int from = gap.fromPlace;
        if (from < 0) {
            from = PlaceOn(gap.fromEdge, gap.from, -1);
            if (from < 0)
                return;
        }
        int const to = gap.toPlace >= 0 ? gap.toPlace : PlaceOn(gap.toEdge, gap.to, from);
        if (to < 0 || m_joined.Root(from) == m_joined.Root(to) || !m_joined.Fit(from, to, m_tolerance))
            return;
        m_joined.Unite(from, to);
        NetworkEdge connector;
        connector.stretch.start = m_network.Place(from);
        connector.stretch.end = m_network.Place(to);
        connector.stretch.radius = Distance(connector.stretch.start, connector.stretch.end);
        connector.startPlace = from;
        connector.endPlace = to;
        m_network.edges.push_back(connector);
        m_owners.push_back(gap.fromEdge >= 0 ? gap.fromEdge : m_edgeAt[Index(from)]);
    }

    /// A place at a point of the edge that may join the place `partner`, -1 when there is none. A place that is there
    /// already is taken, unless it has joined others too far away: then one just beside it on the edge.
    int PlaceOn(int edge, DrawingPoint p, int partner) {
        if (partner >= 0 && !m_joined.Fit(partner, p, m_tolerance))
            return -1;
        int const there = NearestOn(edge, p, partner);
        if (there < 0)
            return AddPlace(p);
        if (partner < 0 || m_joined.Fit(partner, there, m_tolerance))
            return there;
        Stretch const &s = EdgeAt(edge).stretch;
        double const step = kBeside * m_tolerance / LengthOf(s);
        double const at = FractionAt(s, p);
        bool const isForward = m_landmarks.Rank(PointAt(s, at + step)) < m_landmarks.Rank(PointAt(s, at - step));
        for (double const t : {isForward ? at + step : at - step, isForward ? at - step : at + step}) {
            if (!s.IsFullTurn() && (t <= 0.0 || t >= 1.0))
                continue;
            DrawingPoint const beside = PointAt(s, t);
            int const taken = NearestOn(edge, beside, partner);
            if (taken < 0)
                return AddPlace(beside);
            if (m_joined.Fit(partner, taken, m_tolerance))
                return taken;
        }
        return -1;
    }

    /// The place on the edge that is as good as a point of it, -1 when there is none. What the point is to be joined to
    /// is as good only when it is the same place, and where a circle is taken to start only when nothing else is near.
    int NearestOn(int edge, DrawingPoint p, int partner) const {
        int const there = m_network.places.Nearest(p, m_network.snap);
        if (there >= 0 && !IsStart(there))
            return there;
        int nearest = there;
        double distance = m_same;
        m_near.ForEachNear(p, m_same, [&](int place, double d) {
            if (d < distance && place != partner && !IsStart(place) &&
                DistanceTo(EdgeAt(edge).stretch, m_network.Place(place)) < m_network.snap) {
                nearest = place;
                distance = d;
            }
        });
        return nearest;
    }

    /// Whether a place is nothing but where a circle is taken to start.
    bool IsStart(int place) const {
        return Index(place) < m_endCounts.size() && !IsEnd(place) && m_joined.IsAlone(place);
    }

    int AddPlace(DrawingPoint p) {
        m_joined.Add(p);
        m_near.Add(p);
        return m_network.places.Add(p);
    }

    base::Workers m_workers;
    Network &m_network;
    double m_tolerance;
    double m_same; ///< a distance that is nothing
    Landmarks const &m_landmarks;
    std::vector<int> m_endCounts;
    std::vector<bool>
        m_isMet; ///< of each place, whether a curve passes through it, or others end there but for nothing
    std::vector<int> m_edgeAt; ///< of each place, an edge that ends there
    PlaceClusters m_joined;
    PlaceIndex m_near; ///< of all places
    std::vector<int> m_owners;
    std::vector<Gap> m_gaps;
    std::vector<Waist> m_waists;
};

} // namespace

std::vector<int> AddConnectors(Network &network, CandidatePairs const &pairs, double tolerance, bool split,
                               Landmarks const &landmarks, base::Workers const &workers) {
    Connectors connectors(network, tolerance, landmarks, workers);
    if (split)
        connectors.LookAtCurves(pairs);
    connectors.LookAtPlaces();
    return connectors.Close();
}

} // namespace zvi::lib::drawing
