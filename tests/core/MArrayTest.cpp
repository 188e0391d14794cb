#include "zvi/core/MArray.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

using zvi::MArray;

namespace {

/// Owns memory, and can be told to fail when it is copied.
struct Fragile {
    std::string text;
    bool failsOnCopy = false;

    Fragile() = default;
    explicit Fragile(std::string value) : text(std::move(value)) {}
    Fragile(Fragile const &other) : text(other.text), failsOnCopy(other.failsOnCopy) {
        if (failsOnCopy)
            throw std::runtime_error("copy");
    }
    Fragile &operator=(Fragile const &other) = default;
};

/// Cannot be made without a value.
struct NeverEmpty {
    std::string text;

    NeverEmpty() { throw std::runtime_error("make"); }
};

/// Writes its number down when it is destroyed.
struct Witness {
    std::vector<int> *log;
    int number;

    Witness(std::vector<int> *witnessLog, int witnessNumber) : log(witnessLog), number(witnessNumber) {}
    Witness(Witness &&other) noexcept : log(std::exchange(other.log, nullptr)), number(other.number) {}
    Witness(Witness const &) = delete;
    Witness &operator=(Witness const &) = delete;
    Witness &operator=(Witness &&) = delete;
    ~Witness() {
        if (log != nullptr)
            log->push_back(number);
    }
};

/// A record like those of the geometry: plain numbers beside arrays of its own.
struct Ring {
    MArray<int> vertices;
    int turns = 7;
};

std::string LongText(int number) {
    return "a text that does not fit into the object itself: " + std::to_string(number);
}

template <typename Raise>
std::string TextOf(Raise raise) {
    try {
        raise();
    } catch (std::length_error const &error) {
        return std::string("length: ") + error.what();
    } catch (std::out_of_range const &error) {
        return std::string("range: ") + error.what();
    } catch (std::bad_alloc const &) {
        return "memory";
    }
    return "nothing";
}

} // namespace

TEST(MArray, IsThreePointersAndAllocatesNothingEmpty) {
    EXPECT_EQ(sizeof(MArray<double>), 3 * sizeof(void *));
    MArray<double> const none;
    MArray<double> const zero(0);
    for (auto const *array : {&none, &zero}) {
        EXPECT_EQ(array->Data(), nullptr);
        EXPECT_EQ(array->Capacity(), 0U);
        EXPECT_EQ(array->begin(), array->end());
    }
}

TEST(MArray, GrowsByAHalf) {
    std::vector<std::size_t> const expected{1, 2, 3, 4, 6, 9, 13, 19, 28, 42, 63, 94, 141};
    std::vector<std::size_t> plain;
    std::vector<std::size_t> owning;
    MArray<int> numbers;
    MArray<std::string> texts;
    for (int i = 0; i < 141; ++i) {
        numbers.PushBack(i);
        texts.PushBack(LongText(i));
        if (plain.empty() || plain.back() != numbers.Capacity())
            plain.push_back(numbers.Capacity());
        if (owning.empty() || owning.back() != texts.Capacity())
            owning.push_back(texts.Capacity());
    }
    EXPECT_EQ(plain, expected);
    EXPECT_EQ(owning, expected);
    EXPECT_EQ(texts[140], LongText(140));
}

TEST(MArray, ReserveAndResizeFollowTheGrowthRule) {
    struct Case {
        std::size_t size;
        std::size_t more;
        std::size_t capacity;
    };
    for (Case const &c : {Case{10, 0, 10}, Case{10, 1, 15}, Case{10, 5, 15}, Case{10, 6, 16}, Case{1, 1, 2}}) {
        MArray<double> reserved(c.size);
        reserved.Reserve(c.more);
        EXPECT_EQ(reserved.Capacity(), c.capacity);
        EXPECT_EQ(reserved.Size(), c.size);
        MArray<double> resized(c.size);
        resized.Resize(c.size + c.more);
        EXPECT_EQ(resized.Capacity(), c.capacity);
    }
}

