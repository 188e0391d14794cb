#include "zvi/drawing/ShortestFirstDetail.h"

#include "zvi/base/KeySort.h"

#include <tuple>
#include <utility>

namespace zvi::lib::drawing {

namespace {

/// By kind and length, and then as `ranksLower` has it.
template <typename RanksLower>
void Sort(std::vector<Measured> &things, RanksLower ranksLower) {
    std::vector<base::Keyed> order(things.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = {base::OrderedBits(things[i].length), i};
    base::SortByKeys(order);
    for (base::Keyed &keyed : order)
        keyed.key = static_cast<std::uint64_t>(things[keyed.of].kind);
    base::SortByKeys(order);
    std::vector<Measured> sorted;
    sorted.reserve(things.size());
    for (base::Keyed const &keyed : order)
        sorted.push_back(things[keyed.of]);
    things = std::move(sorted);
    for (auto begin = things.begin(); begin != things.end();) {
        auto const end = std::find_if(begin + 1, things.end(), [&begin](Measured const &thing) {
            return thing.kind != begin->kind || thing.length != begin->length;
        });
        std::sort(begin, end, ranksLower);
        begin = end;
    }
}

} // namespace

void SortShortestFirst(std::vector<Measured> &things, double same) {
    auto const ranksLower = [](Measured const &a, Measured const &b) {
        return std::tie(a.rank, a.spread, a.place.x, a.place.y, a.number) <
               std::tie(b.rank, b.spread, b.place.x, b.place.y, b.number);
    };
    Sort(things, ranksLower);
    for (auto begin = things.begin(); begin != things.end();) {
        auto end = begin + 1;
        while (end != things.end() && end->kind == begin->kind && end->length - (end - 1)->length < same)
            ++end;
        std::sort(begin, end, ranksLower);
        begin = end;
    }
}

} // namespace zvi::lib::drawing
