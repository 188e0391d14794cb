#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <memory>
#include <utility>

namespace zvi::lib {

/// Runs of this many records are sorted by insertion before they are merged.
inline constexpr std::size_t kInsertionRun = 16;

/// From this count on, sorting by digits pays.
inline constexpr std::size_t kSmallestDigitSort = 512;

/// Whether no record is less than the one before it.
template <typename Record, typename IsLess>
bool IsInOrder(Record const *records, std::size_t count, IsLess isLess) {
    for (std::size_t i = 1; i < count; ++i) {
        if (isLess(records[i], records[i - 1]))
            return false;
    }
    return true;
}

template <typename Record, typename IsLess>
void InsertionSort(Record *records, std::size_t count, IsLess isLess) {
    for (std::size_t i = 1; i < count; ++i) {
        if (!isLess(records[i], records[i - 1]))
            continue;
        Record moved = std::move(records[i]);
        std::size_t hole = i;
        do {
            records[hole] = std::move(records[hole - 1]);
            --hole;
        } while (hole > 0 && isLess(moved, records[hole - 1]));
        records[hole] = std::move(moved);
    }
}

/// Merges two adjacent runs into `target`; of equal records those of the first run come first.
template <typename Record, typename IsLess>
void MergeRuns(Record *first, Record *middle, Record *last, Record *target, IsLess isLess) {
    Record *left = first;
    Record *right = middle;
    while (left != middle && right != last) {
        bool const takeRight = isLess(*right, *left);
        *target++ = std::move(takeRight ? *right++ : *left++);
    }
    target = std::move(left, middle, target);
    std::move(right, last, target);
}

/// Stable merge sort. It stays within the array for any comparison, consistent or not, and takes the same steps on
/// every host. `scratch` has room for `count` records.
template <typename Record, typename IsLess>
void MergeSort(Record *records, Record *scratch, std::size_t count, IsLess isLess) {
    for (std::size_t i = 0; i < count; i += kInsertionRun)
        InsertionSort(records + i, std::min(kInsertionRun, count - i), isLess);
    Record *source = records;
    Record *target = scratch;
    for (std::size_t run = kInsertionRun; run < count; run *= 2) {
        for (std::size_t i = 0; i < count; i += 2 * run) {
            std::size_t const middle = std::min(i + run, count);
            std::size_t const end = std::min(i + 2 * run, count);
            MergeRuns(source + i, source + middle, source + end, target + i, isLess);
        }
        std::swap(source, target);
    }
    if (source != records)
        std::move(source, source + count, records);
}

/// Bits of a digit of `DigitSort`, and the number of its values.
inline constexpr int kDigitBits = 8;
inline constexpr std::size_t kDigitValues = std::size_t{1} << kDigitBits;

template <typename Key>
std::size_t DigitOf(Key key, std::size_t place) {
    return static_cast<std::size_t>(key >> (place * kDigitBits)) & (kDigitValues - 1);
}

/// Stable sort by an unsigned key, from its lowest digit to its highest (Knuth, The Art of Computer Programming, vol.
/// 3, 5.2.5). A digit that all keys share costs nothing.
template <typename Record, typename KeyOf>
void DigitSort(Record *records, Record *scratch, std::size_t count, KeyOf keyOf) {
    using Key = decltype(keyOf(*records));
    constexpr std::size_t kPlaces = sizeof(Key) * std::numeric_limits<unsigned char>::digits / kDigitBits;
    std::array<std::array<std::size_t, kDigitValues>, kPlaces> counts{};
    for (std::size_t i = 0; i < count; ++i) {
        Key const key = keyOf(records[i]);
        for (std::size_t place = 0; place < kPlaces; ++place)
            ++counts[place][DigitOf(key, place)];
    }
    Record *source = records;
    Record *target = scratch;
    for (std::size_t place = 0; place < kPlaces; ++place) {
        auto &next = counts[place];
        if (next[DigitOf(keyOf(source[0]), place)] == count)
            continue;
        std::size_t start = 0;
        for (std::size_t &position : next)
            start += std::exchange(position, start);
        for (std::size_t i = 0; i < count; ++i)
            target[next[DigitOf(keyOf(source[i]), place)]++] = source[i];
        std::swap(source, target);
    }
    if (source != records)
        std::copy(source, source + count, records);
}

/// Sorts by `Order`, which gives for its `Record`
///   Compare(left, right): negative when left comes first;
///   HasKeys(records, count), KeyOf(record): whether the order of these records is that of unsigned keys, and the key.
template <typename Order, typename Record>
void StableSort(Record *records, std::size_t count) {
    auto const isLess = [](Record const &left, Record const &right) { return Order::Compare(left, right) < 0; };
    if (IsInOrder(records, count, isLess))
        return;
    auto const scratch = std::make_unique_for_overwrite<Record[]>(count);
    if constexpr (requires { Order::KeyOf(*records); }) {
        if (count >= kSmallestDigitSort && Order::HasKeys(records, count)) {
            DigitSort(records, scratch.get(), count, Order::KeyOf);
            return;
        }
    }
    MergeSort(records, scratch.get(), count, isLess);
}

} // namespace zvi::lib
