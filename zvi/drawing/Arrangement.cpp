#include "zvi/drawing/ArrangementDetail.h"

#include "zvi/base/Buckets.h"
#include "zvi/drawing/CandidatePairsDetail.h"
#include "zvi/drawing/ConnectorsDetail.h"
#include "zvi/drawing/PairMeetingsDetail.h"
#include "zvi/drawing/RotationDetail.h"
#include "zvi/drawing/StretchIndexDetail.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <numeric>
#include <unordered_map>
#include <utility>

namespace zvi::lib::drawing {

namespace {

/// How much coarser each further try is.
constexpr double kCoarser = 16.0;

/// A place has drawn an edge to it when it misses the edge by more than so many units of rounding.
constexpr double kDrawnInRoundings = 2.0;

/// So many units of rounding do not come to be one place: a drawing that had to be seen that coarsely would come from a
/// mistake of ours.
constexpr double kCoarsestInRoundings = 0x1p20;

/// With every coordinate 0 there is no rounding, but a snap distance there must be.
constexpr double kSmallestSnap = 1e-300;

/// A stretch of an arc that leaves a place and returns to it within this many snap distances is part of its neighbour.
constexpr double kAbsorbed = 4.0;

/// So many meetings are found before their places are, and these are fetched so many ahead.
constexpr std::size_t kMeetingsAtOnce = 256, kAhead = 8;

/// The places at which one circle starts and nothing else is.
std::vector<bool> BareStarts(Network const &network, std::vector<Incidence> const &incidences) {
    std::vector<int> counts(network.places.Places().size(), 0);
    for (NetworkEdge const &e : network.edges) {
        counts[Index(e.startPlace)] += e.stretch.IsFullTurn() ? 1 : 2;
        counts[Index(e.endPlace)] += e.stretch.IsFullTurn() ? 0 : 2;
    }
    for (Incidence const &i : incidences)
        ++counts[Index(i.place)];
    std::vector<bool> isBare(counts.size());
    std::transform(counts.begin(), counts.end(), isBare.begin(), [](int count) { return count == 1; });
    return isBare;
}

/// Finds the places inside each edge of a network.
class IncidenceFinder {
public:
    IncidenceFinder(Network &network, bool keepStarts, base::Workers const &workers)
        : m_network(network), m_keepStarts(keepStarts), m_workers(workers), m_meetings(network, keepStarts) {}

    void LookAt(EdgePair pair) {
        m_meetings.LookAt(pair, [this](EdgeMeeting const &meeting) { Add(meeting); });
    }

    /// Looks at all pairs: several threads find meetings, a window of parts at a time, and their places follow in
    /// order.
    void LookAt(CandidatePairs const &pairs) {
        std::size_t const parts = pairs.PartCount(), window = 2 * m_workers.Count();
        if (m_workers.Count() == 1 || parts == 1) {
            LookAtOneByOne(pairs);
            return;
        }
        for (std::size_t first = 0; first < parts; first += window) {
            std::vector<std::vector<EdgeMeeting>> found(std::min(window, parts - first));
            m_workers.Do(found.size(), [&](std::size_t i) {
                PairMeetings meetings(m_network, m_keepStarts);
                std::vector<EdgeMeeting> kept;
                auto const keep = [&](EdgeMeeting const &meeting) { kept.push_back(meeting); };
                pairs.ForEachIn(first + i, [&](EdgePair pair) { meetings.LookAt(pair, keep); });
                found[i] = std::move(kept);
            });
            for (std::vector<EdgeMeeting> const &part : found)
                Add(part);
        }
    }

