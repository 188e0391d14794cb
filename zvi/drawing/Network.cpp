#include "zvi/drawing/NetworkDetail.h"

namespace zvi::lib::drawing {

namespace {

/// Whether a curve whose ends are one place goes round something; otherwise it has no length.
bool GoesRound(Stretch const &s, double snap) {
    return s.isArc && std::fabs(s.sweep) > kPi && s.radius > snap;
}

} // namespace

Network::Network(std::vector<Stretch> const &stretches, double snapDistance, double roundingDistance,
                 bool circlesMeetEnds)
    : snap(snapDistance), rounding(roundingDistance), places(snapDistance) {
    edges.reserve(stretches.size());
    for (Stretch const &s : stretches) {
        NetworkEdge edge{s, 0, 0};
        bool const staysAlone = s.IsFullTurn() && !circlesMeetEnds;
        edge.startPlace = staysAlone ? places.Add(s.start) : places.NearestOrAdd(s.start, snap);
        edge.endPlace = staysAlone ? edge.startPlace : places.NearestOrAdd(s.end, snap);
        if (edge.startPlace == edge.endPlace && !GoesRound(s, snap)) {
            vanished.push_back(s);
            continue;
        }
        FitToEnds(edge.stretch, Place(edge.startPlace), Place(edge.endPlace), snap);
        edges.push_back(edge);
    }
}

} // namespace zvi::lib::drawing
