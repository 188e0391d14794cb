#include "zvi/host/Timers.h"

#include <gtest/gtest.h>

#include <string>

namespace host = zvi::host;

namespace {

using std::chrono::hours;

std::string called;

/// Notes the id, and stops the timers 1 and 2.
void Note(void *window, unsigned int message, std::uint64_t id, unsigned long) {
    called += !window && message == host::kTimerMessage ? std::to_string(id) : "?";
    host::StopTimer(1);
    host::StopTimer(2);
}

} // namespace

/// Their periods are hours, so that the test may take as long as it likes.
TEST(Timers, RunWhenTheyAreDue) {
    constexpr unsigned int kHour = 3600000; // milliseconds
    called.clear();
    EXPECT_FALSE(host::NextTimerDue());
    EXPECT_EQ(host::StartTimer(0, kHour, Note), 0U);
    ASSERT_EQ(host::StartTimer(7, kHour, Note), 7U);
    ASSERT_EQ(host::StartTimer(8, 10 * kHour, Note), 8U);
    auto const now = host::TimerClock::now();
    EXPECT_LE(host::NextTimerDue(now).value(), hours(1));
    // Late ones run once, and are due a period later.
    EXPECT_EQ(host::NextTimerDue(now + hours(5)), hours(0));
    for (auto const &[after, count] : {std::pair(0, 0), {5, 1}, {6, 1}, {15, 2}})
        EXPECT_EQ(host::RunDueTimers(now + hours(after)), count) << after;
    EXPECT_EQ(host::NextTimerDue(now + hours(15)), hours(1));
    EXPECT_EQ(called, "7778");
    EXPECT_TRUE(host::StopTimer(7) && !host::StopTimer(7) && host::StopTimer(8));
    // They may be stopped by one another.
    host::StartTimer(1, 0, Note);
    host::StartTimer(2, 0, Note);
    EXPECT_EQ(host::RunDueTimers(), 1);
    EXPECT_FALSE(host::NextTimerDue());
}

TEST(Timers, GoToTheApplicationThatHasItsOwn) {
    std::uint64_t stopped = 0;
    host::SetTimerHook({[](std::uint64_t, unsigned int milliseconds, host::TimerProcedure) { return milliseconds + 5; },
                        [&](std::uint64_t id) { return stopped = id, true; }});
    EXPECT_EQ(host::StartTimer(1, 100, Note), 105U);
    EXPECT_FALSE(host::NextTimerDue());
    EXPECT_TRUE(host::StopTimer(105));
    EXPECT_EQ(stopped, 105U);
    host::SetTimerHook({});
}
