#include "zvi/core/MQSort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>
#include <tuple>
#include <vector>

namespace zvi::lib::test {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

template <typename Number>
std::vector<Number> Indices(std::size_t count) {
    std::vector<Number> indices(count);
    std::iota(indices.begin(), indices.end(), Number{0});
    return indices;
}

/// The order that a stable standard sort gives.
template <typename Number, typename Key>
std::vector<Number> StableOrder(std::vector<Key> const &keys) {
    std::vector<Number> order = Indices<Number>(keys.size());
    std::stable_sort(order.begin(), order.end(), [&](Number a, Number b) {
        return keys[static_cast<std::size_t>(a)] < keys[static_cast<std::size_t>(b)];
    });
    return order;
}

/// Keys of many kinds: spread over the whole range, crowded with ties, both zeros, a narrow band, and narrow bands in
/// narrow bands.
std::vector<double> RandomKeys(std::mt19937_64 &random, std::size_t count, int kind) {
    std::vector<double> keys(count);
    for (double &key : keys) {
        double const unit = std::uniform_real_distribution<double>(-1.0, 1.0)(random);
        double const special[] = {0.0, -0.0, kInfinity, -kInfinity, 5e-324, -5e-324, 1.0, -1.0};
        if (kind == 0)
            key = unit * std::pow(10.0, static_cast<double>(random() % 600) - 300.0);
        else if (kind == 1)
            key = std::floor(unit * 5.0);
        else if (kind == 2)
            key = special[random() % std::size(special)];
        else if (kind == 3)
            key = 1.0 + unit * 1e-15;
        else
            key = static_cast<double>(random() % 3) + (random() % 2 == 0 ? unit * 1e-9 : unit * 1e-14);
    }
    return keys;
}

} // namespace

TEST(MQSort, OrdersDoublesStablyAtEverySize) {
    std::mt19937_64 random(20);
    for (std::size_t const count :
         std::initializer_list<std::size_t>{1, 2, 15, 16, 17, 100, 127, 128, 129, 1000, 4095, 4096, 20000})
        for (int kind = 0; kind < 5; ++kind) {
            SCOPED_TRACE(testing::Message() << count << " of kind " << kind);
            std::vector<double> const keys = RandomKeys(random, count, kind);
            std::vector<double> sorted = keys, again = keys, values = keys;
            std::vector<int> index = Indices<int>(count);
            MQSort::QSortDblWithIndex(index.data(), sorted.data(), count);
            EXPECT_EQ(index, StableOrder<int>(keys));
            EXPECT_TRUE(std::is_sorted(sorted.begin(), sorted.end()));

            std::vector<unsigned int> place = Indices<unsigned int>(count);
            MQSort::QSortDblWithIndex(place.data(), again.data(), count);
            EXPECT_EQ(place, StableOrder<unsigned int>(keys));

            MQSort::QSortDbl(values.data(), count);
            EXPECT_EQ(values, sorted);
            EXPECT_TRUE(std::equal(values.begin(), values.end(), sorted.begin(),
                                   [](double a, double b) { return std::signbit(a) == std::signbit(b); }));
            for (int const reverse : {0, 1}) {
                std::vector<std::uint64_t> iterator = Indices<std::uint64_t>(count);
                values = keys;
                MQSort::QSortDblWithIterator(iterator.data(), values.data(), count, reverse);
                if (reverse != 0)
                    std::reverse(iterator.begin(), iterator.end());
                EXPECT_EQ(iterator, StableOrder<std::uint64_t>(keys));
            }
        }
}

TEST(MQSort, NotANumberLosesNoElement) {
    std::mt19937_64 random(21);
    for (std::size_t const count : std::initializer_list<std::size_t>{2, 40, 3000}) {
        std::vector<double> keys = RandomKeys(random, count, 0);
        for (std::size_t i = 0; i < count; i += 7)
            keys[i] = kNan;
        std::vector<int> index = Indices<int>(count);
        std::vector<double> sorted = keys;
        MQSort::QSortDblWithIndex(index.data(), sorted.data(), count);
        for (std::size_t i = 0; i < count; ++i) {
            double const key = keys[static_cast<std::size_t>(index[i])];
            EXPECT_TRUE(sorted[i] == key || (std::isnan(sorted[i]) && std::isnan(key)));
        }
        std::sort(index.begin(), index.end());
        EXPECT_EQ(index, Indices<int>(count));
    }
}

