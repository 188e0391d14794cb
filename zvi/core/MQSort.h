#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"

#include <cstdint>

namespace zvi::lib {

/// Sorts of plain and of parallel arrays, and the comparisons behind them.
///
/// Every sort is stable: elements that compare as equal keep the order in which they came, on every host. A sort of two
/// arrays orders both by the key. A count of 0 does nothing, whatever the pointers. When memory cannot be had,
/// `std::bad_alloc` is raised and the arrays are as they were.
///
/// The comparisons by difference wrap around in 32 bits, deliberately: keys further apart than 2^31 sort wrongly,
/// though always in the same way. A not-a-number key compares as greater in both directions; where it ends up is not
/// defined beyond being the same for the same input.
class ZVI_API MQSort {
public:
    /// A whole key with its index. The records are public so that a caller can hand the comparisons to `qsort` itself.
    struct IntWithIndex {
        int index; ///< goes along
        int key;   ///< is compared
    };
    /// A key with its index.
    struct DblWithIndex {
        int index;  ///< goes along
        double key; ///< is compared
    };
    /// A whole key with its iterator.
    struct KeyWithIterator {
        std::uint64_t iterator; ///< goes along
        long key;               ///< is compared by its low 32 bits
    };
    /// A key with its iterator.
    struct DblWithIterator {
        std::uint64_t iterator; ///< goes along
        double key;             ///< is compared
    };
    /// A text with its index.
    struct StringWithIndex {
        unsigned int index; ///< goes along
        CString key;        ///< is compared
    };
    /// A name with its index, cut by `SeparateStringNum`.
    struct StringNumWithIndex {
        unsigned int index; ///< goes along
        CString prefix;     ///< is compared first
        int zeros;          ///< is compared last
        int number;         ///< is compared second
    };

    /// For clients that derive from it; there is nothing to free.
    virtual ~MQSort();

    /// Ascending.
    static void QSortInt(int *values, std::uint64_t count);
    /// Orders by the low 32 bits alone; values that differ only in the high half are equal. Deliberate.
    static void QSortInt64(std::int64_t *values, std::uint64_t count);
    /// Ascending.
    static void QSortDbl(double *values, std::uint64_t count);
    /// Ascending by key.
    static void QSortIntWithIndex(int *index, int *key, std::uint64_t count);
    /// Ascending by key.
    static void QSortDblWithIndex(int *index, double *key, std::uint64_t count);
    /// Ascending by key.
    static void QSortDblWithIndex(unsigned int *index, double *key, std::uint64_t count);
    /// Ascending by the low 32 bits of the keys, which come back whole.
    static void QSortKeyWithIterator(std::uint64_t *iterator, long *key, std::uint64_t count);
    /// A non-zero `reverse` writes the ascending result back in reverse order, equal keys included.
    static void QSortDblWithIterator(std::uint64_t *iterator, double *key, std::uint64_t count, int reverse);
    /// By code unit, case-sensitive.
    static void QSortString(CString *values, std::uint64_t count);
    /// By code unit of the key, case-sensitive.
    static void QSortStringWithIndex(unsigned int *index, CString *key, std::uint64_t count);
    /// Natural order of names that end in numbers: "A2" before "A10", "A7" before "A007", "A" before "A0".
    static void QSortStringNumWithIndex(unsigned int *index, CString *key, std::uint64_t count);
    /// By the low 20 bits (the key), then by the high 12 (the serial number).
    static void QSortKey20Serial12(unsigned int *values, std::uint64_t count);

    // Each comparison takes the addresses of two records (or plain values) and gives a negative number, 0 or a positive
    // number.

    /// The difference of the first 32 bits, with wrap-around.
    static int CompareInt(void const *left, void const *right);
    /// One operation with `CompareInt`, deliberately.
    static int CompareInt64(void const *left, void const *right);
    /// 0 if equal, -1 if the first is smaller, else 1, also for a not-a-number value.
    static int CompareDbl(void const *left, void const *right);
    /// The difference of the keys of two `IntWithIndex`, with wrap-around.
    static int CompareIntWithIndex(void const *left, void const *right);
    /// As `CompareDbl`, on the keys of two `DblWithIndex`.
    static int CompareDblWithIndex(void const *left, void const *right);
    /// The difference of the keys of two `KeyWithIterator`, cut to 32 bits.
    static int CompareKeyWithIterator(void const *left, void const *right);
    /// The sign of the difference of the keys of two `DblWithIterator`; 1 for two equal infinities, whose difference is
    /// not a number.
    static int CompareDblWithIterator(void const *left, void const *right);
    /// The keys of two `StringWithIndex`, by code unit.
    static int CompareStringWithIndex(void const *left, void const *right);
    /// Two `StringNumWithIndex` by prefix, by number, by the count of leading zeros.
    static int CompareStringNumWithIndex(void const *left, void const *right);
    /// Two packed values by the low 20 bits, then by the high 12.
    static int CompareKey20Serial12(void const *left, void const *right);

    /// Splits a name into its prefix and its trailing number. `zeros` is the count of zeros in front of the first other
    /// digit of the number (all of them, if there is no other); `number` is -1 when the name ends in no digit, and the
    /// largest `int` when the digits pass it.
    static void SeparateStringNum(CString const &text, CString &prefix, int &zeros, int &number);
};

} // namespace zvi::lib
