#include "zvi/drawing/DrawingCutDetail.h"

#include "zvi/drawing/BoxIndexDetail.h"
#include "zvi/drawing/DrawingMeetingsDetail.h"
#include "zvi/drawing/PlaceIndexDetail.h"

#include <algorithm>
#include <array>
#include <utility>

namespace zvi::lib::drawing {

namespace {

/// Snapped edges are looked at again at most so often; real drawings need one or two rounds.
constexpr int kMaxRounds = 6;

/// A stretch that leaves a place and returns to it within this many snap distances is part of its neighbour.
constexpr double kAbsorbed = 4.0;

/// A corner lies on an edge that it misses by less than this share of the snap distance.
constexpr double kShareOfCorner = 0.1;

/// An end is drawn between the edges it should lie on at most so often.
constexpr int kMaxProjections = 12;

/// An end moves at most this many snap distances.
constexpr double kLargestMove = 2.0;

using Pair = std::pair<int, int>;

/// A place at the fraction `t` of an edge.
struct Contact {
    int edge = 0;
    int place = 0;
    double t = 0.0;
};

/// A place near an edge that does not end there.
struct NearPlace {
    int place = 0;
    int edge = 0;
    double distance = 0.0;
};

Edge const &EdgeAt(Network const &network, int i) {
    return network.edges[At(i)];
}
DrawingPoint PlaceAt(Network const &network, int i) {
    return network.places[At(i)];
}

Box Grown(Box box, double by) {
    return {box.minX - by, box.minY - by, box.maxX + by, box.maxY + by};
}

std::vector<Box> GrownBoxes(Network const &network) {
    std::vector<Box> boxes;
    boxes.reserve(network.edges.size());
    for (Edge const &e : network.edges)
        boxes.push_back(Grown(BoxOf(e), kLargestMove * network.snap));
    return boxes;
}

/// Whether `b` lies on one side of the whole line of `a`, farther from it than `distance`.
bool IsBeside(Edge const &a, Edge const &b, double distance) {
    DrawingPoint const u = a.end - a.start;
    double const start = Cross(u, b.start - a.start), end = Cross(u, b.end - a.start);
    double const near = distance * distance * Dot(u, u);
    return (start > 0.0) == (end > 0.0) && start * start > near && end * end > near;
}

/// Whether two segments share a place and the free end of each is farther from the other than `distance`.
bool PartAtPlace(Edge const &a, Edge const &b, double distance) {
    if (a.startPlace != b.startPlace && a.startPlace != b.endPlace && a.endPlace != b.startPlace &&
        a.endPlace != b.endPlace)
        return false;
    DrawingPoint const u = a.end - a.start, v = b.end - b.start;
    double const cross = Cross(u, v);
    return cross * cross > distance * distance * std::max(Dot(u, u), Dot(v, v));
}

/// Whether two edges have nothing to do with one another but a shared end, although their boxes meet, and however far
/// their ends may still move.
bool AreApart(Edge const &a, Edge const &b, double snap) {
    double const distance = (2.0 * kLargestMove + 1.0) * snap;
    return !a.isArc && !b.isArc &&
           (IsBeside(a, b, distance) || IsBeside(b, a, distance) || PartAtPlace(a, b, distance));
}

/// Pairs of edges that may meet, at least one of which was moved.
std::vector<Pair> CandidatePairs(Network const &network) {
    std::vector<Box> const boxes = GrownBoxes(network);
    std::vector<int> moved;
    std::vector<Box> movedBoxes;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        if (!network.edges[i].moved)
            continue;
        moved.push_back(static_cast<int>(i));
        movedBoxes.push_back(boxes[i]);
    }
    BoxIndex index(movedBoxes);
    std::vector<Pair> pairs;
    std::vector<int> found;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        index.Find(boxes[i], found);
        int const self = static_cast<int>(i);
        for (int const k : found) {
            int const other = moved[At(k)];
            if (other != self && (!network.edges[i].moved || self < other) &&
                !AreApart(network.edges[i], network.edges[At(other)], network.snap))
                pairs.emplace_back(self, other);
        }
    }
    return pairs;
}

/// What the ends of one edge of a pair have to do with the other edge.
struct PairContacts {
    std::array<DrawingPoint, 4> points; ///< ends within the snap distance of the other edge, shared ones included
    int pointCount = 0;
    std::array<Contact, 4> cuts; ///< those of them that lie inside the other edge
    std::array<double, 4> distances{};
    int cutCount = 0;
};

