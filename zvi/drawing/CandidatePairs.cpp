#include "zvi/drawing/CandidatePairsDetail.h"

#include "zvi/base/Buckets.h"

#include <algorithm>
#include <cassert>

namespace zvi::lib::drawing {

namespace {

/// Boxes that meet no more others than this on average are compared one by one, carriers or not.
constexpr double kFewToCompare = 32.0;

/// Parts of the pairs for each thread.
constexpr std::size_t kPartsOfWorker = 16;

/// Finding the partners of an edge anew takes as long as looking at so many pairs.
constexpr std::size_t kPairsOfSearch = 16;

/// What tells whether two edges have nothing to do with one another.
struct Ends {
    Ends() = default;
    explicit Ends(NetworkEdge const &e)
        : start(e.stretch.start), end(e.stretch.end), startPlace(e.startPlace), endPlace(e.endPlace),
          isArc(e.stretch.isArc) {}

    bool AreAt(int place) const { return place == startPlace || place == endPlace; }

    DrawingPoint start;
    DrawingPoint end;
    int startPlace = 0;
    int endPlace = 0;
    bool isArc = false;
};

/// Whether both ends of `b` lie clearly on one side of the whole line of `a`.
bool IsBeside(Ends const &a, Ends const &b, double distance) {
    DrawingPoint const u = a.end - a.start;
    double const start = Cross(u, b.start - a.start), end = Cross(u, b.end - a.start);
    if (!(start > 0.0 && end > 0.0) && !(start < 0.0 && end < 0.0))
        return false;
    return std::min(std::fabs(start), std::fabs(end)) > distance * Length(u);
}

/// Whether two segments share a place and the free end of each is farther from the other than `distance`.
bool PartAtPlace(Ends const &a, Ends const &b, double distance) {
    if (!b.AreAt(a.startPlace) && !b.AreAt(a.endPlace))
        return false;
    DrawingPoint const u = a.end - a.start, v = b.end - b.start;
    double const cross = Cross(u, v);
    return cross * cross > distance * distance * std::max(Dot(u, u), Dot(v, v));
}

/// Whether two segments keep farther from one another than `distance`.
bool AreBeside(Ends const &a, Ends const &b, double distance) {
    return !a.isArc && !b.isArc && (IsBeside(a, b, distance) || IsBeside(b, a, distance));
}

/// Whether two segments have nothing to do with one another but a shared end.
bool MeetAtPlaceAlone(Ends const &a, Ends const &b, double distance) {
    return !a.isArc && !b.isArc && PartAtPlace(a, b, distance);
}

/// Whether two edges have nothing to do with one another but a shared end, although their boxes meet.
bool AreApart(Ends const &a, Ends const &b, double distance) {
    return MeetAtPlaceAlone(a, b, distance) || AreBeside(a, b, distance);
}

std::vector<Stretch const *> StretchesOf(Network const &network) {
    std::vector<Stretch const *> stretches;
    stretches.reserve(network.edges.size());
    for (NetworkEdge const &e : network.edges)
        stretches.push_back(&e.stretch);
    return stretches;
}

} // namespace

CandidatePairs::CandidatePairs(Network const &network, double reach, bool findsCarriers, base::Workers const &workers)
    : m_network(network), m_reach(reach), m_edgeCount(static_cast<int>(network.edges.size())),
      m_index(
          StretchesOf(network), 0.5 * reach, workers,
          [&](double crowd) {
              if (findsCarriers && crowd > kFewToCompare)
                  m_carriers = Carriers(network, reach);
          },
          [&] {
              m_families = CurveFamilies(network, m_carriers, reach);
              return m_families.FamilyOfEdges();
          }),
      m_workers(workers) {
    if (!m_index.IsCrowded())
        FindAll(workers);
}

void CandidatePairs::FindAll(base::Workers const &workers) {
    BoxIndex const &boxes = m_index.Boxes();
    std::vector<BoxIndex::NodePair> const nodes = boxes.MeetingNodes();
    // By rank, so that what is compared stands together.
    std::vector<Ends> ends(Index(m_edgeCount));
    workers.ForEach(ends.size(),
                    [&](std::size_t rank) { ends[rank] = Ends(m_network.edges[Index(boxes.Order()[rank])]); });
    std::vector<std::vector<EdgePair>> parts(nodes.size() + 1); // the second edge by its rank
    workers.For(ends.size()).Do(nodes.size(), [&](std::size_t task) {
        std::vector<EdgePair> pairs;
        boxes.ForEachMeeting(nodes[task], [&](std::size_t a, std::size_t b) {
            if (AreApart(ends[a], ends[b], m_reach))
                return;
            int const edgeA = boxes.Order()[a], edgeB = boxes.Order()[b];
            if (!m_carriers.AreSettled(edgeA, edgeB))
                pairs.push_back({std::min(edgeA, edgeB), static_cast<int>(edgeA < edgeB ? b : a)});
        });
        parts[task] = std::move(pairs);
    });
    std::vector<EdgePair> const found = base::Workers::Joined(std::move(parts));
    m_begins.assign(Index(m_edgeCount) + 1, 0);
    m_pairs.resize(found.size());
    base::SortIntoBuckets(
        found.size(), std::span(m_begins), [&](std::size_t i) { return found[i].first; },
        [&](std::size_t place, std::size_t i) { m_pairs[place] = found[i]; });
    workers.ForEach(Index(m_edgeCount), [&](std::size_t edge) {
        auto const begin = m_pairs.begin() + static_cast<std::ptrdiff_t>(m_begins[edge]);
        auto const end = m_pairs.begin() + static_cast<std::ptrdiff_t>(m_begins[edge + 1]);
        std::sort(begin, end, [](EdgePair a, EdgePair b) { return a.second < b.second; });
        for (auto pair = begin; pair != end; ++pair)
            pair->second = m_index.AtRank(pair->second);
    });
}

std::size_t CandidatePairs::PartCount() const {
    // Many of them, for finding pairs anew takes some edges much longer than others.
    std::size_t const pairs = m_index.IsCrowded() ? kPairsOfSearch * Index(m_edgeCount) : m_pairs.size();
    return m_workers.PartsOf(pairs) > 1 ? kPartsOfWorker * m_workers.Count() : 1;
}

std::pair<std::size_t, std::size_t> CandidatePairs::RangeOf(std::size_t part) const {
    std::size_t const count = m_index.IsCrowded() ? Index(m_edgeCount) : m_pairs.size(), parts = PartCount();
    assert(part < parts);
    return {part * count / parts, (part + 1) * count / parts};
}

void CandidatePairs::FindPartners(int edge, Partners &partners) const {
    std::vector<int> &edges = partners.edges;
    m_index.FindNear(edge, edges, partners.search);
    m_families.AddNear(edge, edges, partners.search.boxes);
    m_carriers.AddUnsettled(edge, edges);
    Ends const own(m_network.edges[Index(edge)]);
    std::erase_if(
        edges, [&](int other) { return other <= edge || AreApart(own, Ends(m_network.edges[Index(other)]), m_reach); });
    m_index.Arrange(edges);
}

void CandidatePairs::FindPairedWith(int owner) {
    std::size_t const i = Index(owner);
    m_partners.clear();
    for (std::size_t k = m_firstBegins[i]; k < m_firstBegins[i + 1]; ++k)
        m_partners.push_back(m_firsts[k]);
    for (std::size_t k = m_begins[i]; k < m_begins[i + 1]; ++k)
        m_partners.push_back(m_pairs[k].second);
}

void CandidatePairs::AddEndingWith(int owner) {
    Ends const own(m_network.edges[Index(owner)]);
    for (int const place : {own.startPlace, own.endPlace})
        for (std::size_t k = m_endBegins[Index(place)]; k < m_endBegins[Index(place) + 1]; ++k)
            if (Ends const other(m_network.edges[Index(m_ends[k])]);
                m_ends[k] != owner && !AreBeside(own, other, m_reach) && MeetAtPlaceAlone(own, other, m_reach))
                m_partners.push_back(m_ends[k]);
}

void CandidatePairs::AddOnCarrierOf(int owner) {
    int const carrier = m_carriers.CarrierOf(owner);
    if (carrier < 0)
        return;
    for (Carriers::Member const &member : m_carriers.All()[Index(carrier)].members)
        if (member.edge != owner && m_carriers.AreSettled(owner, member.edge))
            m_partners.push_back(member.edge);
}

void CandidatePairs::SortPartnersOf(int owner) {
    m_index.Arrange(m_partners);
    auto const higher = std::stable_partition(m_partners.begin(), m_partners.end(), [&](int i) { return i < owner; });
    std::sort(m_partners.begin(), higher);
}

void CandidatePairs::FindNeighbours(NetworkEdge const &connector, int owner, Box const &box) {
    int const line = m_carriers.LineThrough(owner, connector.startPlace, connector.endPlace);
    if (m_index.IsCrowded())
        m_index.Find(box, m_partners, m_search,
                     line < 0 ? BoxIndex::kNoGroup : m_families.FamilyOfEdges()[Index(owner)]);
    else
        FindPairedWith(owner);
    if (line >= 0)
        m_carriers.AddEndingBetween(line, connector.startPlace, connector.endPlace, m_partners);
    else if (!m_index.IsCrowded())
        AddOnCarrierOf(owner);
    if (m_index.IsCrowded() || m_carriers.CarrierOf(owner) >= 0)
        SortPartnersOf(owner);
    if (!m_index.IsCrowded())
        AddEndingWith(owner);
    Ends const own(m_network.edges[Index(owner)]);
    std::erase_if(m_partners, [&](int other) {
        NetworkEdge const &e = m_network.edges[Index(other)];
        return other == owner || !Meet(box, BoxOf(e.stretch)) || AreBeside(own, Ends(e), m_reach);
    });
}

std::vector<EdgePair> CandidatePairs::OfConnectors(int first, std::vector<int> const &owners) {
    std::vector<EdgePair> found;
    assert(Index(first) + owners.size() == m_network.edges.size());
    if (owners.empty())
        return found;
    m_firstBegins.assign(Index(m_edgeCount) + 1, 0);
    m_firsts.resize(m_pairs.size());
    base::SortIntoBuckets(
        m_pairs.size(), std::span(m_firstBegins), [&](std::size_t i) { return m_pairs[i].second; },
        [&](std::size_t place, std::size_t i) { m_firsts[place] = m_pairs[i].first; });
    m_endBegins.assign(m_network.places.Places().size() + 1, 0);
    m_ends.resize(2 * Index(m_edgeCount));
    base::SortIntoBuckets(
        m_ends.size(), std::span(m_endBegins),
        [&](std::size_t i) {
            NetworkEdge const &e = m_network.edges[i / 2];
            return i % 2 == 0 ? e.startPlace : e.endPlace;
        },
        [&](std::size_t place, std::size_t i) { m_ends[place] = static_cast<int>(i / 2); });
    PlaceIndex middles(m_reach);
    for (int i = 0; i < static_cast<int>(owners.size()); ++i) {
        int const connector = first + i, owner = owners[Index(i)];
        Stretch const &s = m_network.edges[Index(connector)].stretch;
        Box const box = Grown(BoxOf(s), 2.0 * m_network.snap);
        if (Meet(box, BoxOf(m_network.edges[Index(owner)].stretch)))
            found.push_back({owner, connector});
        FindNeighbours(m_network.edges[Index(connector)], owner, box);
        for (int const edge : m_partners)
            found.push_back({edge, connector});
        DrawingPoint const middle = PointAt(s, 0.5);
        middles.ForEachNear(middle, m_reach, [&](int other, double) {
            if (Meet(box, BoxOf(m_network.edges[Index(first + other)].stretch)))
                found.push_back({first + other, connector});
        });
        middles.Add(middle);
    }
    return found;
}

} // namespace zvi::lib::drawing
