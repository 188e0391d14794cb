#include "zvi/drawing/CoveredPartsDetail.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace zvi::lib::drawing {

namespace {

/// Places of a carrier lie nearer to it than this share of the snap distance, and farther apart along it than that:
/// rounding is an eighth of it.
constexpr double kOffCarrier = 0.5, kApart = 0.25;

/// No more cuts than this are counted, so that those of the map can be added.
constexpr std::size_t kMostCuts = std::size_t{1} << 30;

/// Where the ends of contracted steps of a carrier are, and what else is counted along it.
class Steps {
public:
    Steps(PlanarMap const &map, CarrierPlaces const &carrier) : m_keptBefore(carrier.places.size() + 1, 0) {
        for (std::size_t i = 0; i < carrier.places.size(); ++i) {
            int const edge = carrier.edges[i];
            bool const isKept = edge >= 0 && map.Edge(edge).state != EdgeState::kContracted;
            m_keptBefore[i + 1] = m_keptBefore[i] + (isKept ? 1 : 0);
            if (isKept)
                m_kept.push_back(i);
        }
    }

    /// The steps between two places that are not contracted: how many, the first one, and the one behind the last.
    std::size_t Count(std::size_t begin, std::size_t end) const { return m_keptBefore[end] - m_keptBefore[begin]; }
    /// These need one such step behind the place, and in front of it.
    std::size_t First(std::size_t begin) const { return m_kept[m_keptBefore[begin]]; }
    std::size_t BehindLast(std::size_t end) const { return m_kept[m_keptBefore[end] - 1] + 1; }

private:
    std::vector<std::size_t> m_keptBefore; ///< of each place, how many kept steps come before it
    std::vector<std::size_t> m_kept;
};

/// Adds covered parts to a map.
class CoveredAdder {
public:
    CoveredAdder(PlanarMap &map, std::vector<CarrierPlaces> const &carriers, std::vector<DroppedEdge> &dropped)
        : m_map(map), m_carriers(carriers), m_dropped(dropped) {
        for (CarrierPlaces const &carrier : carriers) {
            m_steps.emplace_back(map, carrier);
            m_passing.emplace_back(carrier.places.size() + 1, 0);
        }
    }

    void Add(CoveredPart const &part) {
        Steps const &steps = m_steps[part.carrier];
        std::size_t const kept = steps.Count(part.begin, part.end);
        if (kept == 0) {
            AddEdge(part, part.begin, part.end, EdgeState::kContracted);
            return;
        }
        std::size_t const first = steps.First(part.begin), last = steps.BehindLast(part.end);
        if (part.begin < first)
            AddEdge(part, part.begin, first, EdgeState::kContracted);
        m_dropped.push_back({AddEdge(part, first, last, EdgeState::kDuplicate)});
        if (last < part.end)
            AddEdge(part, last, part.end, EdgeState::kContracted);
        m_counts.cuts = static_cast<int>(std::min(static_cast<std::size_t>(m_counts.cuts) + kept - 1, kMostCuts));
        ++m_passing[part.carrier][first + 1];
        --m_passing[part.carrier][last];
    }

    CoveredCounts Counts() {
        for (std::size_t c = 0; c < m_carriers.size(); ++c) {
            int passing = 0;
            for (std::size_t i = 0; i < m_carriers[c].places.size(); ++i)
                if ((passing += m_passing[c][i]) > 0)
                    m_counts.passedPlaces.push_back(m_carriers[c].places[i]);
        }
        return std::move(m_counts);
    }

private:
    double FractionOf(CoveredPart const &part, int place) const {
        DrawingPoint const p = m_map.Places().Position(place);
        return p == part.curve.start ? 0.0 : p == part.curve.end ? 1.0 : FractionAt(part.curve, p);
    }

    int AddEdge(CoveredPart const &part, std::size_t begin, std::size_t end, EdgeState state) {
        int from = m_carriers[part.carrier].PlaceAt(begin), to = m_carriers[part.carrier].PlaceAt(end);
        if (FractionOf(part, from) > FractionOf(part, to))
            std::swap(from, to);
        return m_map.AddEdge({PartOf(part.curve, FractionOf(part, from), FractionOf(part, to)), from, to, state});
    }

    PlanarMap &m_map;
    std::vector<CarrierPlaces> const &m_carriers;
    std::vector<DroppedEdge> &m_dropped;
    std::vector<Steps> m_steps;
    std::vector<std::vector<int>> m_passing; ///< of each place, how many parts pass it, as differences
    CoveredCounts m_counts;
};

} // namespace

CarrierCutter::CarrierCutter(Network const &network, Carriers const &carriers, std::vector<Incidence> const &incidences,
                             std::vector<std::size_t> const &begins)
    : m_network(network), m_all(carriers), m_incidences(incidences), m_begins(begins),
      m_carriers(carriers.All().size()), m_positions(m_carriers.size()), m_areEnds(m_carriers.size()),
      m_free(m_carriers.size()) {
    for (std::size_t c = 0; c < m_carriers.size(); ++c) {
        OrderPlaces(c);
        if (m_fits)
            CheckPassed(c);
        m_carriers[c].edges.assign(m_carriers[c].places.size(), -1);
        m_free[c].resize(m_carriers[c].places.size() + 1);
        std::iota(m_free[c].begin(), m_free[c].end(), std::size_t{0});
    }
}

