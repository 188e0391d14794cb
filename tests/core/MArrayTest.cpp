#include "zvi/core/MArray.h"

#include "tests/Rows.h"

#include <algorithm>
#include <memory>
#include <random>

namespace zvi::lib::test {

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
    Fragile &operator=(Fragile const &other) {
        if (other.failsOnCopy)
            throw std::runtime_error("copy");
        text = other.text;
        return *this;
    }
};

/// Can be copied but not moved, and owns others of its kind.
struct Family {
    std::string name;
    MArray<Family> kids;

    explicit Family(std::string value) : name(std::move(value)) {}
    Family(Family const &) = default;
    Family &operator=(Family const &) = default;
};

/// Cannot be made without a value.
struct NeverEmpty {
    std::string text;

    NeverEmpty() { throw std::runtime_error("make"); }
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
    MArray<int> numbers;
    MArray<std::string> texts;
    for (int i = 0; i < 141; ++i) {
        numbers.PushBack(i);
        texts.PushBack(LongText(i));
        std::size_t const capacity = *std::lower_bound(expected.begin(), expected.end(), numbers.Size());
        ASSERT_EQ(numbers.Capacity(), capacity);
        ASSERT_EQ(texts.Capacity(), capacity);
    }
    EXPECT_EQ(texts[140], LongText(140));
}

TEST(MArray, ReserveAndResizeFollowTheGrowthRule) {
    for (auto const &[size, more, capacity] :
         Rows<std::size_t, std::size_t, std::size_t>("10 0 10; 10 1 15; 10 5 15; 10 6 16; 1 1 2")) {
        MArray<double> reserved(size), resized(size);
        reserved.Reserve(more);
        EXPECT_EQ(reserved.Capacity(), capacity);
        EXPECT_EQ(reserved.Size(), size);
        resized.Resize(size + more);
        EXPECT_EQ(resized.Capacity(), capacity);
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
    MArray<std::unique_ptr<int>> owners;
    owners.PushBack(std::make_unique<int>(5));
    owners.PushBack(std::move(owners[0]));
    EXPECT_EQ(owners[0], nullptr);
    EXPECT_EQ(*owners[1], 5);

    MArray<Family> families{Family(LongText(0))};
    families[0].kids.PushBack(Family(LongText(1)));
    for (int i = 0; i < 20; ++i)
        families.PushBack(families[0].kids[0]);
    EXPECT_EQ(families[20].name, LongText(1)) << "the owner of the value moves only when it has been read";
}

TEST(MArray, AssignmentReusesTheBlockWhenItFits) {
    // An empty source keeps the block; over the elements; into the unused part; three that do not fit.
    for (auto const &[targetSize, targetRoom, sourceSize, capacity, sameBlock] :
         Rows<std::size_t, std::size_t, int, std::size_t, bool>(
             "4 0 0 4 1; 4 0 3 4 1; 2 4 5 6 1; 4 0 5 5 0; 8 0 9 9 0; 0 0 3 3 0")) {
        SCOPED_TRACE(sourceSize);
        MArray<std::string> target(targetSize), source;
        target.Reserve(targetRoom);
        std::string const *const block = target.Data();
        source.Reserve(50);
        for (int i = 0; i < sourceSize; ++i)
            source.PushBack(LongText(i));
        target = source;
        EXPECT_EQ(target, source);
        EXPECT_EQ(target.Capacity(), capacity);
        EXPECT_EQ(target.Data() == block, sameBlock);
        EXPECT_EQ(MArray<std::string>(source).Capacity(), source.Size());
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
    EXPECT_THROW(fragile.RemoveAt(0), std::runtime_error);
    EXPECT_THROW(fragile.PushBack(fragile[2]), std::runtime_error);
    MArray<Fragile> others(4);
    EXPECT_THROW(others = fragile, std::runtime_error);
    EXPECT_EQ(others[0].text, "");
    ASSERT_EQ(fragile.Size(), 4U);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(fragile[static_cast<std::size_t>(i)].text, LongText(i));
    fragile.RemoveAt(2);
    others = fragile;
    EXPECT_EQ(others[2].text, LongText(3));
    EXPECT_EQ(others.Capacity(), 4U);
    // An array that cannot be filled gives its block back, as the leak check of the address sanitizer tells.
    EXPECT_THROW(MArray<NeverEmpty> none(100), std::runtime_error);
}

TEST(MArray, DestroysInAscendingOrder) {
    std::vector<int> log;
    {
        MArray<std::shared_ptr<void>> witnesses;
        for (int i = 0; i < 5; ++i)
            witnesses.PushBack(std::shared_ptr<void>(nullptr, [&log, i](void *) { log.push_back(i); }));
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
        auto const kind = random() % 12;
        if (kind < 2) { // shorter, then longer
            std::size_t const size = kind == 0 ? at : oracle.size() + at / 2;
            array.Resize(size);
            oracle.resize(size);
        } else if (kind == 2) {
            MArray<T> const copy(array);
            array.Clear();
            array = copy;
        } else if (kind < 5 && !oracle.empty()) {
            array.RemoveAt(at);
            oracle.erase(oracle.begin() + static_cast<std::ptrdiff_t>(at));
        } else if (kind == 5 && !oracle.empty()) {
            array.PushBack(array[at]);
            oracle.push_back(T(oracle[at]));
        } else {
            oracle.push_back(makeValue(random));
            array.PushBack(oracle.back());
        }
        ASSERT_TRUE(std::equal(array.begin(), array.end(), oracle.begin(), oracle.end())) << step;
        ASSERT_TRUE(array.IsConsistent()) << step;
    }
}

} // namespace

TEST(MArray, AgreesWithAVectorUnderRandomOperations) {
    for (unsigned int seed = 1; seed <= 4; ++seed) {
        CompareWithVector<int>(seed, [](auto &random) { return static_cast<int>(random()); });
        CompareWithVector<std::string>(seed, [](auto &random) { return LongText(static_cast<int>(random())); });
    }
}

} // namespace zvi::lib::test