TEST(MQSort, OrdersWholeNumbers) {
    std::mt19937_64 random(22);
    for (std::size_t const count : std::initializer_list<std::size_t>{5, 300, 4000}) {
        std::vector<int> keys(count);
        for (int &key : keys)
            key = static_cast<int>(random() % 1000) - 500;
        std::vector<int> sorted = keys, values = keys;
        std::sort(sorted.begin(), sorted.end());
        MQSort::QSortInt(values.data(), count);
        EXPECT_EQ(values, sorted);

        std::vector<int> index = Indices<int>(count);
        values = keys;
        MQSort::QSortIntWithIndex(index.data(), values.data(), count);
        EXPECT_EQ(index, StableOrder<int>(keys));
        EXPECT_EQ(values, sorted);

        std::vector<long> longs(keys.begin(), keys.end());
        std::vector<std::uint64_t> iterator = Indices<std::uint64_t>(count);
        MQSort::QSortKeyWithIterator(iterator.data(), longs.data(), count);
        EXPECT_EQ(iterator, StableOrder<std::uint64_t>(keys));
        EXPECT_EQ(longs, std::vector<long>(sorted.begin(), sorted.end()));
    }
}

TEST(MQSort, LooksAtLowHalvesOnly) {
    std::int64_t const high = std::int64_t{1} << 32;
    std::vector<std::int64_t> values{high + 3, 2, -high + 3, 5 * high - 1, high + 2};
    MQSort::QSortInt64(values.data(), values.size());
    EXPECT_EQ(values, (std::vector<std::int64_t>{5 * high - 1, 2, high + 2, high + 3, -high + 3}));

    std::vector<std::uint64_t> iterator{1, 2, 3};
    long const one = static_cast<long>(high + 1); // on a host whose long is no wider than its low half, that alone
    std::vector<long> keys{7, one, 0};
    MQSort::QSortKeyWithIterator(iterator.data(), keys.data(), 3);
    EXPECT_EQ(iterator, (std::vector<std::uint64_t>{3, 2, 1}));
    EXPECT_EQ(keys[1], one) << "a key comes back whole";
}

TEST(MQSort, DifferencesWrapAround) {
    // INT_MAX - (-2) wraps to a negative number, so the larger key counts as the smaller one.
    std::vector<int> wrapped{-2, INT_MAX};
    MQSort::QSortInt(wrapped.data(), wrapped.size());
    EXPECT_EQ(wrapped, (std::vector<int>{INT_MAX, -2}));

    // Keys over the whole range have no proper order; none is lost, and the result is the same every time.
    std::mt19937 random(23);
    std::vector<int> keys(5000);
    for (int &key : keys)
        key = static_cast<int>(random());
    std::vector<int> first = keys, second = keys;
    MQSort::QSortInt(first.data(), first.size());
    MQSort::QSortInt(second.data(), second.size());
    EXPECT_EQ(first, second);
    EXPECT_TRUE(std::is_permutation(first.begin(), first.end(), keys.begin()));
}

TEST(MQSort, ComparisonsAnswerForRecords) {
    for (auto const &[a, b, order] :
         {std::tuple{1.0, 1.0, 0}, {0.0, -0.0, 0}, {1.0, 2.0, -1}, {2.0, 1.0, 1}, {kNan, 1.0, 1}, {1.0, kNan, 1}})
        EXPECT_EQ(MQSort::CompareDbl(&a, &b), order) << a << ' ' << b;
    // The difference of two infinities is not a number.
    for (auto const &[a, b, order] :
         {std::tuple{2.5, 2.5, 0}, {-1.0, 2.5, -1}, {kInfinity, 1.0, 1}, {kInfinity, kInfinity, 1}}) {
        MQSort::DblWithIterator const left{9, a}, right{1, b};
        EXPECT_EQ(MQSort::CompareDblWithIterator(&left, &right), order) << a << ' ' << b;
    }
    auto const wide = [](std::int64_t a, std::int64_t b) { return MQSort::CompareInt64(&a, &b); };
    EXPECT_EQ(wide(0x100000001, 1), 0);
    EXPECT_EQ(wide(0x700000002, 0x900000005), -3);

    MQSort::IntWithIndex const small{100, INT_MIN}, large{0, 1};
    EXPECT_EQ(MQSort::CompareIntWithIndex(&small, &large), INT_MAX);
    MQSort::KeyWithIterator const low{5, static_cast<long>(4294967299)}, high{4, 10};
    EXPECT_EQ(MQSort::CompareKeyWithIterator(&low, &high), -7);
}

TEST(MQSort, OrdersPackedKeysBeforeSerials) {
    auto const pack = [](unsigned int key, unsigned int serial) { return serial << 20 | key; };
    std::vector<unsigned int> const expected{pack(0, 0), pack(0, 4095), pack(1, 2),
                                             pack(1, 3), pack(77, 0),   pack(0xFFFFF, 1)};
    std::vector<unsigned int> values = expected;
    std::mt19937 random(24);
    for (int round = 0; round < 10; ++round) {
        std::shuffle(values.begin(), values.end(), random);
        MQSort::QSortKey20Serial12(values.data(), values.size());
        EXPECT_EQ(values, expected);
    }
    for (std::size_t i = 1; i < expected.size(); ++i)
        EXPECT_LT(MQSort::CompareKey20Serial12(&expected[i - 1], &expected[i]), 0);
    std::vector<unsigned int> many(3000);
    for (unsigned int &value : many)
        value = static_cast<unsigned int>(random());
    MQSort::QSortKey20Serial12(many.data(), many.size());
    EXPECT_TRUE(std::is_sorted(many.begin(), many.end(), [](unsigned int a, unsigned int b) {
        return MQSort::CompareKey20Serial12(&a, &b) < 0;
    }));
}