    /// Lets edges run through the places that come near them, as far as those have drawn other edges or may stand off
    /// along them, or through all places that come near them; where a circle is taken to start is none, unless starts
    /// are kept.
    void DrawEdgesToPlaces(bool all) {
        std::vector<bool> draws(m_network.places.Places().size(), false);
        if (all) {
            if (!m_keepStarts)
                draws = BareStarts(m_network, m_incidences);
            draws.flip();
        } else {
            SharePlaces();
        }
        bool any = all || !m_shallow.empty();
        for (int const place : m_shallow)
            draws[Index(place)] = true;
        for (Incidence const &i : m_incidences) {
            std::optional<Foot> const foot = FootOn(EdgeAt(i.edge).stretch, m_network.Place(i.place));
            if (foot && foot->distance > kDrawnInRoundings * m_network.rounding)
                any = draws[Index(i.place)] = true;
        }
        if (!any)
            return;
        std::vector<Stretch const *> stretches;
        for (NetworkEdge const &e : m_network.edges)
            stretches.push_back(&e.stretch);
        StretchIndex const index(stretches, m_network.snap, m_workers);
        StretchIndex::Search search;
        std::vector<int> found;
        for (int place = 0; place < static_cast<int>(draws.size()); ++place) {
            if (!draws[Index(place)])
                continue;
            DrawingPoint const p = m_network.Place(place);
            index.Find({p.x, p.y, p.x, p.y}, found, search);
            for (int const edge : found)
                AddIfNear(edge, place);
        }
    }

    /// The incidences by edge and along each edge; `begins` gets where those of each edge begin.
    std::vector<Incidence> Sorted(std::vector<std::size_t> &begins) const {
        begins.assign(m_network.edges.size() + 1, 0);
        std::vector<Incidence> sorted(m_incidences.size());
        base::SortIntoBuckets(
            m_incidences.size(), std::span(begins), [&](std::size_t i) { return m_incidences[i].edge; },
            [&](std::size_t place, std::size_t i) { sorted[place] = m_incidences[i]; });
        m_workers.ForEach(begins.size() - 1, [&](std::size_t e) {
            std::span const along = std::span(sorted).subspan(begins[e], begins[e + 1] - begins[e]);
            for (Incidence &incidence : along)
                incidence.t = FractionAt(EdgeAt(incidence.edge).stretch, m_network.Place(incidence.place));
            std::sort(along.begin(), along.end(), [](Incidence const &a, Incidence const &b) { return a.t < b.t; });
        });
        return sorted;
    }

private:
    NetworkEdge const &EdgeAt(int i) const { return m_network.edges[Index(i)]; }

    /// The same on one thread, which finds some meetings before it adds them.
    void LookAtOneByOne(CandidatePairs const &pairs) {
        std::vector<EdgeMeeting> found;
        auto const keep = [&](EdgeMeeting const &meeting) { found.push_back(meeting); };
        pairs.ForEach([&](EdgePair pair) {
            m_meetings.LookAt(pair, keep);
            if (found.size() < kMeetingsAtOnce)
                return;
            Add(found);
            found.clear();
        });
        Add(found);
    }

    void Add(std::vector<EdgeMeeting> const &meetings) {
        for (std::size_t i = 0; i < meetings.size(); ++i) {
            if (i + kAhead < meetings.size())
                m_network.places.Prefetch(meetings[i + kAhead].at);
            Add(meetings[i]);
        }
    }

    void Add(EdgeMeeting const &meeting) {
        switch (meeting.kind) {
        case MeetingKind::kEnd:
            m_incidences.push_back({meeting.edges.first, meeting.place, 0.0});
            return;
        case MeetingKind::kTogether:
            m_together.push_back(meeting.edges);
            return;
        case MeetingKind::kInside:
            int const place = m_network.places.NearestOrAdd(meeting.at, m_network.snap);
            if (meeting.isShallow)
                m_shallow.push_back(place);
            for (int const edge : {meeting.edges.first, meeting.edges.second})
                if (!EdgeAt(edge).EndsAt(place))
                    m_incidences.push_back({edge, place, 0.0});
        }
    }

