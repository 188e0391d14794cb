#include "zvi/drawing/RunsDetail.h"

#include <algorithm>
#include <cassert>

namespace zvi::lib::drawing {

int RunsOf(Stretch const &s, double snap, std::array<Run, 3> &runs) {
    if (!s.isArc) {
        runs[0] = {std::min(s.start.y, s.end.y), std::max(s.start.y, s.end.y), 0.0, s.start.y < s.end.y};
        return 1;
    }
    bool const counter = s.sweep > 0.0;
    double const top = TurnTo(s, {s.center.x, s.center.y + s.radius});
    double const bottom = TurnTo(s, {s.center.x, s.center.y - s.radius});
    double const turn = std::fabs(s.sweep);
    // The right half of a counter-clockwise arc rises; every stop at the top or at the bottom changes the half.
    bool const topFirst = top < bottom;
    double const topY = s.center.y + s.radius, bottomY = s.center.y - s.radius;
    auto const off = [&s](DrawingPoint end) { return std::fabs(Distance(s.center, end) - s.radius); };
    double const near = snap + 2.0 * std::max(off(s.start), off(s.end));
    auto const isInside = [&](double at, double level) {
        return at > 0.0 && at < turn && std::min(std::fabs(level - s.start.y), std::fabs(level - s.end.y)) > near;
    };
    bool const isTopInside = isInside(top, topY), isBottomInside = isInside(bottom, bottomY);
    bool const isAnyInside = isTopInside || isBottomInside;
    bool upward = isAnyInside ? isTopInside && (topFirst || !isBottomInside) : s.start.y < s.end.y;
    double y = s.start.y;
    int count = 0;
    auto const addRun = [&](double to) {
        runs[Index(count++)] = {std::min(y, to), std::max(y, to), counter == upward ? 1.0 : -1.0, upward};
        y = to;
        upward = !upward;
    };
    for (bool const isTop : {topFirst, !topFirst})
        if (isTop ? isTopInside : isBottomInside)
            addRun(isTop ? topY : bottomY);
    addRun(s.end.y);
    return count;
}

double XAt(Stretch const &s, Run const &run, double y) {
    if (!s.isArc) {
        assert(s.start.y != s.end.y);
        double const t = (y - s.start.y) / (s.end.y - s.start.y);
        return s.start.x + t * (s.end.x - s.start.x);
    }
    double const v = y - s.center.y;
    return s.center.x + run.side * std::sqrt(std::max(0.0, (s.radius - v) * (s.radius + v)));
}

} // namespace zvi::lib::drawing