/// How near an end must come to an edge to lie on it. A loose end is drawn from the whole snap distance; a corner,
/// where several ends have met already, only from a share of it: farther off it passes by, or its edges cross.
double ReachOfEnd(Network const &network, int place) {
    if (network.endCounts[At(place)] < 2)
        return network.snap;
    return std::max(kShareOfCorner * network.snap, std::min(network.snap, 4.0 * network.rounding));
}

/// Looks at one end of an edge beside the edge `b`. Ends that stayed apart are taken as they are written, so that an
/// end beside another end cuts nothing.
void AddEnd(Network const &network, int place, DrawingPoint at, Edge const &b, int bIndex, PairContacts &contacts) {
    bool const shared = place == b.startPlace || place == b.endPlace;
    Foot foot;
    if (!shared && (!FootOn(b, at, foot) || foot.distance >= ReachOfEnd(network, place))) {
        if (network.snap > network.rounding || std::min(Distance(at, b.start), Distance(at, b.end)) >= network.snap)
            return;
        contacts.points[At(contacts.pointCount++)] = at;
        return;
    }
    contacts.points[At(contacts.pointCount++)] = at;
    if (shared || std::min(Distance(at, b.start), Distance(at, b.end)) < network.snap)
        return;
    auto const slot = At(contacts.cutCount++);
    contacts.cuts[slot] = {bIndex, place, foot.t};
    contacts.distances[slot] = foot.distance;
}

/// Whether the ends of `b` lie clearly off the whole line of `a`.
bool IsClearOf(Edge const &a, Edge const &b, double snap) {
    DrawingPoint const u = a.end - a.start;
    double const start = Cross(u, b.start - a.start), end = Cross(u, b.end - a.start);
    double const near = snap * snap * Dot(u, u);
    return start * start > near && end * end > near;
}

PairContacts ContactsOf(Network const &network, Pair pair) {
    PairContacts contacts;
    Edge const &a = EdgeAt(network, pair.first);
    Edge const &b = EdgeAt(network, pair.second);
    if (!a.isArc && !b.isArc && IsClearOf(a, b, network.snap) && IsClearOf(b, a, network.snap))
        return contacts;
    AddEnd(network, a.startPlace, a.start, b, pair.second, contacts);
    if (!a.IsLoop())
        AddEnd(network, a.endPlace, a.end, b, pair.second, contacts);
    AddEnd(network, b.startPlace, b.start, a, pair.first, contacts);
    if (!b.IsLoop())
        AddEnd(network, b.endPlace, b.end, a, pair.first, contacts);
    return contacts;
}

/// Counts the ends at each place.
void CountEnds(Network &network) {
    network.endCounts.assign(network.places.size(), 0);
    for (Edge const &e : network.edges) {
        ++network.endCounts[At(e.startPlace)];
        ++network.endCounts[At(e.endPlace)];
    }
}

std::vector<NearPlace> NearPlaces(Network const &network, std::vector<Pair> const &pairs) {
    std::vector<NearPlace> near;
    for (Pair const &pair : pairs) {
        PairContacts const contacts = ContactsOf(network, pair);
        for (int i = 0; i < contacts.cutCount; ++i) {
            auto const slot = At(i);
            near.push_back({contacts.cuts[slot].place, contacts.cuts[slot].edge, contacts.distances[slot]});
        }
    }
    std::sort(near.begin(), near.end(), [](NearPlace const &a, NearPlace const &b) {
        return a.place != b.place ? a.place < b.place : a.edge < b.edge;
    });
    near.erase(
        std::unique(near.begin(), near.end(),
                    [](NearPlace const &a, NearPlace const &b) { return a.place == b.place && a.edge == b.edge; }),
        near.end());
    return near;
}

/// Where the edges near `place` meet, found by dropping the point onto each in turn. False when the point would leave
/// an edge, come too near an end, or go too far.
bool PointOnAll(Network const &network, NearPlace const *first, NearPlace const *last, DrawingPoint &point) {
    DrawingPoint const origin = point;
    for (int round = 0; round < kMaxProjections; ++round) {
        for (NearPlace const *n = first; n != last; ++n) {
            Edge const &e = EdgeAt(network, n->edge);
            Foot foot;
            if (!FootOn(e, point, foot) || Distance(foot.point, origin) > kLargestMove * network.snap)
                return false;
            if (std::min(Distance(foot.point, e.start), Distance(foot.point, e.end)) < network.snap)
                return false;
            point = foot.point;
        }
        if (last - first == 1)
            break;
    }
    return true;
}