TEST(MArray, ResizeFillsWithZeroBytesAndKeepsTheBlock) {
    MArray<Ring> rings(3);
    EXPECT_EQ(rings.Capacity(), 3U);
    EXPECT_TRUE(rings[2].vertices.Empty());

    MArray<int> numbers{1, 2, 3, 4, 5, 6};
    numbers.Resize(2);
    numbers.Resize(6);
    EXPECT_EQ(numbers, (MArray<int>{1, 2, 0, 0, 0, 0}));
    numbers.Resize(0);
    int const *const block = numbers.Data();
    EXPECT_EQ(numbers.Capacity(), 6U);
    numbers.PushBack(9);
    EXPECT_EQ(numbers.Data(), block);
    numbers.Clear();
    EXPECT_EQ(numbers.Capacity(), 6U);
}

TEST(MArray, AppendsItsOwnElements) {
    MArray<int> numbers;
    MArray<std::string> texts;
    numbers.PushBack(1);
    texts.PushBack(LongText(0));
    for (int i = 0; i < 200; ++i) {
        numbers.PushBack(numbers[numbers.Size() / 2]);
        texts.PushBack(texts[texts.Size() / 2]);
    }
    EXPECT_TRUE(std::all_of(numbers.begin(), numbers.end(), [](int n) { return n == 1; }));
    EXPECT_TRUE(std::all_of(texts.begin(), texts.end(), [](auto const &text) { return text == LongText(0); }));

    MArray<std::unique_ptr<int>> owners;
    owners.PushBack(std::make_unique<int>(5));
    owners.PushBack(std::move(owners[0]));
    EXPECT_EQ(owners[0], nullptr);
    EXPECT_EQ(*owners[1], 5);
}

TEST(MArray, AssignmentReusesTheBlockWhenItFits) {
    struct Case {
        std::size_t targetSize;
        std::size_t targetRoom;
        std::size_t sourceSize;
        std::size_t capacity;
        bool sameBlock;
    };
    Case const cases[] = {
        {4, 0, 0, 4, true}, // an empty source keeps the block
        {4, 0, 3, 4, true}, // over the elements
        {2, 4, 5, 6, true}, // into the unused part
        {4, 0, 5, 5, false}, {8, 0, 9, 9, false}, {0, 0, 3, 3, false},
    };
    for (Case const &c : cases) {
        MArray<std::string> target(c.targetSize);
        target.Reserve(c.targetRoom);
        std::string const *const block = target.Data();
        MArray<std::string> source;
        source.Reserve(50);
        for (std::size_t i = 0; i < c.sourceSize; ++i)
            source.PushBack(LongText(static_cast<int>(i)));
        target = source;
        EXPECT_EQ(target, source);
        EXPECT_EQ(target.Capacity(), c.capacity) << c.sourceSize;
        EXPECT_EQ(target.Data() == block, c.sameBlock) << c.sourceSize;
        EXPECT_EQ(MArray<std::string>(source).Capacity(), c.sourceSize);
    }
    MArray<int> same{1, 2};
    MArray<int> const &alias = same;
    same = alias;
    EXPECT_EQ(same, (MArray<int>{1, 2}));
}

