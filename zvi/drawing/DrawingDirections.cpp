#include "zvi/drawing/DrawingDirectionsDetail.h"

#include <algorithm>

namespace zvi::lib::drawing {

namespace {

/// The circle on which spokes are compared, as a share of the shortest reach.
constexpr double kShareOfReach = 0.75;

/// Spokes closer than this angle, in radians, are compared again on a larger circle when there is one.
constexpr double kSideBySide = 1e-3;

/// A larger circle is worth looking at when it is larger by this factor.
constexpr double kWorthwhile = 1.5;

struct Spoke {
    double direction;
    int halfEdge;
};

bool Before(Spoke const &a, Spoke const &b) {
    return a.direction != b.direction ? a.direction < b.direction : a.halfEdge < b.halfEdge;
}

double Wrapped(double angle) {
    return angle - kTwoPi * std::round(angle / kTwoPi);
}

class PlaceSorter {
public:
    explicit PlaceSorter(Network const &someNetwork) : network(someNetwork) {}

    /// Sorts the spokes by direction; the first is the one after the widest gap.
    std::vector<Spoke> const &Sort(int const *begin, int const *end) {
        double const reach = ShortestReach(begin, end);
        spokes.clear();
        for (int const *h = begin; h != end; ++h)
            spokes.push_back({DirectionAt(EdgeOf(*h), *h, kShareOfReach * reach), *h});
        std::sort(spokes.begin(), spokes.end(), Before);
        if (spokes.size() > 2)
            SortSideBySide(reach);
        return spokes;
    }

private:
    Edge const &EdgeOf(int halfEdge) const { return network.edges[At(EdgeOfHalf(halfEdge))]; }

    double ShortestReach(int const *begin, int const *end) const {
        double reach = HUGE_VAL;
        for (int const *h = begin; h != end; ++h)
            reach = std::min(reach, ReachOf(EdgeOf(*h)));
        return reach;
    }

    void SortSideBySide(double reach) {
        bool any = false;
        double widest = spokes.front().direction + kTwoPi - spokes.back().direction;
        std::size_t first = 0;
        for (std::size_t i = 1; i < spokes.size(); ++i) {
            double const gap = spokes[i].direction - spokes[i - 1].direction;
            any = any || gap < kSideBySide;
            if (gap > widest) {
                widest = gap;
                first = i;
            }
        }
        if (!any && spokes.front().direction + kTwoPi - spokes.back().direction >= kSideBySide)
            return;
        std::rotate(spokes.begin(), spokes.begin() + static_cast<std::ptrdiff_t>(first), spokes.end());
        for (std::size_t i = 0, j = 0; i < spokes.size(); i = j) {
            for (j = i + 1; j < spokes.size() && Wrapped(spokes[j].direction - spokes[j - 1].direction) < kSideBySide;)
                ++j;
            if (j - i > 1)
                SortRun(i, j, reach);
        }
    }

    void SortRun(std::size_t begin, std::size_t end, double reach) {
        double runReach = HUGE_VAL;
        for (std::size_t i = begin; i < end; ++i)
            runReach = std::min(runReach, ReachOf(EdgeOf(spokes[i].halfEdge)));
        if (runReach < kWorthwhile * reach)
            return;
        double const reference = spokes[begin].direction;
        std::vector<Spoke> run;
        for (std::size_t i = begin; i < end; ++i) {
            int const h = spokes[i].halfEdge;
            run.push_back({Wrapped(DirectionAt(EdgeOf(h), h, kShareOfReach * runReach) - reference), h});
        }
        std::sort(run.begin(), run.end(), Before);
        std::vector<Spoke> const old(spokes.begin() + static_cast<std::ptrdiff_t>(begin),
                                     spokes.begin() + static_cast<std::ptrdiff_t>(end));
        for (std::size_t i = 0; i < run.size(); ++i)
            spokes[begin + i] = {old[i].direction, run[i].halfEdge};
    }

    Network const &network;
    std::vector<Spoke> spokes;
};

} // namespace

double ReachOf(Edge const &e) {
    if (!e.isArc)
        return Distance(e.start, e.end);
    return std::fabs(e.sweep) <= kPi ? Distance(e.start, e.end) : 2.0 * e.radius;
}

double DirectionAt(Edge const &e, int halfEdge, double distance) {
    bool const backward = (halfEdge & 1) != 0;
    DrawingPoint const chord = backward ? e.start - e.end : e.end - e.start;
    if (!e.isArc)
        return std::atan2(chord.y, chord.x);
    double const turn = backward ? -e.sweep : e.sweep;
    double const bend = std::copysign(std::asin(std::min(1.0, distance / (2.0 * e.radius))), turn);
    if (std::fabs(turn) <= kPi)
        return Wrapped(std::atan2(chord.y, chord.x) - 0.5 * turn + bend);
    DrawingPoint const out = (backward ? e.end : e.start) - e.center;
    return Wrapped(std::atan2(out.y, out.x) + std::copysign(0.5 * kPi, turn) + bend);
}

std::vector<double> SortByDirection(Network const &network, Spokes &spokes) {
    std::vector<double> directions(2 * network.edges.size());
    PlaceSorter sorter(network);
    for (std::size_t p = 0; p < network.places.size(); ++p) {
        int *h = spokes.halfEdges.data() + spokes.begins[p];
        for (auto const &spoke : sorter.Sort(h, spokes.halfEdges.data() + spokes.begins[p + 1])) {
            *h++ = spoke.halfEdge;
            directions[At(spoke.halfEdge)] = spoke.direction;
        }
    }
    return directions;
}

} // namespace zvi::lib::drawing