    /// By edge the places inside it, each once, of the edges that keep together with others.
    using PlacesInside = std::unordered_map<int, std::vector<int>>;
    PlacesInside InsideTogether() const {
        PlacesInside inside;
        for (EdgePair const pair : m_together)
            for (int const edge : {pair.first, pair.second})
                inside[edge];
        for (Incidence const &i : m_incidences)
            if (auto const of = inside.find(i.edge); of != inside.end())
                of->second.push_back(i.place);
        for (auto &[edge, places] : inside) {
            std::sort(places.begin(), places.end());
            places.erase(std::unique(places.begin(), places.end()), places.end());
        }
        return inside;
    }

    /// Lets each of two edges that keep together run through the places of the other that it comes near: what crosses
    /// the two there crosses them in the order that the places tell.
    void SharePlaces() {
        PlacesInside const inside = InsideTogether();
        std::vector<int> missing;
        for (EdgePair const pair : m_together)
            for (auto const &[edge, other] : {std::pair(pair.first, pair.second), std::pair(pair.second, pair.first)}) {
                std::vector<int> const &own = inside.at(edge), &others = inside.at(other);
                missing.clear();
                std::set_difference(others.begin(), others.end(), own.begin(), own.end(), std::back_inserter(missing));
                for (int const place : missing)
                    AddIfNear(edge, place);
            }
    }

    void AddIfNear(int edge, int place) {
        if (!EdgeAt(edge).EndsAt(place) && FootOn(EdgeAt(edge).stretch, m_network.Place(place), m_network.snap))
            m_incidences.push_back({edge, place, 0.0});
    }

    Network &m_network;
    bool m_keepStarts;
    base::Workers m_workers;
    PairMeetings m_meetings;
    std::vector<Incidence> m_incidences;
    std::vector<EdgePair> m_together;
    std::vector<int> m_shallow; ///< places of crossings at small angles
};

/// Makes the edges of the map from the edges of a network and the places inside them.
class MapMaker {
public:
    MapMaker(Network const &network, Carriers const &carriers, IncidenceFinder const &finder,
             base::Workers const &workers)
        : m_network(network), m_workers(workers), m_carriers(carriers), m_incidences(finder.Sorted(m_begins)),
          m_cutter(network, carriers, m_incidences, m_begins), m_map(network.places.Places()) {}

    CarrierCutter &Cutter() { return m_cutter; }

