#include "zvi/drawing/CarriersDetail.h"

#include "zvi/math/elementary/Elementary.h"

#include <algorithm>
#include <cassert>
#include <limits>
#include <tuple>
#include <utility>

namespace zvi::lib::drawing {

namespace {

/// Fewer edges than this, or edges that pass fewer ends of others than this on average, are compared with one another.
constexpr std::size_t kFewestMembers = 192, kFewestPassed = 64;

/// Lines whose directions follow one another by less than this angle may have one carrier.
constexpr double kSameDirection = 1e-9;

/// An end may lie off its carrier by this share of rounding: two of them still leave it to rounding to tell them apart.
constexpr double kOffCarrier = 0.5;

/// Positions round a circle are exact enough as long as its radius is not above this many times the largest coordinate.
constexpr double kLargestRadius = 2.0;

/// The direction of a line whichever way it runs, from 0 to below a half turn, but for rounding below 0.
double TurnOf(Stretch const &line) {
    double angle = Atan2(line.end.y - line.start.y, line.end.x - line.start.x);
    if (angle < 0.0)
        angle += kPi;
    return angle > kPi - kSameDirection ? angle - kPi : angle;
}

/// The ends of members in their order, and for a circle those one turn further on as well.
std::vector<double> EndsOf(Carriers::Carrier const &carrier) {
    std::vector<double> ends;
    for (Carriers::Member const &m : carrier.members)
        for (double const end : {m.low, m.high}) {
            double const once = carrier.isCircle && end >= kTwoPi ? end - kTwoPi : end;
            ends.push_back(once);
            if (carrier.isCircle)
                ends.push_back(once + kTwoPi);
        }
    std::sort(ends.begin(), ends.end());
    return ends;
}

/// How many ends of others the members pass, all together.
std::size_t CountPassed(Carriers::Carrier const &carrier) {
    std::vector<double> const ends = EndsOf(carrier);
    std::size_t passed = 0;
    for (Carriers::Member const &m : carrier.members) {
        auto const begin = std::upper_bound(ends.begin(), ends.end(), m.low);
        auto const end = std::lower_bound(begin, ends.end(), m.high);
        passed += static_cast<std::size_t>(end - begin);
    }
    return passed;
}

/// The longest of some lines, one at least.
int LongestOf(Network const &network, std::vector<std::pair<double, int>> const &lines, std::size_t begin,
              std::size_t end) {
    assert(begin < end && end <= lines.size());
    int longest = lines[begin].second;
    for (std::size_t i = begin + 1; i < end; ++i)
        if (LengthOf(network.edges[Index(lines[i].second)].stretch) > LengthOf(network.edges[Index(longest)].stretch))
            longest = lines[i].second;
    return longest;
}

/// The carrier of a line with a length.
Carriers::Carrier LineOf(Stretch const &s) {
    assert(!s.isArc && Distance(s.start, s.end) > 0.0);
    Carriers::Carrier carrier;
    carrier.base = s.start;
    carrier.direction = (s.end - s.start) * (1.0 / Distance(s.start, s.end));
    return carrier;
}

/// Calls `look(begin, end)` for each run of sorted things whose keys follow one another by less than `near`, as far as
/// there are enough of them.
template <typename Look>
void ForEachRun(std::vector<std::pair<double, int>> const &sorted, double near, Look look) {
    assert(
        std::is_sorted(sorted.begin(), sorted.end(), [](auto const &a, auto const &b) { return a.first < b.first; }));
    for (std::size_t begin = 0, end = 0; begin < sorted.size(); begin = end) {
        for (end = begin + 1; end < sorted.size() && sorted[end].first - sorted[end - 1].first < near;)
            ++end;
        if (end - begin >= kFewestMembers)
            look(begin, end);
    }
}

/// Finds members that pass a place farther than a distance from their own ends.
class PassFinder {
public:
    using Member = Carriers::Member;

    PassFinder(Carriers::Carrier const &carrier, double distance, double snap)
        : m_isCircle(carrier.isCircle), m_clear(carrier.StepOf(distance + snap)),
          m_least(carrier.StepOf(std::max(0.0, distance - snap))), m_members(carrier.members) {
        if (m_isCircle)
            for (Member m : carrier.members) {
                m.low += kTwoPi;
                m.high += kTwoPi;
                m_members.push_back(m);
            }
        std::sort(m_members.begin(), m_members.end(), BeginsBefore);
        for (std::size_t i = 0; i < m_members.size(); ++i)
            m_farthest.push_back(i > 0 && m_members[m_farthest[i - 1]].high >= m_members[i].high ? m_farthest[i - 1]
                                                                                                 : i);
    }

