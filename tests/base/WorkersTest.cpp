#include "zvi/base/Workers.h"
#include "tests/FailingMemory.h"
#include "zvi/base/KeySort.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <functional>
#include <numeric>
#include <random>
#include <stdexcept>
#include <thread>

namespace zvi::lib::test {

namespace {

constexpr std::size_t kThings = 20000; // parts of at least 4096

} // namespace

TEST(Workers, DoEachThingOnceInWhateverParts) {
    for (int const threads : {0, 1, 2, 3, 8}) {
        base::Workers const workers(threads);
        std::vector<int> done(kThings, 0);
        workers.ForEach(kThings, [&](std::size_t i) { ++done[i]; });
        EXPECT_EQ(done, std::vector<int>(kThings, 1)) << threads;
        std::vector<std::size_t> expected(kThings / 7 + 1);
        for (std::size_t i = 0; i < expected.size(); ++i)
            expected[i] = 7 * i;
        auto const found = workers.Collect<std::size_t>(kThings, [](std::size_t i, std::vector<std::size_t> &seventh) {
            if (i % 7 == 0)
                seventh.push_back(i);
        });
        EXPECT_EQ(found, expected) << threads;
        std::vector<std::size_t> sorted(kThings);
        for (std::size_t i = 0; i < kThings; ++i)
            sorted[i] = i * 7919 % kThings;
        workers.Sort(sorted, std::less<std::size_t>());
        EXPECT_TRUE(std::is_sorted(sorted.begin(), sorted.end())) << threads;
        workers.ForEach(0, [](std::size_t) { ADD_FAILURE(); });
    }
}

TEST(Workers, WhatTheFirstTaskThrowsGoesToTheCaller) {
    base::Workers const workers(3);
    for (std::size_t const first : {0U, 1U, 5U}) {
        try {
            workers.Do(40, [&](std::size_t i) {
                if (i >= first)
                    throw std::runtime_error(std::to_string(i));
            });
            ADD_FAILURE();
        } catch (std::runtime_error const &error) {
            EXPECT_EQ(error.what(), std::to_string(first));
        }
    }
}

using ShortageOfWorkers = FailingMemoryTest;

TEST_F(ShortageOfWorkers, EndsTheWorkOrFailsWhicheverAllocationDoes) {
    base::Workers const workers(4);
    bool goesOn = true;
    for (long index = 0; goesOn; ++index) {
        std::vector<int> done(64, 0);
        bool isDone = true;
        {
            FailingMemory const memory(index, Shortage::kLasting);
            try {
                workers.Do(done.size(), [&](std::size_t i) { ++done[i]; });
            } catch (std::bad_alloc const &) {
                isDone = false;
            }
            goesOn = memory.HasFailed();
        }
        EXPECT_EQ(std::accumulate(done.begin(), done.end(), 0), isDone ? 64 : 0) << index;
    }
}

TEST_F(ShortageOfWorkers, OnAnotherThreadReachesTheCaller) {
    std::thread::id const mine = std::this_thread::get_id();
    std::atomic<bool> isShort{false};
    auto const look = [&](std::size_t i, std::vector<std::size_t> &things) {
        if (std::this_thread::get_id() == mine)
            return isShort.wait(false);
        FailingMemory const memory(0, Shortage::kLasting);
        isShort = true;
        isShort.notify_one();
        things.push_back(i);
    };
    EXPECT_THROW(base::Workers(2).Collect<std::size_t>(kThings, look), std::bad_alloc);
    EXPECT_TRUE(isShort);
}

TEST(KeySort, OrdersNumbersAndKeepsTheOrderOfEqualOnes) {
    std::mt19937 random(5);
    for (std::size_t const count : {0U, 1U, 100U, 5000U}) {
        std::vector<double> numbers(count);
        for (double &number : numbers)
            number = std::ldexp(static_cast<double>(random() % 64) - 32.0, static_cast<int>(random() % 1200) - 600);
        std::vector<base::Keyed> sorted(count);
        for (std::size_t i = 0; i < count; ++i)
            sorted[i] = {base::OrderedBits(i % 50 == 0 ? -0.0 : numbers[i]), i};
        std::vector<std::size_t> expected(count);
        std::iota(expected.begin(), expected.end(), std::size_t{0});
        auto const numberOf = [&](std::size_t i) { return i % 50 == 0 ? 0.0 : numbers[i]; };
        std::stable_sort(expected.begin(), expected.end(),
                         [&](std::size_t a, std::size_t b) { return numberOf(a) < numberOf(b); });
        base::SortByKeys(sorted);
        for (std::size_t i = 0; i < count; ++i)
            ASSERT_EQ(sorted[i].of, expected[i]) << i << " of " << count;
    }
}

} // namespace zvi::lib::test
