#pragma once

#include "zvi/base/Buckets.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

namespace zvi::lib::core {

/// Runs of this many records are sorted by insertion before they are merged.
inline constexpr std::size_t kInsertionRun = 16;

/// From this count on, sorting by digits pays.
inline constexpr std::size_t kSmallestDigitSort = 128;

/// Whether no record is less than the one before it.
template <typename Record, typename IsLess>
bool IsInOrder(Record const *records, std::size_t count, IsLess isLess) {
    for (std::size_t i = 1; i < count; ++i)
        if (isLess(records[i], records[i - 1]))
            return false;
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

/// Merges two adjacent runs, which may be empty, into `target`, memory of its own; of equal records those of the first
/// run come first.
template <typename Record, typename IsLess>
void MergeRuns(Record *first, Record *middle, Record *last, Record *target, IsLess isLess) {
    assert(first <= middle && middle <= last);
    Record *left = first;
    Record *right = middle;
    while (left != middle && right != last) {
        bool const takeRight = isLess(*right, *left);
        *target++ = std::move(*(takeRight ? right : left));
        // Without a branch, which could not be foretold.
        right += takeRight ? 1 : 0;
        left += takeRight ? 0 : 1;
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

/// Bits of a digit of `DigitSort`: few for few records, whose counts would cost more than they.
inline constexpr int kShortDigitBits = 8;
inline constexpr int kLongDigitBits = 11;

/// From this count on, digits are long.
inline constexpr std::size_t kSmallestLongDigitSort = 4096;

/// `DigitSort` looks at this many digits of a long key before it repairs what is left by insertion.
inline constexpr int kLeadingDigits = 3;

/// The repair may move this many records for each record there is.
inline constexpr std::size_t kRepairMovesPerRecord = 4;

/// Stable sort by the bits of the key from `fromBit` up to, not including, `toBit`, from the lowest digit to the
/// highest (Knuth, The Art of Computer Programming, vol. 3, 5.2.5). `scratch` has room for `count` records; bits are
/// those of the key, and none are looked at where `toBit` is not above `fromBit`.
template <int digitBits, typename Record, typename KeyOf>
void SortByBits(Record *records, Record *scratch, std::size_t count, KeyOf keyOf, int fromBit, int toBit) {
    constexpr std::size_t kValues = std::size_t{1} << digitBits;
    assert(fromBit >= 0 && toBit <= std::numeric_limits<decltype(keyOf(*records))>::digits);
    auto const digitOf = [=](Record const &record, int shift) {
        return static_cast<std::size_t>(keyOf(record) >> shift) & (kValues - 1);
    };
    Record *source = records;
    Record *target = scratch;
    for (int shift = fromBit; shift < toBit; shift += digitBits) {
        std::array<std::size_t, kValues + 1> begins{};
        base::SortIntoBuckets<std::size_t>(
            count, begins, [=](std::size_t i) { return digitOf(source[i], shift); },
            [=](std::size_t place, std::size_t i) { target[place] = source[i]; });
        std::swap(source, target);
    }
    if (source != records)
        std::copy(source, source + count, records);
}

/// Insertion sort of records that are almost in order; false, with some still out of order, when they are not.
template <typename Record, typename KeyOf>
bool RepairByInsertion(Record *records, std::size_t count, KeyOf keyOf) {
    std::size_t movesLeft = count * kRepairMovesPerRecord;
    for (std::size_t i = 1; i < count; ++i) {
        auto const key = keyOf(records[i]);
        if (!(key < keyOf(records[i - 1])))
            continue;
        Record const moved = records[i];
        std::size_t hole = i;
        for (; hole > 0 && key < keyOf(records[hole - 1]); --hole)
            records[hole] = records[hole - 1];
        records[hole] = moved;
        if (movesLeft < i - hole)
            return false;
        movesLeft -= i - hole;
    }
    return true;
}

template <typename Record, typename KeyOf>
void DigitSort(Record *records, Record *scratch, std::size_t count, KeyOf keyOf);

/// Stable sort by an unsigned key of a run that may be short.
template <typename Record, typename KeyOf>
void SortRun(Record *records, Record *scratch, std::size_t count, KeyOf keyOf) {
    auto const isLess = [=](Record const &left, Record const &right) { return keyOf(left) < keyOf(right); };
    if (count <= kInsertionRun)
        InsertionSort(records, count, isLess);
    else if (count < kSmallestDigitSort)
        MergeSort(records, scratch, count, isLess);
    else
        DigitSort(records, scratch, count, keyOf);
}

/// Sorts each run of records that `leadingOf` gives the same number. There is one record at least.
template <typename Record, typename KeyOf, typename LeadingOf>
void SortRuns(Record *records, Record *scratch, std::size_t count, KeyOf keyOf, LeadingOf leadingOf) {
    assert(count > 0);
    std::size_t begin = 0;
    auto leading = leadingOf(records[0]);
    for (std::size_t i = 1; i <= count; ++i) {
        auto const next = i < count ? leadingOf(records[i]) : leading + 1;
        if (next == leading)
            continue;
        if (i - begin > 1)
            SortRun(records + begin, scratch, i - begin, keyOf);
        begin = i;
        leading = next;
    }
}

/// Stable sort by an unsigned key, taken from the smallest one on, so that bits beyond the range of the keys cost
/// nothing; neither do low bits that all keys share. The leading digits of a long key leave few records out of order as
/// a rule, and those are inserted at their places; if they are many, each run that the leading digits leave together is
/// sorted on its own, again from its smallest key on. There is one record at least.
template <typename Record, typename KeyOf>
void DigitSort(Record *records, Record *scratch, std::size_t count, KeyOf keyOf) {
    assert(count > 0);
    auto const first = keyOf(records[0]);
    auto smallest = first;
    auto largest = first;
    std::remove_const_t<decltype(first)> varying = 0;
    for (std::size_t i = 1; i < count; ++i) {
        auto const key = keyOf(records[i]);
        smallest = std::min(smallest, key);
        largest = std::max(largest, key);
        varying |= key ^ first;
    }
    auto const offsetOf = [=](Record const &record) { return keyOf(record) - smallest; };
    bool const isLong = count >= kSmallestLongDigitSort;
    int const lowest = std::countr_zero(varying);
    int const end = static_cast<int>(std::bit_width(largest - smallest));
    int const leading = std::max(lowest, end - kLeadingDigits * (isLong ? kLongDigitBits : kShortDigitBits));
    if (isLong)
        SortByBits<kLongDigitBits>(records, scratch, count, offsetOf, leading, end);
    else
        SortByBits<kShortDigitBits>(records, scratch, count, offsetOf, leading, end);
    // The repair moves records within their runs only and keeps equal keys in their order.
    if (leading > lowest && !RepairByInsertion(records, count, keyOf))
        SortRuns(records, scratch, count, keyOf, [=](Record const &record) { return offsetOf(record) >> leading; });
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

} // namespace zvi::lib::core