    /// Adds one that does so clearly, or else all of which only a closer look tells.
    void AddEdgesPast(int place, double position, std::vector<Carriers::EdgeAtPlace> &out) const {
        double const at = m_isCircle && position < kTwoPi ? position + kTwoPi : position;
        std::size_t const clear = CountBegun(at - m_clear);
        if (clear > 0 && m_members[m_farthest[clear - 1]].high >= at + m_clear) {
            out.push_back({m_members[m_farthest[clear - 1]].edge, place});
            return;
        }
        std::size_t const begun = CountBegun(at - m_least);
        for (std::size_t i = 0; i < begun; ++i)
            if (m_members[i].high >= at + m_least)
                out.push_back({m_members[i].edge, place});
    }

private:
    static bool BeginsBefore(Member const &a, Member const &b) { return a.low < b.low; }

    std::size_t CountBegun(double at) const {
        Member m;
        m.low = at;
        return static_cast<std::size_t>(std::upper_bound(m_members.begin(), m_members.end(), m, BeginsBefore) -
                                        m_members.begin());
    }

    bool m_isCircle;
    double m_clear;                      ///< what is so far from an end is surely farther than the distance
    double m_least;                      ///< and what is nearer than this is surely not
    std::vector<Member> m_members;       ///< by where they begin; of a circle twice, one turn apart
    std::vector<std::size_t> m_farthest; ///< of those up to each, the one that reaches farthest
};

} // namespace

double Carriers::Carrier::StepOf(double distance) const {
    return isCircle ? 2.0 * Asin(std::min(1.0, 0.5 * distance / radius)) : distance;
}

double Carriers::Carrier::PositionOf(DrawingPoint p) const {
    if (!isCircle)
        return Dot(direction, p - base);
    double const angle = Atan2(p.y - base.y, p.x - base.x);
    return angle < 0.0 ? angle + kTwoPi : angle;
}

double Carriers::Carrier::DistanceOf(DrawingPoint p) const {
    return std::fabs(isCircle ? Distance(p, base) - radius : Cross(direction, p - base));
}

Carriers::Carriers(Network const &network, double reach)
    : m_network(&network), m_reach(reach), m_snap(network.snap), m_near(kOffCarrier * network.rounding),
      m_carrierOf(network.edges.size(), -1), m_numbers(network.edges.size(), -1) {
    FindCircles(network);
    FindLines(network);
    for (Carrier const &carrier : m_carriers) {
        m_ends.emplace_back();
        if (carrier.isCircle)
            continue;
        FindUnsettled(carrier);
        for (Member const &m : carrier.members) {
            m_ends.back().push_back({m.low, m.lowPlace, m.edge});
            m_ends.back().push_back({m.high, m.highPlace, m.edge});
        }
        std::sort(m_ends.back().begin(), m_ends.back().end(), [](End const &a, End const &b) {
            return std::tie(a.position, a.place, a.edge) < std::tie(b.position, b.place, b.edge);
        });
    }
    std::sort(m_unsettled.begin(), m_unsettled.end());
}

void Carriers::FindCircles(Network const &network) {
    std::vector<int> arcs;
    for (int e = 0; e < static_cast<int>(network.edges.size()); ++e)
        if (Stretch const &s = network.edges[Index(e)].stretch;
            s.isArc && !s.IsFullTurn() && s.radius * kRounding <= kLargestRadius * network.rounding)
            arcs.push_back(e);
    auto const circle = [&](int e) {
        Stretch const &s = network.edges[Index(e)].stretch;
        return std::tie(s.radius, s.center.x, s.center.y);
    };
    std::stable_sort(arcs.begin(), arcs.end(), [&](int a, int b) { return circle(a) < circle(b); });
    for (auto begin = arcs.begin(); begin != arcs.end();) {
        auto const end =
            std::upper_bound(begin, arcs.end(), *begin, [&](int a, int b) { return circle(a) < circle(b); });
        Stretch const &s = network.edges[Index(*begin)].stretch;
        Carrier carrier;
        carrier.isCircle = true;
        carrier.base = s.center;
        carrier.radius = s.radius;
        Add(network, std::move(carrier), {begin, end});
        begin = end;
    }
}

void Carriers::FindLines(Network const &network) {
    std::vector<std::pair<double, int>> turns;
    for (int e = 0; e < static_cast<int>(network.edges.size()); ++e)
        if (Stretch const &s = network.edges[Index(e)].stretch; !s.isArc)
            turns.emplace_back(TurnOf(s), e);
    std::sort(turns.begin(), turns.end());
    ForEachRun(turns, kSameDirection, [&](std::size_t begin, std::size_t end) {
        Carrier const longest = LineOf(network.edges[Index(LongestOf(network, turns, begin, end))].stretch);
        std::vector<std::pair<double, int>> offsets;
        for (std::size_t i = begin; i < end; ++i) {
            int const edge = turns[i].second;
            offsets.emplace_back(Cross(longest.direction, network.edges[Index(edge)].stretch.start - longest.base),
                                 edge);
        }
        std::sort(offsets.begin(), offsets.end());
        ForEachRun(offsets, m_near, [&](std::size_t first, std::size_t last) {
            std::vector<int> edges;
            for (std::size_t i = first; i < last; ++i)
                edges.push_back(offsets[i].second);
            std::sort(edges.begin(), edges.end());
            Add(network, LineOf(network.edges[Index(LongestOf(network, offsets, first, last))].stretch), edges);
        });
    });
}

void Carriers::Add(Network const &network, Carrier carrier, std::vector<int> const &edges) {
    if (edges.size() < kFewestMembers)
        return;
    for (int const edge : edges) {
        NetworkEdge const &e = network.edges[Index(edge)];
        if (carrier.DistanceOf(e.stretch.start) > m_near || carrier.DistanceOf(e.stretch.end) > m_near)
            continue;
        Member m{edge,
                 carrier.PositionOf(e.stretch.start),
                 carrier.PositionOf(e.stretch.end),
                 e.startPlace,
                 e.endPlace,
                 carrier.isCircle ? e.stretch.sweep > 0.0 : false};
        m.isForward = carrier.isCircle ? m.isForward : m.low < m.high;
        if (!m.isForward) {
            std::swap(m.low, m.high);
            std::swap(m.lowPlace, m.highPlace);
        }
        if (m.high < m.low)
            m.high += kTwoPi;
        carrier.members.push_back(m);
    }
    if (carrier.members.size() < kFewestMembers || CountPassed(carrier) < kFewestPassed * carrier.members.size())
        return;
    for (std::size_t i = 0; i < carrier.members.size(); ++i) {
        m_carrierOf[Index(carrier.members[i].edge)] = static_cast<int>(m_carriers.size());
        m_numbers[Index(carrier.members[i].edge)] = static_cast<int>(i);
    }
    m_carriers.push_back(std::move(carrier));
}

Carriers::Member const &Carriers::MemberOf(int edge) const {
    return m_carriers[Index(CarrierOf(edge))].members[Index(m_numbers[Index(edge)])];
}

bool Carriers::AreSettled(int a, int b) const {
    int const carrier = CarrierOf(a);
    if (carrier < 0 || carrier != CarrierOf(b))
        return false;
    Member const &first = MemberOf(a), &second = MemberOf(b);
    double const gap = std::max(first.low, second.low) - std::min(first.high, second.high);
    return m_carriers[Index(carrier)].isCircle || !(gap > 0.0) || gap > 2.0 * m_reach;
}

void Carriers::FindUnsettled(Carrier const &line) {
    std::vector<std::pair<double, int>> begins;
    for (Member const &m : line.members)
        begins.emplace_back(m.low, m.edge);
    std::sort(begins.begin(), begins.end());
    for (Member const &m : line.members)
        for (auto other =
                 std::upper_bound(begins.begin(), begins.end(), std::pair(m.high, std::numeric_limits<int>::max()));
             other != begins.end() && !AreSettled(m.edge, other->second); ++other) {
            m_unsettled.emplace_back(m.edge, other->second);
            m_unsettled.emplace_back(other->second, m.edge);
        }
}

void Carriers::AddUnsettled(int edge, std::vector<int> &out) const {
    auto pair = std::lower_bound(m_unsettled.begin(), m_unsettled.end(), std::pair(edge, 0));
    for (; pair != m_unsettled.end() && pair->first == edge; ++pair)
        out.push_back(pair->second);
}

std::vector<Carriers::End>::const_iterator Carriers::FindEnd(int line, int place) const {
    std::vector<End> const &ends = m_ends[Index(line)];
    double const position = m_carriers[Index(line)].PositionOf(m_network->Place(place));
    auto const end =
        std::lower_bound(ends.begin(), ends.end(), std::pair(position, place), [](End const &a, auto const &b) {
            return std::tie(a.position, a.place) < std::tie(b.first, b.second);
        });
    return end != ends.end() && end->place == place ? end : ends.end();
}

int Carriers::LineThrough(int edge, int place, int other) const {
    int const line = CarrierOf(edge);
    if (line < 0 || m_carriers[Index(line)].isCircle)
        return -1;
    auto const none = m_ends[Index(line)].end();
    return FindEnd(line, place) != none && FindEnd(line, other) != none ? line : -1;
}

void Carriers::AddEndingBetween(int line, int place, int other, std::vector<int> &out) const {
    auto first = FindEnd(line, place), last = FindEnd(line, other);
    for (auto end = std::min(first, last); end != std::max(first, last); ++end)
        if (end->place != place && end->place != other)
            out.push_back(end->edge);
}

std::vector<Carriers::EdgeAtPlace> Carriers::PassedEnds(double distance) const {
    std::vector<EdgeAtPlace> passed;
    for (Carrier const &carrier : m_carriers) {
        PassFinder const finder(carrier, distance, m_snap);
        for (Member const &own : carrier.members) {
            finder.AddEdgesPast(own.lowPlace, own.low, passed);
            finder.AddEdgesPast(own.highPlace, own.high, passed);
        }
    }
    return passed;
}

} // namespace zvi::lib::drawing
