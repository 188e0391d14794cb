#pragma once

#include "zvi/Export.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>

// Timers of the process. The host keeps them, and the application's own loop drives them:
//
//     while (isRunning) {
//         WaitForEvents(host::NextTimerDue()); // sleeps that long at most
//         host::RunDueTimers();
//     }
//
// An application that has timers of its own installs them with `SetTimerHook` instead. All of this belongs to one
// thread, which is the one that calls `RunDueTimers`.

namespace zvi::host {

/// What a timer calls: its window (always null where the host keeps the timer), the message 0x0113, its id, and the
/// time in milliseconds of a clock that only goes forward.
using TimerProcedure = void (*)(void *window, unsigned int message, std::uint64_t id, unsigned long time);

/// The message of every timer.
inline constexpr unsigned int kTimerMessage = 0x0113;

/// The clock of the timers.
using TimerClock = std::chrono::steady_clock;

/// Starts a timer that is due every so many milliseconds, in place of one with the same id. Gives the id that
/// `procedure` will be called with and `StopTimer` takes; 0 when no timer could be started.
ZVI_API std::uint64_t StartTimer(std::uint64_t id, unsigned int milliseconds, TimerProcedure procedure);

/// Ends a timer. Whether there was one.
ZVI_API bool StopTimer(std::uint64_t id);

/// Calls every timer that is due at `now` once, however late it is, and gives their number. Timers may be started and
/// stopped by what is called.
ZVI_API int RunDueTimers(TimerClock::time_point now = TimerClock::now());

/// How long nothing is due from `now` on, 0 when something already is; nothing while no timer runs.
ZVI_API std::optional<std::chrono::milliseconds> NextTimerDue(TimerClock::time_point now = TimerClock::now());

/// Timers of an application that keeps them itself.
struct TimerHook {
    /// As `StartTimer`.
    std::function<std::uint64_t(std::uint64_t id, unsigned int milliseconds, TimerProcedure procedure)> start;
    /// As `StopTimer`.
    std::function<bool(std::uint64_t id)> stop;
};

/// From now on timers are started and stopped by these functions, which do what `StartTimer` and `StopTimer` say. An
/// empty hook goes back to the host's own. Timers that run already stay where they are.
ZVI_API void SetTimerHook(TimerHook hook);

} // namespace zvi::host