void CarrierCutter::OrderPlaces(std::size_t carrier) {
    Carriers::Carrier const &all = m_all.All()[carrier];
    std::vector<std::pair<double, int>> order;
    auto const add = [&](int place) { order.emplace_back(all.PositionOf(m_network.Place(place)), place); };
    for (Carriers::Member const &member : all.members)
        for (int const place : {member.lowPlace, member.highPlace})
            add(place);
    std::vector<std::pair<double, int>> ends = order;
    for (Carriers::Member const &member : all.members)
        for (Incidence const &i : InsideOf(member.edge))
            add(i.place);
    for (auto *const list : {&order, &ends}) {
        std::sort(list->begin(), list->end());
        list->erase(std::unique(list->begin(), list->end()), list->end());
    }
    double last = all.isCircle ? order.back().first - kTwoPi : -HUGE_VAL;
    for (auto const &[position, place] : order) {
        m_fits = m_fits && all.DistanceOf(m_network.Place(place)) < kOffCarrier * m_network.snap &&
                 position - last > all.StepOf(kApart * m_network.snap);
        last = position;
        m_carriers[carrier].places.push_back(place);
        m_positions[carrier].push_back(position);
        m_areEnds[carrier].push_back(std::binary_search(ends.begin(), ends.end(), std::pair(position, place)));
    }
}

std::span<Incidence const> CarrierCutter::InsideOf(int edge) const {
    return std::span(m_incidences).subspan(m_begins[Index(edge)], m_begins[Index(edge) + 1] - m_begins[Index(edge)]);
}

std::size_t CarrierCutter::RankOf(std::size_t carrier, int place) const {
    std::vector<double> const &positions = m_positions[carrier];
    double const position = m_all.All()[carrier].PositionOf(m_network.Place(place));
    return static_cast<std::size_t>(std::lower_bound(positions.begin(), positions.end(), position) - positions.begin());
}

CarrierCutter::Span CarrierCutter::SpanOf(std::size_t carrier, Carriers::Member const &member) const {
    std::size_t const begin = RankOf(carrier, member.lowPlace), end = RankOf(carrier, member.highPlace);
    return {begin, begin < end ? end : end + m_positions[carrier].size()};
}

void CarrierCutter::CheckPassed(std::size_t carrier) {
    std::size_t const count = m_positions[carrier].size();
    std::vector<int> passing(2 * count + 1, 0), known(count, 0); // of each place, edges that must pass it, and that do
    for (Carriers::Member const &member : m_all.All()[carrier].members) {
        Span const span = SpanOf(carrier, member);
        ++passing[span.begin + 1];
        --passing[span.end];
        int last = -1;
        for (Incidence const &i : InsideOf(member.edge)) {
            std::size_t const rank = RankOf(carrier, i.place), on = rank < span.begin ? rank + count : rank;
            m_fits = m_fits && on > span.begin && on < span.end;
            known[rank] += i.place != last ? 1 : 0;
            last = i.place;
        }
    }
    std::partial_sum(passing.begin(), passing.end(), passing.begin());
    for (std::size_t i = 0; i < count; ++i)
        m_fits = m_fits && (m_areEnds[carrier][i] || known[i] == passing[i] + passing[i + count]);
}

std::size_t CarrierCutter::NextFree(std::size_t carrier, std::size_t step) {
    std::vector<std::size_t> &free = m_free[carrier];
    while (free[step] != step)
        step = free[step] = free[free[step]];
    return step;
}

void CarrierCutter::TakeSteps(std::size_t carrier, std::size_t begin, std::size_t end, std::vector<Span> &spans) {
    while (begin < end) {
        std::size_t const free = std::min(NextFree(carrier, begin), end);
        if (free > begin)
            spans.push_back({begin, free, false});
        std::size_t taken = free;
        for (; taken < end && NextFree(carrier, taken) == taken; ++taken)
            m_free[carrier][taken] = taken + 1;
        if (taken > free)
            spans.push_back({free, taken, true});
        begin = taken;
    }
}

void CarrierCutter::AddParts(int edge, PlanarMap &map) {
    std::size_t const carrier = Index(m_all.CarrierOf(edge));
    Carriers::Member const &member = m_all.MemberOf(edge);
    CarrierPlaces &places = m_carriers[carrier];
    Stretch const &s = m_network.edges[Index(edge)].stretch;
    Span const whole = SpanOf(carrier, member);
    std::vector<Span> spans;
    std::size_t const count = places.places.size();
    TakeSteps(carrier, whole.begin, std::min(whole.end, count), spans);
    if (whole.end > count)
        TakeSteps(carrier, 0, whole.end - count, spans);
    if (!member.isForward)
        std::reverse(spans.begin(), spans.end());
    auto const fraction = [&](int place) {
        return place == (member.isForward ? member.lowPlace : member.highPlace) ? 0.0
               : place == (member.isForward ? member.highPlace : member.lowPlace)
                   ? 1.0
                   : FractionAt(s, m_network.Place(place));
    };
    for (Span const &span : spans) {
        if (!span.isFree) {
            m_covered.push_back({s, carrier, span.begin, span.end});
            continue;
        }
        for (std::size_t i = 0; i < span.end - span.begin; ++i) {
            std::size_t const step = member.isForward ? span.begin + i : span.end - 1 - i;
            int const low = places.PlaceAt(step), high = places.PlaceAt(step + 1);
            int const from = member.isForward ? low : high, to = member.isForward ? high : low;
            places.edges[step] = map.AddEdge({PartOf(s, fraction(from), fraction(to)), from, to});
        }
    }
}

CoveredCounts AddCovered(PlanarMap &map, std::vector<CarrierPlaces> const &carriers,
                         std::vector<CoveredPart> const &parts, std::vector<DroppedEdge> &dropped) {
    CoveredAdder adder(map, carriers, dropped);
    for (CoveredPart const &part : parts)
        adder.Add(part);
    return adder.Counts();
}

} // namespace zvi::lib::drawing