    PlanarMap Make(bool keepStarts) {
        m_map.Reserve(m_network.edges.size() + m_incidences.size());
        std::vector<bool> const isStart = keepStarts ? std::vector<bool>() : BareStarts(m_network, m_incidences);
        for (std::size_t const e : EdgeOrder()) {
            NetworkEdge const &edge = m_network.edges[e];
            Incidence const *first = m_incidences.data() + m_begins[e], *last = m_incidences.data() + m_begins[e + 1];
            if (m_carriers.CarrierOf(static_cast<int>(e)) >= 0)
                m_cutter.AddParts(static_cast<int>(e), m_map);
            else if (first != last && !keepStarts && edge.stretch.IsFullTurn() && isStart[Index(edge.startPlace)])
                AddParts(TurnedTo(edge, *first), first + 1, last, first->t);
            else
                AddParts(edge, first, last, 0.0);
        }
        OrderRoundPlaces(m_map, m_network.snap, m_workers);
        return std::move(m_map);
    }

private:
    /// The edges by their curves where several may ask for one stretch of a carrier, and connectors last.
    std::vector<std::size_t> EdgeOrder() const {
        std::vector<std::size_t> order(m_network.edges.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        auto const curveOf = [&](std::size_t e) { return static_cast<unsigned>(m_network.edges[e].stretch.curve); };
        if (!m_carriers.IsEmpty())
            std::stable_sort(order.begin(), order.end(),
                             [&](std::size_t a, std::size_t b) { return curveOf(a) < curveOf(b); });
        return order;
    }

    /// The circle as one that starts at a place inside it.
    NetworkEdge TurnedTo(NetworkEdge edge, Incidence const &start) const {
        edge.startPlace = edge.endPlace = start.place;
        edge.stretch.start = edge.stretch.end = PointAt(edge.stretch, start.t);
        edge.stretch.to = 1.0 + start.t;
        edge.stretch.from = edge.stretch.to - 1.0; // so that going once round is exactly 1
        return edge;
    }

    /// Adds the parts of an edge between the places inside it, whose fractions count from `turned` on.
    void AddParts(NetworkEdge const &e, Incidence const *first, Incidence const *last, double turned) {
        double const length = LengthOf(e.stretch);
        auto const isNothing = [&](int from, int to, double part) {
            return from == to && (!e.stretch.isArc || part * length < kAbsorbed * m_network.snap);
        };
        // A last stretch that is nothing goes to the one before it.
        while (last != first && isNothing(last[-1].place, e.endPlace, 1.0 - (last[-1].t - turned)))
            --last;
        double t = 0.0;
        int place = e.startPlace;
        for (; first != last; ++first) {
            double const next = first->t - turned;
            if (isNothing(place, first->place, next - t))
                continue;
            m_map.AddEdge({PartOf(e.stretch, t, next), place, first->place});
            t = next;
            place = first->place;
        }
        m_map.AddEdge({PartOf(e.stretch, t, 1.0), place, e.endPlace});
    }

    Network const &m_network;
    base::Workers m_workers;
    Carriers const &m_carriers;
    std::vector<std::size_t> m_begins; ///< where the incidences of each edge begin
    std::vector<Incidence> m_incidences;
    CarrierCutter m_cutter;
    PlanarMap m_map;
};

/// One try at a snap distance. `isThorough` looks for places near every edge; without `usesCarriers` the edges of a
/// carrier are cut like all others, which holds where rounding leaves doubts about what lies on it.
Arrangement ArrangeAt(UsableCurves const &curves, bool split, bool keepDuplicates, double snap, bool isThorough,
                      bool usesCarriers, base::Workers const &workers) {
    // Ends of an arc that nothing keeps apart are no ends when gaps are closed.
    double const closed = curves.tolerance > snap ? SameDistance(curves.tolerance, snap, curves.landmarks) : snap;
    Network network(curves.stretches, snap, curves.rounding, closed, split);
    if (!keepDuplicates)
        network.DropRepeated();
    double const reach = std::max(curves.tolerance, snap) + 2.0 * snap;
    CandidatePairs pairs(network, reach, usesCarriers, workers);
    int const curveCount = static_cast<int>(network.edges.size());
    std::vector<int> owners;
    if (curves.tolerance > snap)
        owners = AddConnectors(network, pairs, curves.tolerance, split, curves.landmarks, workers);
    IncidenceFinder finder(network, keepDuplicates, workers);
    if (split) {
        finder.LookAt(pairs);
        for (EdgePair const pair : pairs.OfConnectors(curveCount, owners))
            finder.LookAt(pair);
        finder.DrawEdgesToPlaces(isThorough);
    }
    MapMaker maker(network, pairs.OneCarrier(), finder, workers);
    if (!maker.Cutter().Fits())
        return ArrangeAt(curves, split, keepDuplicates, snap, isThorough, false, workers);
    PlanarMap map = maker.Make(keepDuplicates);
    return {std::move(map), std::move(network.vanished), std::move(network.repeated),
            snap,           maker.Cutter().TakePlaces(), maker.Cutter().TakeCovered()};
}

} // namespace

Arrangement Arrange(UsableCurves const &curves, bool split, bool keepDuplicates, base::Workers const &workers) {
    double snap = std::max(kSnapInRoundings * curves.rounding, kSmallestSnap);
    // It is looked at more closely before it is looked at more coarsely.
    for (bool isThorough = false;; snap *= isThorough ? kCoarser : 1.0, isThorough = true)
        if (Arrangement arrangement =
                ArrangeAt(curves, split, keepDuplicates, snap, isThorough, split && !keepDuplicates, workers);
            !split || arrangement.map.IsPlanar()) {
            assert(snap <= std::max(kCoarsestInRoundings * curves.rounding, kSmallestSnap));
            return arrangement;
        }
}

} // namespace zvi::lib::drawing
