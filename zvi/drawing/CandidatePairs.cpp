#include "zvi/drawing/CandidatePairsDetail.h"

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

std::vector<Box> BoxesFrom(Network const &network, std::size_t first, double grown) {
    std::vector<Box> boxes;
    boxes.reserve(network.edges.size() - first);
    for (std::size_t i = first; i < network.edges.size(); ++i)
        boxes.push_back(Grown(BoxOf(network.edges[i].stretch), grown));
    return boxes;
}

} // namespace

std::vector<EdgePair> CandidatePairs(Network const &network, double reach) {
    std::vector<Box> const boxes = BoxesFrom(network, 0, 0.5 * reach);
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

std::vector<EdgePair> CandidatePairsOfLatest(Network const &network, int first) {
    std::vector<Box> const boxes = BoxesFrom(network, Index(first), 2.0 * network.snap);
    BoxIndex index(boxes);
    std::vector<EdgePair> pairs;
    std::vector<int> found;
    for (int i = 0; i < static_cast<int>(network.edges.size()); ++i) {
        index.Find(i < first ? BoxOf(network.edges[Index(i)].stretch) : boxes[Index(i - first)], found);
        for (int const k : found)
            if (int const other = first + k; i < other)
                pairs.push_back({i, other});
    }
    return pairs;
}

} // namespace zvi::lib::drawing
