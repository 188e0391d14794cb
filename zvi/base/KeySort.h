#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace zvi::lib::base {

/// A number as bits that are ordered as numbers are; -0 has those of 0. NaN has no place in this order.
inline std::uint64_t OrderedBits(double number) {
    assert(number == number);
    constexpr std::uint64_t kSign = std::uint64_t{1} << 63;
    auto const bits = std::bit_cast<std::uint64_t>(number + 0.0);
    return (bits & kSign) != 0 ? ~bits : bits | kSign;
}

/// Something by its number, and what it is sorted by.
struct Keyed {
    std::uint64_t key = 0;
    std::size_t of = 0;
};

/// Sorts by the keys; what has the same key stays in the order in which it is. Digit by digit, from the lowest one on
/// (Knuth, The Art of Computer Programming, vol. 3, 5.2.5), which takes less than a third of the time of comparing.
inline void SortByKeys(std::vector<Keyed> &things) {
    constexpr std::size_t kFew = 256, kDigits = 8, kValues = 256;
    if (things.size() < kFew) {
        std::stable_sort(things.begin(), things.end(), [](Keyed const &a, Keyed const &b) { return a.key < b.key; });
        return;
    }
    auto const digitOf = [](Keyed const &thing, std::size_t digit) {
        return static_cast<std::size_t>(thing.key >> (8 * digit)) % kValues;
    };
    std::vector<std::array<std::size_t, kValues>> begins(kDigits);
    for (Keyed const &thing : things)
        for (std::size_t digit = 0; digit < kDigits; ++digit)
            ++begins[digit][digitOf(thing, digit)];
    std::vector<Keyed> sorted(things.size());
    for (std::size_t digit = 0; digit < kDigits; ++digit) {
        std::array<std::size_t, kValues> &begin = begins[digit];
        if (begin[digitOf(things.front(), digit)] == things.size())
            continue; // all have the same
        std::size_t end = 0;
        for (std::size_t &place : begin)
            end += std::exchange(place, end);
        for (Keyed const &thing : things)
            sorted[begin[digitOf(thing, digit)]++] = thing;
        things.swap(sorted);
    }
}

} // namespace zvi::lib::base
