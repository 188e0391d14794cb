#include "zvi/host/Timers.h"

#include <algorithm>
#include <new>
#include <utility>
#include <vector>

namespace zvi::host {

namespace {

struct Timer {
    std::uint64_t id;
    std::chrono::milliseconds period;
    TimerProcedure procedure;
    TimerClock::time_point due;
};

struct TimerTable {
    std::vector<Timer> timers;
    TimerHook hook;

    Timer *Find(std::uint64_t id) {
        auto const found =
            std::find_if(timers.begin(), timers.end(), [id](Timer const &each) { return each.id == id; });
        return found == timers.end() ? nullptr : &*found;
    }
};

/// Never destroyed, so that objects may stop their timers until the process ends.
TimerTable &Table() {
    static TimerTable *const table = new TimerTable;
    return *table;
}

unsigned long Milliseconds(TimerClock::time_point time) {
    return static_cast<unsigned long>(
        std::chrono::duration_cast<std::chrono::milliseconds>(time.time_since_epoch()).count());
}

std::vector<std::uint64_t> DueIds(TimerClock::time_point now) {
    std::vector<std::uint64_t> due;
    for (Timer const &timer : Table().timers)
        if (timer.due <= now)
            due.push_back(timer.id);
    return due;
}

} // namespace

std::uint64_t StartTimer(std::uint64_t id, unsigned int milliseconds, TimerProcedure procedure) {
    TimerTable &table = Table();
    if (table.hook.start)
        return table.hook.start(id, milliseconds, procedure);
    if (id == 0 || !procedure)
        return 0;
    std::chrono::milliseconds const period(milliseconds);
    Timer const timer{id, period, procedure, TimerClock::now() + period};
    if (Timer *const known = table.Find(id)) {
        *known = timer;
        return id;
    }
    try {
        table.timers.push_back(timer);
        return id;
    } catch (std::bad_alloc const &) {
        return 0;
    }
}

bool StopTimer(std::uint64_t id) {
    TimerTable &table = Table();
    if (Timer *const timer = table.Find(id)) {
        table.timers.erase(table.timers.begin() + (timer - table.timers.data()));
        return true;
    }
    return table.hook.stop && table.hook.stop(id);
}

int RunDueTimers(TimerClock::time_point now) {
    int count = 0;
    for (std::uint64_t const id : DueIds(now)) {
        // Looked up again: the one before may have stopped it.
        Timer *const timer = Table().Find(id);
        if (!timer || timer->due > now)
            continue;
        timer->due = now + timer->period;
        ++count;
        timer->procedure(nullptr, kTimerMessage, id, Milliseconds(now));
    }
    return count;
}

std::optional<std::chrono::milliseconds> NextTimerDue(TimerClock::time_point now) {
    std::vector<Timer> const &timers = Table().timers;
    if (timers.empty())
        return {};
    auto const first =
        std::min_element(timers.begin(), timers.end(), [](Timer const &a, Timer const &b) { return a.due < b.due; });
    return std::max(std::chrono::ceil<std::chrono::milliseconds>(first->due - now), std::chrono::milliseconds(0));
}

void SetTimerHook(TimerHook hook) {
    Table().hook = std::move(hook);
}

} // namespace zvi::host