TEST(MQSort, SeparatesTrailingNumbers) {
    for (auto const &[text, front, zeroCount, value] : {std::tuple{L"Beam12", L"Beam", 0, 12},
                                                        {L"B007", L"B", 2, 7},
                                                        {L"B", L"B", 0, -1},
                                                        {L"123", L"", 0, 123},
                                                        {L"", L"", 0, -1},
                                                        {L"B000", L"B", 3, 0},
                                                        {L"B0100", L"B", 1, 100},
                                                        {L"A-3", L"A-", 0, 3},
                                                        {L"A1-B2 ", L"A1-B2 ", 0, -1},
                                                        {L"N2147483647", L"N", 0, INT_MAX},
                                                        {L"N99999999999999999999", L"N", 0, INT_MAX}}) {
        CString prefix(L"old");
        int zeros = 55, number = 55;
        MQSort::SeparateStringNum(text, prefix, zeros, number);
        EXPECT_EQ(prefix, front) << text;
        EXPECT_EQ(zeros, zeroCount) << text;
        EXPECT_EQ(number, value) << text;
    }
    CString text(L"Node5");
    int zeros = 0, number = 0;
    MQSort::SeparateStringNum(text, text, zeros, number);
    EXPECT_EQ(text, L"Node") << "the text may receive its own prefix";
}

TEST(MQSort, OrdersNamesNaturally) {
    std::vector<wchar_t const *> const ordered{L"A",   L"A0",           L"A2", L"A7", L"A007",
                                               L"A10", L"A99999999999", L"AB", L"a1"};
    std::vector<unsigned int> shuffle = Indices<unsigned int>(ordered.size());
    std::mt19937 random(25);
    for (int round = 0; round < 10; ++round) {
        std::shuffle(shuffle.begin(), shuffle.end(), random);
        std::vector<CString> names;
        for (unsigned int const place : shuffle)
            names.emplace_back(ordered[place]);
        std::vector<unsigned int> index = shuffle;
        MQSort::QSortStringNumWithIndex(index.data(), names.data(), names.size());
        EXPECT_EQ(index, Indices<unsigned int>(ordered.size()));
        EXPECT_EQ(names, std::vector<CString>(ordered.begin(), ordered.end()));
    }
    // "A2147483647" and "A99999999999" have the same parts: a tie, which keeps its order and its texts.
    std::vector<CString> ties{L"A99999999999", L"A2147483647", L"A88888888888"};
    std::vector<CString> const before = ties;
    std::vector<unsigned int> index{1, 2, 3};
    MQSort::QSortStringNumWithIndex(index.data(), ties.data(), 3);
    EXPECT_EQ(ties, before);
    EXPECT_EQ(index, (std::vector<unsigned int>{1, 2, 3}));
}

TEST(MQSort, OrdersManyNamesByPrefixNumberAndZeros) {
    std::mt19937 random(27);
    std::vector<CString> names(500);
    std::vector<std::tuple<CString, int, int>> parts;
    for (CString &name : names) {
        auto const pick = [&](unsigned count) { return static_cast<int>(random() % count); };
        name.Format(L"%c%0*d", L'A' + pick(3), 1 + pick(3), pick(40));
        auto &[prefix, number, zeros] = parts.emplace_back();
        MQSort::SeparateStringNum(name, prefix, zeros, number);
    }
    std::vector<unsigned int> index = Indices<unsigned int>(names.size());
    MQSort::QSortStringNumWithIndex(index.data(), names.data(), names.size());
    EXPECT_EQ(index, StableOrder<unsigned int>(parts));
}

TEST(MQSort, OrdersStringsByUnit) {
    std::vector<CString> names;
    std::mt19937 random(26);
    for (int i = 0; i < 200; ++i)
        names.emplace_back(static_cast<wchar_t>(L'a' + random() % 5), static_cast<int>(1 + random() % 4));
    std::vector<CString> plain = names, sorted = names;
    std::vector<unsigned int> index = Indices<unsigned int>(names.size());
    MQSort::QSortString(plain.data(), plain.size());
    MQSort::QSortStringWithIndex(index.data(), sorted.data(), sorted.size());
    EXPECT_TRUE(std::is_sorted(plain.begin(), plain.end()));
    EXPECT_EQ(plain, sorted);
    EXPECT_EQ(index, StableOrder<unsigned int>(names));
    MQSort::QSortStringWithIndex(nullptr, nullptr, 0);
}

} // namespace zvi::lib::test