/// Fits all edges to their places. Returns whether their number grew.
bool RefitEdges(Network &network, PlaceIndex &index) {
    index.Rebuild();
    std::size_t const count = network.edges.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (IsBetterHalved(network.edges[i], network.places, network.rounding)) {
            int const middle = index.NearestOrAdd(PointAt(network.edges[i], 0.5), network.snap);
            network.edges.push_back(TakeSecondHalf(network.edges[i], middle));
            FitToPlaces(network.edges.back(), network.places, network.rounding);
        }
        FitToPlaces(network.edges[i], network.places, network.rounding);
    }
    return network.edges.size() > count;
}

/// Moves each end that misses an edge by more than rounding onto that edge, unless it would come too near another
/// place. Returns whether the number of edges grew.
bool MovePlacesOntoEdges(Network &network, PlaceIndex &index, std::vector<Pair> const &pairs) {
    std::vector<NearPlace> const near = NearPlaces(network, pairs);
    bool any = false;
    for (std::size_t i = 0, j = 0; i < near.size(); i = j) {
        double farthest = 0.0;
        for (j = i; j < near.size() && near[j].place == near[i].place; ++j)
            farthest = std::max(farthest, near[j].distance);
        DrawingPoint point = PlaceAt(network, near[i].place);
        if (farthest <= network.rounding || !PointOnAll(network, near.data() + i, near.data() + j, point))
            continue;
        int const neighbour = index.Nearest(point, network.snap);
        if (neighbour >= 0 && neighbour != near[i].place)
            continue;
        network.places[At(near[i].place)] = point;
        network.counts.joined += network.endsAsWritten[At(near[i].place)];
        any = true;
    }
    return any && RefitEdges(network, index);
}

/// Enters a crossing: at an end of either edge, at a place nearby, or at a new place.
void AddMeeting(Network &network, PlaceIndex &index, Pair pair, Meeting const &meeting,
                std::vector<Contact> &contacts) {
    Edge const &a = EdgeAt(network, pair.first);
    Edge const &b = EdgeAt(network, pair.second);
    int const place = index.NearestOrAdd(meeting.point, network.snap);
    if (place != a.startPlace && place != a.endPlace)
        contacts.push_back({pair.first, place, meeting.tOfFirst});
    if (place != b.startPlace && place != b.endPlace)
        contacts.push_back({pair.second, place, meeting.tOfSecond});
}

std::vector<Contact> FindContacts(Network &network, PlaceIndex &index, std::vector<Pair> const &pairs) {
    std::vector<Contact> contacts;
    MeetingFinder finder(network.snap);
    for (Pair const &pair : pairs) {
        PairContacts const ends = ContactsOf(network, pair);
        contacts.insert(contacts.end(), ends.cuts.begin(), ends.cuts.begin() + ends.cutCount);
        Meeting meetings[2];
        int const count = finder.Find(EdgeAt(network, pair.first), EdgeAt(network, pair.second), ends.points.data(),
                                      ends.pointCount, meetings);
        for (int i = 0; i < count; ++i)
            AddMeeting(network, index, pair, meetings[i], contacts);
    }
    return contacts;
}

/// Orders the contacts by edge and along each edge; `begins` gets where those of each edge begin.
std::vector<Contact> SortedByEdge(std::vector<Contact> const &contacts, std::size_t edgeCount,
                                  std::vector<std::size_t> &begins) {
    begins.assign(edgeCount + 1, 0);
    for (Contact const &c : contacts)
        ++begins[At(c.edge) + 1];
    for (std::size_t i = 0; i < edgeCount; ++i)
        begins[i + 1] += begins[i];
    std::vector<Contact> sorted(contacts.size());
    std::vector<std::size_t> next(begins.begin(), begins.end() - 1);
    for (Contact const &c : contacts)
        sorted[next[At(c.edge)]++] = c;
    for (std::size_t i = 0; i < edgeCount; ++i)
        std::sort(sorted.begin() + static_cast<std::ptrdiff_t>(begins[i]),
                  sorted.begin() + static_cast<std::ptrdiff_t>(begins[i + 1]),
                  [](Contact const &a, Contact const &b) { return a.t != b.t ? a.t < b.t : a.place < b.place; });
    return sorted;
}

