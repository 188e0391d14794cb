#include "zvi/drawing/ShortestFirstDetail.h"

#include <tuple>

namespace zvi::lib::drawing {

Landmarks LandmarksOf(std::vector<Stretch> const &stretches) {
    DrawingPoint sum, weighted;
    double total = 0.0;
    for (Stretch const &s : stretches) {
        DrawingPoint const middle = s.IsFullTurn() ? s.center : PointAt(s, 0.5);
        double const length = LengthOf(s);
        sum = sum + middle;
        weighted = weighted + middle * length;
        total += length;
    }
    if (!(total > 0.0))
        return {};
    double const share = 1.0 / static_cast<double>(stretches.size());
    Landmarks landmarks{{sum * share, weighted * (1.0 / total)}, total * share};
    for (Stretch const &s : stretches)
        landmarks.size += share * Distance(s.IsFullTurn() ? s.center : PointAt(s, 0.5), landmarks.points[0]);
    return landmarks;
}

void SortShortestFirst(std::vector<Measured> &things, double same) {
    std::sort(things.begin(), things.end(), [](Measured const &a, Measured const &b) {
        return std::tie(a.kind, a.length, a.rank, a.place.x, a.place.y, a.number) <
               std::tie(b.kind, b.length, b.rank, b.place.x, b.place.y, b.number);
    });
    auto const ranksLower = [](Measured const &a, Measured const &b) {
        return std::tie(a.rank, a.place.x, a.place.y, a.number) < std::tie(b.rank, b.place.x, b.place.y, b.number);
    };
    for (auto begin = things.begin(); begin != things.end();) {
        auto end = begin + 1;
        while (end != things.end() && end->kind == begin->kind && end->length - (end - 1)->length < same)
            ++end;
        std::sort(begin, end, ranksLower);
        begin = end;
    }
}

} // namespace zvi::lib::drawing
