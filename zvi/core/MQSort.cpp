#include "zvi/core/MQSort.h"

#include "zvi/base/KeySort.h"
#include "zvi/core/StableSortDetail.h"
#include "zvi/core/WideNumber.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <limits>
#include <memory>
#include <numeric>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

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

/// Differences order a set of keys, one at least, properly when none of them wraps.
template <typename Record, typename Value>
bool DifferencesFit(Record const *records, std::size_t count, Value valueOf) {
    assert(count > 0);
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
    static std::uint64_t KeyOf(Record const &record) { return base::OrderedBits(ValueOf(record)); }
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

/// The trailing number of a name: where it begins, its leading zeros and its value; see `SeparateStringNum`.
struct TrailingNumber {
    int begin;
    int zeros = 0;
    int value = -1;

    explicit TrailingNumber(CString const &name) : begin(name.GetLength()) {
        wchar_t const *const units = name.GetString();
        for (; begin > 0; --begin) {
            wchar_t const character = units[begin - 1];
            if (character < L'0' || character > L'9')
                break;
            zeros = character == L'0' ? zeros + 1 : 0;
        }
        if (begin < name.GetLength())
            value = WideToInt(units + begin);
    }
};

/// A name on its way: what it is sorted by, and where it stood.
struct NumberedName {
    std::uint64_t prefixAndNumber; ///< the rank of its prefix in front of its number
    std::uint64_t place;
    std::uint32_t zeros;
};

/// By an unsigned field.
template <auto field>
struct FieldOrder {
    static int Compare(NumberedName const &left, NumberedName const &right) {
        return (left.*field > right.*field) - (left.*field < right.*field);
    }
    static bool HasKeys(NumberedName const *, std::size_t) { return true; }
    static auto KeyOf(NumberedName const &name) { return name.*field; }
};

/// Numbers the prefixes of names in their order by code unit.
class PrefixRanks {
public:
    /// A number for the prefix, the same for the same one; `Ranks` turns it into a rank. The text must last.
    std::uint32_t Add(std::wstring_view prefix) {
        if (m_prefixes.empty() || prefix != m_prefixes[m_last]) {
            auto const [entry, isNew] = m_numbers.try_emplace(prefix, static_cast<std::uint32_t>(m_prefixes.size()));
            if (isNew)
                m_prefixes.push_back(prefix);
            m_last = entry->second;
        }
        return m_last;
    }

    /// For each number the rank of its prefix.
    std::vector<std::uint32_t> Ranks() const {
        std::vector<std::uint32_t> order(m_prefixes.size());
        std::iota(order.begin(), order.end(), 0U);
        std::sort(order.begin(), order.end(),
                  [this](std::uint32_t left, std::uint32_t right) { return m_prefixes[left] < m_prefixes[right]; });
        std::vector<std::uint32_t> ranks(order.size());
        for (std::uint32_t rank = 0; rank < order.size(); ++rank)
            ranks[order[rank]] = rank;
        return ranks;
    }

private:
    std::unordered_map<std::wstring_view, std::uint32_t> m_numbers;
    std::vector<std::wstring_view> m_prefixes;
    std::uint32_t m_last = 0; ///< the number given last
};

/// Brings what stood at the place of each name to where the name is now, cycle by cycle. Leaves the places undefined.
void MoveToNames(NumberedName *names, std::uint64_t count, unsigned int *index, CString *key) {
    for (std::uint64_t start = 0; start < count; ++start) {
        if (names[start].place == start)
            continue;
        CString firstKey = std::move(key[start]);
        unsigned int const firstIndex = index[start];
        std::uint64_t to = start;
        for (std::uint64_t from = names[to].place; from != start; from = names[to].place) {
            key[to] = std::move(key[from]);
            index[to] = index[from];
            names[to].place = to;
            to = from;
        }
        key[to] = std::move(firstKey);
        index[to] = firstIndex;
        names[to].place = to;
    }
}

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
    auto const names = std::make_unique_for_overwrite<NumberedName[]>(count);
    PrefixRanks prefixes;
    for (std::uint64_t i = 0; i < count; ++i) {
        TrailingNumber const number(key[i]);
        std::wstring_view const prefix(key[i].GetString(), static_cast<std::size_t>(number.begin));
        // A name without a number has -1, which comes first.
        names[i] = {std::uint64_t{prefixes.Add(prefix)} << 32 | static_cast<std::uint32_t>(number.value + 1LL), i,
                    static_cast<std::uint32_t>(number.zeros)};
    }
    std::vector<std::uint32_t> const ranks = prefixes.Ranks();
    for (std::uint64_t i = 0; i < count; ++i) {
        std::uint64_t &field = names[i].prefixAndNumber;
        field = std::uint64_t{ranks[field >> 32]} << 32 | static_cast<std::uint32_t>(field);
    }
    // The last criterion first: the sorts are stable.
    core::StableSort<FieldOrder<&NumberedName::zeros>>(names.get(), count);
    core::StableSort<FieldOrder<&NumberedName::prefixAndNumber>>(names.get(), count);
    MoveToNames(names.get(), count, index, key);
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
    TrailingNumber const tail(text);
    zeros = tail.zeros;
    number = tail.value;
    prefix = text.Left(tail.begin);
}

} // namespace zvi::lib
