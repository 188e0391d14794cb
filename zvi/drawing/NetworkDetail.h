#pragma once

// The curves between their ends, before they are cut.

#include "zvi/drawing/PlaceIndexDetail.h"
#include "zvi/drawing/StretchDetail.h"

#include <utility>
#include <vector>

namespace zvi::lib::drawing {

/// A whole curve, or a connector, and the places of its two ends.
struct NetworkEdge {
    Stretch stretch;
    int startPlace = 0;
    int endPlace = 0;

    bool EndsAt(int place) const { return place == startPlace || place == endPlace; }
};

/// The curves of a drawing and the places at which they end. Places stand at least `snap` apart, so that what rounding
/// leaves of a coordinate never decides in which order they lie along a curve.
struct Network {
    /// An arc over half a turn whose ends are nearer to one another than `closed` goes all the way round.
    Network(std::vector<Stretch> const &stretches, double snapDistance, double roundingDistance, double closed,
            bool circlesMeetEnds);

    /// Moves all but the first of equal curves to `repeated`.
    void DropRepeated();

    double snap;
    double rounding;
    PlaceIndex places;
    std::vector<NetworkEdge> edges;
    std::vector<Stretch> vanished; ///< curves shorter than the snap distance
    std::vector<Stretch> repeated; ///< curves that are the same as an earlier one, both ways taken alike

    DrawingPoint Place(int place) const { return places.Places()[Index(place)]; }

private:
    /// Marks those of edges between the same places that are the same as another one.
    void MarkRepeated(std::vector<std::size_t> const &candidates, std::vector<bool> &isRepeated);
};

/// Two edges that may meet.
struct EdgePair {
    int first = 0;
    int second = 0;
};

} // namespace zvi::lib::drawing
