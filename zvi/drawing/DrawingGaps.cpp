#include "zvi/drawing/DrawingGapsDetail.h"

#include "zvi/drawing/BoxIndexDetail.h"
#include "zvi/drawing/DrawingMeetingsDetail.h"

#include <algorithm>

namespace zvi::lib::drawing {

namespace {

/// A near miss is a distance of up to this many join tolerances.
constexpr double kNearMiss = 100.0;

/// The tolerance that closes a gap exceeds its distance by this share, because only ends nearer than it are joined.
constexpr double kAboveDistance = 0x1p-20;

bool MissesItself(Edge const &loose, bool atStart, Edge const &other, double reach) {
    return other.curve != loose.curve ||
           (&other == &loose && loose.isArc && Distance(loose.start, loose.end) <= reach &&
            std::fabs(loose.sweep) > kPi && (atStart || true));
}

} // namespace

std::vector<DrawingGap> FindGaps(Network const &network, Spokes const &spokes, std::vector<DrawingCurve> const &curves,
                                 double joinTolerance) {
    std::vector<DrawingGap> gaps;
    double const reach = kNearMiss * joinTolerance;
    std::vector<int> loose;
    for (std::size_t p = 0; p < network.places.size(); ++p)
        if (spokes.Degree(static_cast<int>(p)) == 1)
            loose.push_back(static_cast<int>(p));
    if (loose.empty() || !(reach > 0.0))
        return gaps;
    std::vector<Box> boxes;
    boxes.reserve(network.edges.size());
    for (Edge const &e : network.edges)
        boxes.push_back(BoxOf(e));
    BoxIndex index(boxes);
    std::vector<int> found;
    for (int const place : loose) {
        int const half = *spokes.Begin(place);
        Edge const &own = network.edges[static_cast<std::size_t>(EdgeOfHalf(half))];
        DrawingPoint const at = network.places[static_cast<std::size_t>(place)];
        index.Find({at.x - reach, at.y - reach, at.x + reach, at.y + reach}, found);
        std::sort(found.begin(), found.end());
        double best = reach;
        int nearest = -1;
        for (int const i : found) {
            Edge const &other = network.edges[static_cast<std::size_t>(i)];
            if (!MissesItself(own, (half & 1) == 0, other, reach))
                continue;
            double const d = other.curve != own.curve ? DistanceTo(other, at) : Distance(own.start, own.end);
            if (d < best || (d == best && nearest < 0)) {
                best = d;
                nearest = i;
            }
        }
        if (nearest < 0)
            continue;
        unsigned int const ids[2] = {
            curves[static_cast<std::size_t>(own.curve)].id,
            curves[static_cast<std::size_t>(network.edges[static_cast<std::size_t>(nearest)].curve)].id};
        gaps.push_back({at, best, {ids[0], ids[1]}, best * (1.0 + kAboveDistance)});
    }
    return gaps;
}

} // namespace zvi::lib::drawing
