#pragma once

#include "zvi/core/MStatusError.h"

#include <gtest/gtest.h>

#include <new>

namespace zvi::lib::test {

/// Which allocations of this thread fail: the one that is counted down to, or all from it on.
enum class Shortage { kOnce, kLasting };

/// While it lives, memory runs short for this thread, in the library and in the tests alike.
class FailingMemory {
public:
    /// Whether the allocations of this host and build can be made to fail.
    static bool IsPossible();

    /// Blocks that this thread has taken and not given back; 0 always under a sanitizer, whose own leak check is
    /// better.
    static long LiveBlocks();

    /// `index` allocations succeed before the shortage.
    FailingMemory(long index, Shortage shortage);
    ~FailingMemory();

    FailingMemory(FailingMemory const &) = delete;
    FailingMemory &operator=(FailingMemory const &) = delete;

    bool HasFailed() const;
};

/// For tests in which memory runs short.
class FailingMemoryTest : public testing::Test {
protected:
    void SetUp() override {
        if (!FailingMemory::IsPossible())
            GTEST_SKIP() << "a program cannot make the library's allocations fail on this host or in this build";
    }
};

/// Calls `work(subject)` on a new subject again and again, with a shortage at each of its allocations in turn. Whatever
/// it leaves behind must stand another call in the shortage's wake, must then come to the same `result(subject)` as a
/// new one does, and must go without a trace. `work` begins by clearing the subject.
template <typename Subject, typename Work, typename Result>
void WorkInShortages(Work work, Result result) {
    auto const expected = [&] {
        Subject subject;
        work(subject);
        return result(subject);
    }();
    for (Shortage const shortage : {Shortage::kOnce, Shortage::kLasting}) {
        bool goesOn = true;
        for (long index = 0; goesOn; ++index) {
            long const before = FailingMemory::LiveBlocks();
            {
                Subject subject;
                {
                    FailingMemory const memory(index, shortage);
                    try {
                        work(subject);
                    } catch (std::bad_alloc const &) {
                    } catch (MStatusError const &error) {
                        goesOn = error.Status() == kStatusOutOfMemory;
                    }
                    goesOn = goesOn && memory.HasFailed();
                }
                work(subject);
                ASSERT_EQ(result(subject), expected) << "after allocation " << index;
            }
            ASSERT_EQ(FailingMemory::LiveBlocks(), before) << "after allocation " << index;
        }
    }
}

} // namespace zvi::lib::test