TEST(MArray, RaisesItsErrorsAndStaysAsItWas) {
    EXPECT_EQ(MArray<int>::MaxCount(), 0x3FFFFFFFFFFFFFFFU);
    EXPECT_EQ(MArray<double>::MaxCount(), 0x1FFFFFFFFFFFFFFFU);
    EXPECT_EQ((MArray<int[3]>::MaxCount()), 0x1555555555555555U);
    EXPECT_EQ((MArray<double[3]>::MaxCount()), 0x0AAAAAAAAAAAAAAAU);

    MArray<int> array{1, 2, 3};
    std::size_t const most = MArray<int>::MaxCount();
    EXPECT_EQ(TextOf([&] { array.Reserve(most - 2); }), "length: vector<T> too long");
    EXPECT_EQ(TextOf([&] { array.Resize(most + 1); }), "length: vector<T> too long");
    EXPECT_EQ(TextOf([&] { MArray<int> huge(most + 1); }), "length: vector<T> too long");
    EXPECT_EQ(TextOf([&] { array.Reserve(most - 3); }), "memory");
    EXPECT_EQ(TextOf([&] { array.At(3); }), "range: invalid vector<T> subscript");
    EXPECT_EQ(TextOf([&] { array.RemoveAt(3); }), "range: invalid vector<T> subscript");
    EXPECT_EQ(array, (MArray<int>{1, 2, 3}));
    EXPECT_EQ(array.Capacity(), 3U);

    MArray<Fragile> fragile;
    for (int i = 0; i < 4; ++i)
        fragile.PushBack(Fragile(LongText(i)));
    fragile[2].failsOnCopy = true;
    EXPECT_THROW(fragile.Reserve(100), std::runtime_error);
    EXPECT_THROW(MArray<Fragile> copy(fragile), std::runtime_error);
    EXPECT_EQ(fragile.Size(), 4U);
    EXPECT_EQ(fragile[3].text, LongText(3));
    // An array that cannot be filled gives its block back, as the leak check of the address sanitizer tells.
    EXPECT_THROW(MArray<NeverEmpty> none(100), std::runtime_error);
}

TEST(MArray, DestroysInAscendingOrder) {
    std::vector<int> log;
    {
        MArray<Witness> witnesses;
        for (int i = 0; i < 5; ++i)
            witnesses.PushBack(Witness(&log, i));
    }
    EXPECT_EQ(log, (std::vector<int>{0, 1, 2, 3, 4}));
}

TEST(MArray, MovesTakeTheBlock) {
    MArray<Ring> rings;
    rings.PushBack(Ring{{1, 2, 3}, 1});
    Ring const *const block = rings.Data();
    MArray<Ring> taken(std::move(rings));
    EXPECT_EQ(taken.Data(), block);
    MArray<Ring> assigned(5);
    assigned = std::move(taken);
    EXPECT_EQ(assigned.Data(), block);
    EXPECT_EQ(assigned[0].vertices, (MArray<int>{1, 2, 3}));
}

namespace {

/// The same random operations on an array and on a standard vector.
template <typename T, typename MakeValue>
void CompareWithVector(unsigned int seed, MakeValue makeValue) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    MArray<T> array;
    std::vector<T> oracle;
    for (int step = 0; step < 3000; ++step) {
        std::size_t const at = oracle.empty() ? 0 : random() % oracle.size();
        switch (random() % 12) {
        case 0:
            array.Resize(at);
            oracle.resize(at);
            break;
        case 1:
            array.Resize(oracle.size() + at / 2);
            oracle.resize(oracle.size() + at / 2);
            break;
        case 2: {
            MArray<T> const copy(array);
            array.Clear();
            array = copy;
            break;
        }
        case 3:
        case 4:
            if (!oracle.empty()) {
                array.RemoveAt(at);
                oracle.erase(oracle.begin() + static_cast<std::ptrdiff_t>(at));
            }
            break;
        case 5:
            if (!oracle.empty()) {
                array.PushBack(array[at]);
                oracle.push_back(T(oracle[at]));
            }
            break;
        default:
            oracle.push_back(makeValue(random));
            array.PushBack(oracle.back());
        }
        ASSERT_TRUE(std::equal(array.begin(), array.end(), oracle.begin(), oracle.end())) << step;
    }
}

} // namespace

TEST(MArray, AgreesWithAVectorUnderRandomOperations) {
    for (unsigned int seed = 1; seed <= 4; ++seed) {
        CompareWithVector<int>(seed, [](auto &random) { return static_cast<int>(random()); });
        CompareWithVector<std::string>(seed, [](auto &random) { return LongText(static_cast<int>(random())); });
    }
}
