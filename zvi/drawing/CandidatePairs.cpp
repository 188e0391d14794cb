#include "zvi/drawing/CandidatePairsDetail.h"

#include "zvi/base/Buckets.h"
#include "zvi/drawing/BoxIndexDetail.h"

#include <algorithm>

namespace zvi::lib::drawing {

namespace {

/// Whether both ends of `b` lie clearly on one side of the whole line of `a`.
bool IsBeside(Stretch const &a, Stretch const &b, double distance) {
    DrawingPoint const u = a.end - a.start;
    double const start = Cross(u, b.start - a.start), end = Cross(u, b.end - a.start);
    double const near = distance * Length(u);
    return (start > near && end > near) || (start < -near && end < -near);
}

/// Whether two segments share a place and the free end of each is farther from the other than `distance`.
bool PartAtPlace(NetworkEdge const &a, NetworkEdge const &b, double distance) {
    if (!b.EndsAt(a.startPlace) && !b.EndsAt(a.endPlace))
        return false;
    DrawingPoint const u = a.stretch.end - a.stretch.start, v = b.stretch.end - b.stretch.start;
    double const cross = Cross(u, v);
    return cross * cross > distance * distance * std::max(Dot(u, u), Dot(v, v));
}

/// Whether two edges have nothing to do with one another but a shared end, although their boxes meet.
bool AreApart(NetworkEdge const &a, NetworkEdge const &b, double distance) {
    return !a.stretch.isArc && !b.stretch.isArc &&
           (IsBeside(a.stretch, b.stretch, distance) || IsBeside(b.stretch, a.stretch, distance) ||
            PartAtPlace(a, b, distance));
}

std::vector<Box> GrownBoxes(Network const &network, double by) {
    std::vector<Box> boxes;
    boxes.reserve(network.edges.size());
    for (NetworkEdge const &e : network.edges)
        boxes.push_back(Grown(BoxOf(e.stretch), by));
    return boxes;
}

} // namespace

std::vector<EdgePair> CandidatePairs(Network const &network, double reach) {
    std::vector<Box> const boxes = GrownBoxes(network, 0.5 * reach);
    BoxIndex index(boxes);
    std::vector<EdgePair> pairs;
    std::vector<int> found;
    for (int i = 0; i < static_cast<int>(boxes.size()); ++i) {
        index.Find(boxes[Index(i)], found);
        for (int const other : found)
            if (i < other && !AreApart(network.edges[Index(i)], network.edges[Index(other)], reach))
                pairs.push_back({i, other});
    }
    return pairs;
}

std::vector<EdgePair> ConnectorPairs(Network const &network, int first, std::vector<int> const &owners,
                                     std::vector<EdgePair> const &pairs, double reach) {
    std::vector<EdgePair> found;
    if (owners.empty())
        return found;
    // The neighbours of each edge: the half 2p and 2p + 1 of pair p.
    std::vector<int> begins(Index(first) + 1, 0);
    std::vector<int> neighbours(2 * pairs.size());
    auto const end = [&](std::size_t i) { return i % 2 == 0 ? pairs[i / 2].first : pairs[i / 2].second; };
    base::SortIntoBuckets(2 * pairs.size(), std::span(begins), end,
                          [&](std::size_t place, std::size_t i) { neighbours[place] = end(i ^ 1); });
    PlaceIndex middles(reach);
    for (int i = 0; i < static_cast<int>(owners.size()); ++i) {
        int const connector = first + i, owner = owners[Index(i)];
        Stretch const &s = network.edges[Index(connector)].stretch;
        Box const box = Grown(BoxOf(s), 2.0 * network.snap);
        auto const look = [&](int edge) {
            if (Meet(box, BoxOf(network.edges[Index(edge)].stretch)))
                found.push_back({edge, connector});
        };
        look(owner);
        std::for_each(neighbours.begin() + begins[Index(owner)], neighbours.begin() + begins[Index(owner) + 1], look);
        DrawingPoint const middle = PointAt(s, 0.5);
        middles.ForEachNear(middle, reach, [&](int other, double) { look(first + other); });
        middles.Add(middle);
    }
    return found;
}

} // namespace zvi::lib::drawing