/// The contacts that really cut `e`: those that only repeat the place before them, or the end, fall away.
void KeepCuts(Network const &network, Edge const &e, Contact const *first, Contact const *last,
              std::vector<Contact> &cuts) {
    cuts.clear();
    double const length = LengthOf(e);
    auto const isShort = [&](double t) { return !e.isArc || t * length < kAbsorbed * network.snap; };
    int place = e.startPlace;
    double t = 0.0;
    for (; first != last; ++first) {
        if (first->place == place && isShort(first->t - t))
            continue;
        cuts.push_back(*first);
        place = first->place;
        t = first->t;
    }
    while (!cuts.empty() && cuts.back().place == e.endPlace && isShort(1.0 - cuts.back().t))
        cuts.pop_back();
}

bool LiesOff(Edge const &e, DrawingPoint place, double rounding) {
    Foot foot;
    return !e.isArc && (!FootOn(e, place, foot) || foot.distance > rounding);
}

/// Appends the pieces of `e` between its cuts.
void AppendPieces(Network &network, PlaceIndex &index, Edge const &e, std::vector<Contact> const &cuts,
                  std::vector<Edge> &pieces) {
    double t = 0.0;
    int place = e.startPlace;
    bool wasOff = false;
    for (std::size_t i = 0; i <= cuts.size(); ++i) {
        bool const isLast = i == cuts.size();
        double const nextT = isLast ? 1.0 : cuts[i].t;
        Edge piece = e;
        piece.startPlace = place;
        piece.endPlace = place = isLast ? e.endPlace : cuts[i].place;
        piece.from = e.from + t * (e.to - e.from);
        piece.to = isLast ? e.to : e.from + nextT * (e.to - e.from);
        piece.sweep = e.sweep * (nextT - t);
        piece.start = PointAt(e, t);
        piece.end = PointAt(e, nextT);
        bool const isOff = !isLast && LiesOff(e, PlaceAt(network, place), network.rounding);
        if (IsBetterHalved(piece, network.places, network.rounding)) {
            Edge half = TakeSecondHalf(piece, index.NearestOrAdd(PointAt(piece, 0.5), network.snap));
            half.moved = FitToPlaces(half, network.places, network.rounding);
            pieces.push_back(half);
        }
        piece.moved = FitToPlaces(piece, network.places, network.rounding) || isOff || wasOff;
        pieces.push_back(piece);
        wasOff = isOff;
        t = nextT;
    }
}

/// Cuts the edges at their contacts. Returns whether any edge was bent.
bool SplitEdges(Network &network, PlaceIndex &index, std::vector<Contact> const &contacts) {
    std::vector<std::size_t> begins;
    std::vector<Contact> const sorted = SortedByEdge(contacts, network.edges.size(), begins);
    std::vector<Edge> pieces;
    pieces.reserve(network.edges.size() + contacts.size());
    std::vector<Contact> cuts;
    bool moved = false;
    for (std::size_t i = 0; i < network.edges.size(); ++i) {
        Edge &e = network.edges[i];
        e.moved = false;
        KeepCuts(network, e, sorted.data() + begins[i], sorted.data() + begins[i + 1], cuts);
        if (cuts.empty()) {
            pieces.push_back(e);
            continue;
        }
        network.counts.cut += static_cast<int>(cuts.size());
        std::size_t const first = pieces.size();
        AppendPieces(network, index, e, cuts, pieces);
        for (std::size_t k = first; k < pieces.size(); ++k)
            moved = moved || pieces[k].moved;
    }
    network.edges.swap(pieces);
    return moved;
}

} // namespace

void CutAtMeetings(Network &network) {
    for (Edge &e : network.edges)
        e.moved = true;
    std::vector<Pair> pairs = CandidatePairs(network);
    CountEnds(network);
    PlaceIndex index(network.places, network.snap);
    if (MovePlacesOntoEdges(network, index, pairs)) {
        pairs = CandidatePairs(network);
        CountEnds(network);
    }
    for (int round = 1; SplitEdges(network, index, FindContacts(network, index, pairs)) && round < kMaxRounds;
         ++round) {
        pairs = CandidatePairs(network);
        CountEnds(network);
    }
}

} // namespace zvi::lib::drawing
