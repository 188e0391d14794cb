#include "zvi/drawing/ShortestFirstDetail.h"

#include <tuple>

namespace zvi::lib::drawing {

void SortShortestFirst(std::vector<Measured> &things, double same) {
    std::sort(things.begin(), things.end(), [](Measured const &a, Measured const &b) {
        return std::tie(a.kind, a.length, a.rank, a.spread, a.place.x, a.place.y, a.number) <
               std::tie(b.kind, b.length, b.rank, b.spread, b.place.x, b.place.y, b.number);
    });
    auto const ranksLower = [](Measured const &a, Measured const &b) {
        return std::tie(a.rank, a.spread, a.place.x, a.place.y, a.number) <
               std::tie(b.rank, b.spread, b.place.x, b.place.y, b.number);
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
