#include "zvi/drawing/NetworkDetail.h"

#include "zvi/base/Buckets.h"

#include <algorithm>
#include <span>
#include <tuple>

namespace zvi::lib::drawing {

namespace {

/// Whether a curve whose ends are one place goes round something; otherwise it has no length.
bool GoesRound(Stretch const &s, double snap) {
    return s.IsOverHalf() && s.radius > snap;
}

/// What two edges between the same places must share to be the same: how far they bulge from the lower place to the
/// higher one, or, for full turns, their radius and centre.
struct Shape {
    int lowPlace = 0;
    int highPlace = 0;
    bool isFullTurn = false;
    double size = 0.0;
    DrawingPoint center;

    bool IsSame(Shape const &other, double snap) const {
        return lowPlace == other.lowPlace && highPlace == other.highPlace && isFullTurn == other.isFullTurn &&
               std::fabs(size - other.size) < snap && Distance(center, other.center) < snap;
    }
    bool operator<(Shape const &other) const {
        return std::tie(lowPlace, highPlace, isFullTurn, size) <
               std::tie(other.lowPlace, other.highPlace, other.isFullTurn, other.size);
    }
};

Shape ShapeOf(NetworkEdge const &e) {
    bool const isForward = e.startPlace <= e.endPlace;
    Shape shape{
        std::min(e.startPlace, e.endPlace), std::max(e.startPlace, e.endPlace), e.stretch.IsFullTurn(), 0.0, {}};
    if (shape.isFullTurn) {
        shape.size = e.stretch.radius;
        shape.center = e.stretch.center;
    } else {
        shape.size = isForward ? SagittaOf(e.stretch) : -SagittaOf(e.stretch);
    }
    return shape;
}

} // namespace

void Network::MarkRepeated(std::vector<std::size_t> const &candidates, std::vector<bool> &isRepeated) {
    std::vector<std::pair<Shape, std::size_t>> order;
    order.reserve(candidates.size());
    for (std::size_t const i : candidates)
        order.emplace_back(ShapeOf(edges[i]), i);
    std::sort(order.begin(), order.end());
    for (std::size_t i = 0, j = 0; i < order.size(); i = j) {
        std::size_t first = order[i].second;
        for (j = i + 1; j < order.size() && order[j].first.IsSame(order[i].first, snap); ++j)
            if (edges[order[j].second].stretch.curve < edges[first].stretch.curve)
                first = order[j].second;
        for (std::size_t k = i; k < j; ++k) {
            isRepeated[order[k].second] = order[k].second != first;
            edges[first].stretch.order = std::min(edges[first].stretch.order, edges[order[k].second].stretch.order);
        }
    }
}

void Network::DropRepeated() {
    using HighPlace = std::pair<int, std::size_t>; // and the edge
    std::vector<HighPlace> order(edges.size());
    std::vector<std::size_t> begins(places.Places().size() + 1, 0);
    base::SortIntoBuckets(
        edges.size(), std::span(begins),
        [&](std::size_t i) { return std::min(edges[i].startPlace, edges[i].endPlace); },
        [&](std::size_t place, std::size_t i) {
            order[place] = {std::max(edges[i].startPlace, edges[i].endPlace), i};
        });
    std::vector<bool> isRepeated(edges.size(), false);
    std::vector<std::size_t> candidates;
    for (std::size_t place = 0; place + 1 < begins.size(); ++place) {
        std::span const ofPlace = std::span(order).subspan(begins[place], begins[place + 1] - begins[place]);
        std::sort(ofPlace.begin(), ofPlace.end());
        for (std::size_t i = 0, j = 0; i < ofPlace.size(); i = j) {
            candidates.clear();
            for (j = i; j < ofPlace.size() && ofPlace[j].first == ofPlace[i].first; ++j)
                candidates.push_back(ofPlace[j].second);
            if (candidates.size() > 1)
                MarkRepeated(candidates, isRepeated);
        }
    }
    if (std::find(isRepeated.begin(), isRepeated.end(), true) == isRepeated.end())
        return;
    std::size_t kept = 0;
    for (std::size_t i = 0; i < edges.size(); ++i)
        if (isRepeated[i])
            repeated.push_back(edges[i].stretch);
        else
            edges[kept++] = edges[i];
    edges.resize(kept);
}

Network::Network(std::vector<Stretch> const &stretches, double snapDistance, double roundingDistance, double closed,
                 bool circlesMeetEnds)
    : snap(snapDistance), rounding(roundingDistance), places(snapDistance) {
    edges.reserve(stretches.size());
    for (Stretch const &s : stretches) {
        NetworkEdge edge{s, 0, 0};
        bool const staysAlone = s.IsFullTurn() && !circlesMeetEnds;
        edge.startPlace = staysAlone ? places.Add(s.start) : places.NearestOrAdd(s.start, snap);
        bool const isClosed = staysAlone || (s.IsOverHalf() && Distance(s.start, s.end) < closed);
        edge.endPlace = isClosed ? edge.startPlace : places.NearestOrAdd(s.end, snap);
        if (edge.startPlace == edge.endPlace && !GoesRound(s, snap)) {
            vanished.push_back(s);
            continue;
        }
        FitToEnds(edge.stretch, Place(edge.startPlace), Place(edge.endPlace), snap);
        edges.push_back(edge);
    }
}

} // namespace zvi::lib::drawing
