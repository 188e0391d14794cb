#include "zvi/core/MQSort.h"

#include "zvi/core/StableSortDetail.h"
#include "zvi/core/WideNumber.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <memory>
#include <type_traits>
#include <utility>

namespace zvi::lib {

namespace {

// ---- the comparisons, on values ----

/// left - right with the wrap-around of 32-bit arithmetic.
int Difference(int left, int right) {
    return static_cast<int>(static_cast<unsigned int>(left) - static_cast<unsigned int>(right));
}

int First32Bits(void const *record) {
    std::int32_t bits = 0;
    std::memcpy(&bits, record, sizeof bits);
    return bits;
}

int DblOrder(double left, double right) {
    if (left == right)
        return 0;
    return left < right ? -1 : 1;
}

int DblDifferenceOrder(double left, double right) {
    double const difference = left - right;
    if (difference == 0.0)
        return 0;
    return difference < 0.0 ? -1 : 1;
}

/// The 20-bit key and the 12-bit serial number that one value packs.
constexpr unsigned int kKeyBits = 20;
constexpr unsigned int kSerialBits = 12;
constexpr unsigned int kKeyMask = (1U << kKeyBits) - 1;

/// The value with its key in front of its serial number; its order is the order of the comparison.
std::uint32_t KeyThenSerial(unsigned int value) {
    return (value & kKeyMask) << kSerialBits | value >> kKeyBits;
}

int Key20Serial12Order(unsigned int left, unsigned int right) {
    int const byKey = static_cast<int>(left & kKeyMask) - static_cast<int>(right & kKeyMask);
    return byKey != 0 ? byKey : static_cast<int>(left >> kKeyBits) - static_cast<int>(right >> kKeyBits);
}

int StringNumOrder(MQSort::StringNumWithIndex const &left, MQSort::StringNumWithIndex const &right) {
    if (int const byPrefix = left.prefix.Compare(right.prefix))
        return byPrefix;
    if (int const byNumber = Difference(left.number, right.number))
        return byNumber;
    return Difference(left.zeros, right.zeros);
}

// ---- orders: a comparison and, where there is one, the unsigned key of the same order ----

/// Differences order a set of keys properly when none of them wraps.
template <typename Record, typename Value>
bool DifferencesFit(Record const *records, std::size_t count, Value valueOf) {
    std::int64_t smallest = valueOf(records[0]);
    std::int64_t largest = smallest;
    for (std::size_t i = 1; i < count; ++i) {
        smallest = std::min<std::int64_t>(smallest, valueOf(records[i]));
        largest = std::max<std::int64_t>(largest, valueOf(records[i]));
    }
    return largest - smallest <= std::numeric_limits<std::int32_t>::max();
}

/// By the difference of the `int` that `ValueOf` reads.
template <typename Record, int (*ValueOf)(Record const &)>
struct IntOrder {
    static int Compare(Record const &left, Record const &right) { return Difference(ValueOf(left), ValueOf(right)); }
    static bool HasKeys(Record const *records, std::size_t count) { return DifferencesFit(records, count, ValueOf); }
    static std::uint32_t KeyOf(Record const &record) {
        return static_cast<std::uint32_t>(ValueOf(record)) ^ 0x80000000U;
    }
};

/// By the `double` that `ValueOf` reads and the comparison `CompareValues`.
template <typename Record, double (*ValueOf)(Record const &), int (*CompareValues)(double, double)>
struct DoubleOrder {
    static int Compare(Record const &left, Record const &right) { return CompareValues(ValueOf(left), ValueOf(right)); }
    static bool HasKeys(Record const *records, std::size_t count) {
        return std::none_of(records, records + count, [](Record const &record) {
            double const value = ValueOf(record);
            return value != value;
        });
    }
    /// The bits of a number read as a whole number are in order but for the sign; adding 0.0 makes one zero of two.
    static std::uint64_t KeyOf(Record const &record) {
        constexpr std::uint64_t kSignBit = std::uint64_t{1} << 63;
        auto const bits = std::bit_cast<std::uint64_t>(ValueOf(record) + 0.0);
        return (bits & kSignBit) != 0 ? ~bits : bits | kSignBit;
    }
};

int ValueOfInt(int const &value) {
    return value;
}

int LowHalfOf(std::int64_t const &value) {
    return First32Bits(&value);
}

double ValueOfDbl(double const &value) {
    return value;
}

template <typename Record>
auto KeyFieldOf(Record const &record) {
    return record.key;
}

int Key32Of(MQSort::KeyWithIterator const &record) {
    return static_cast<std::int32_t>(record.key);
}

struct Key20Serial12 {
    static int Compare(unsigned int left, unsigned int right) { return Key20Serial12Order(left, right); }
    static bool HasKeys(unsigned int const *, std::size_t) { return true; }
    static std::uint32_t KeyOf(unsigned int value) { return KeyThenSerial(value); }
};

struct StringOrder {
    static int Compare(CString const &left, CString const &right) { return left.Compare(right); }
};

struct StringWithIndexOrder {
    static int Compare(MQSort::StringWithIndex const &left, MQSort::StringWithIndex const &right) {
        return left.key.Compare(right.key);
    }
};

/// A name with its parts. The whole text is kept aside, because its parts do not always give it back.
struct NumberedName {
    MQSort::StringNumWithIndex parts;
    CString text;
};

struct NumberedNameOrder {
    static int Compare(NumberedName const &left, NumberedName const &right) {
        return StringNumOrder(left.parts, right.parts);
    }
};

// ---- sorts of parallel arrays ----

/// Makes a record of each pair, sorts the records, and writes them back; `reverse` writes from the end.
template <typename Record, typename Order, typename Companion, typename Key>
void SortPairs(Companion *companions, Key *keys, std::uint64_t count, bool reverse = false) {
    if (count == 0)
        return;
    auto const records = std::make_unique_for_overwrite<Record[]>(count);
    for (std::uint64_t i = 0; i < count; ++i) {
        auto &[companion, key] = records[i];
        companion = static_cast<std::remove_reference_t<decltype(companion)>>(companions[i]);
        key = keys[i];
    }
    core::StableSort<Order>(records.get(), count);
    for (std::uint64_t i = 0; i < count; ++i) {
        auto &[companion, key] = records[reverse ? count - 1 - i : i];
        companions[i] = static_cast<Companion>(companion);
        keys[i] = std::move(key);
    }
}

template <typename Order, typename Value>
void SortValues(Value *values, std::uint64_t count) {
    if (count != 0)
        core::StableSort<Order>(values, count);
}

/// The records of a comparison that was given bare addresses.
template <typename Record>
Record const &At(void const *address) {
    return *static_cast<Record const *>(address);
}

using IntWithIndexOrder = IntOrder<MQSort::IntWithIndex, KeyFieldOf<MQSort::IntWithIndex>>;
using DblWithIndexOrder = DoubleOrder<MQSort::DblWithIndex, KeyFieldOf<MQSort::DblWithIndex>, DblOrder>;
using KeyWithIteratorOrder = IntOrder<MQSort::KeyWithIterator, Key32Of>;
using DblWithIteratorOrder =
    DoubleOrder<MQSort::DblWithIterator, KeyFieldOf<MQSort::DblWithIterator>, DblDifferenceOrder>;

} // namespace

MQSort::~MQSort() = default;

void MQSort::QSortInt(int *values, std::uint64_t count) {
    SortValues<IntOrder<int, ValueOfInt>>(values, count);
}

void MQSort::QSortInt64(std::int64_t *values, std::uint64_t count) {
    SortValues<IntOrder<std::int64_t, LowHalfOf>>(values, count);
}

void MQSort::QSortDbl(double *values, std::uint64_t count) {
    SortValues<DoubleOrder<double, ValueOfDbl, DblOrder>>(values, count);
}

void MQSort::QSortIntWithIndex(int *index, int *key, std::uint64_t count) {
    SortPairs<IntWithIndex, IntWithIndexOrder>(index, key, count);
}

void MQSort::QSortDblWithIndex(int *index, double *key, std::uint64_t count) {
    SortPairs<DblWithIndex, DblWithIndexOrder>(index, key, count);
}

void MQSort::QSortDblWithIndex(unsigned int *index, double *key, std::uint64_t count) {
    SortPairs<DblWithIndex, DblWithIndexOrder>(index, key, count);
}

void MQSort::QSortKeyWithIterator(std::uint64_t *iterator, long *key, std::uint64_t count) {
    SortPairs<KeyWithIterator, KeyWithIteratorOrder>(iterator, key, count);
}

void MQSort::QSortDblWithIterator(std::uint64_t *iterator, double *key, std::uint64_t count, int reverse) {
    SortPairs<DblWithIterator, DblWithIteratorOrder>(iterator, key, count, reverse != 0);
}

void MQSort::QSortString(CString *values, std::uint64_t count) {
    SortValues<StringOrder>(values, count);
}

void MQSort::QSortStringWithIndex(unsigned int *index, CString *key, std::uint64_t count) {
    SortPairs<StringWithIndex, StringWithIndexOrder>(index, key, count);
}

void MQSort::QSortStringNumWithIndex(unsigned int *index, CString *key, std::uint64_t count) {
    if (count == 0)
        return;
    auto const names = std::make_unique<NumberedName[]>(count);
    for (std::uint64_t i = 0; i < count; ++i) {
        StringNumWithIndex &parts = names[i].parts;
        parts.index = index[i];
        SeparateStringNum(key[i], parts.prefix, parts.zeros, parts.number);
        names[i].text = key[i];
    }
    core::StableSort<NumberedNameOrder>(names.get(), count);
    for (std::uint64_t i = 0; i < count; ++i) {
        index[i] = names[i].parts.index;
        key[i] = std::move(names[i].text);
    }
}

void MQSort::QSortKey20Serial12(unsigned int *values, std::uint64_t count) {
    SortValues<Key20Serial12>(values, count);
}

int MQSort::CompareInt(void const *left, void const *right) {
    return Difference(First32Bits(left), First32Bits(right));
}

int MQSort::CompareInt64(void const *left, void const *right) {
    return CompareInt(left, right);
}

int MQSort::CompareDbl(void const *left, void const *right) {
    return DblOrder(At<double>(left), At<double>(right));
}

int MQSort::CompareIntWithIndex(void const *left, void const *right) {
    return IntWithIndexOrder::Compare(At<IntWithIndex>(left), At<IntWithIndex>(right));
}

int MQSort::CompareDblWithIndex(void const *left, void const *right) {
    return DblWithIndexOrder::Compare(At<DblWithIndex>(left), At<DblWithIndex>(right));
}

int MQSort::CompareKeyWithIterator(void const *left, void const *right) {
    return KeyWithIteratorOrder::Compare(At<KeyWithIterator>(left), At<KeyWithIterator>(right));
}

int MQSort::CompareDblWithIterator(void const *left, void const *right) {
    return DblWithIteratorOrder::Compare(At<DblWithIterator>(left), At<DblWithIterator>(right));
}

int MQSort::CompareStringWithIndex(void const *left, void const *right) {
    return StringWithIndexOrder::Compare(At<StringWithIndex>(left), At<StringWithIndex>(right));
}

int MQSort::CompareStringNumWithIndex(void const *left, void const *right) {
    return StringNumOrder(At<StringNumWithIndex>(left), At<StringNumWithIndex>(right));
}

int MQSort::CompareKey20Serial12(void const *left, void const *right) {
    return Key20Serial12Order(At<unsigned int>(left), At<unsigned int>(right));
}

void MQSort::SeparateStringNum(CString const &text, CString &prefix, int &zeros, int &number) {
    CString const whole = text; // NOLINT(performance-unnecessary-copy-initialization): `prefix` may be `text`
    zeros = 0;
    number = 0;
    int tail = whole.GetLength();
    for (; tail > 0; --tail) {
        wchar_t const character = whole[tail - 1];
        if (character < L'0' || character > L'9')
            break;
        zeros = character == L'0' ? zeros + 1 : 0;
    }
    prefix = whole.Left(tail);
    number = tail == whole.GetLength() ? -1 : WideToInt(whole.GetString() + tail);
}

} // namespace zvi::lib
