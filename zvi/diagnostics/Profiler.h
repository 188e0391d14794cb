#pragma once

#include "zvi/Export.h"

#include <cstdint>
#include <memory>

namespace zvi::lib {

namespace diagnostics {
class ScopeRecords;
}

/// Measures the scopes that `ProfileWrite` marks, by name, and tells the time of a scope from that of the scopes inside
/// it. Measures from its first use on; `zvi profile-report` shows the report as a table.
///
/// The report is "x:\PROF.csv", written anew when the process ends. On a host without drives the application says
/// where X: is with `host::SetDriveRoot`; where it cannot be opened there is no report. Its lines:
///
///     Total Work Time :     2.500000
///     Function Name,   Percentage, Independent Work Time, Unit Work Time,        Calls, Total Work Time, Child Work
///     Time
///            solve,     0.600000,     1.500000,     0.500000,            3,     2.500000,     1.000000
///
/// in seconds, ordered by independent time (total without child), the longest first, equal ones by name. The first line
/// is the largest total of a name, and the percentage is independent time as a share of it, 1 for all. The time of a
/// scope holds the profiler's own for it, some tens of nanoseconds. A name that calls itself counts the inner scope
/// twice in its total, and once as its child. A scope that is open when the process ends is left out. Names are written
/// as they are, commas included, so columns are to be counted from the right.
///
/// One for the process and for a single thread: nothing is locked, and there is one stack. A scope for which memory
/// cannot be had is not recorded, nor are those inside it; nothing is raised.
class ZVI_API Profiler {
public:
    /// The process's profiler, made at the first call. It ends with the static objects that were made before it; scopes
    /// that are marked after that are not measured.
    static Profiler &GetInstance();

    /// Opens a scope; the name is copied, and a null one is empty.
    void StackPush(char const *name) noexcept;
    /// Closes the scope opened last and adds it to its name's record; nothing without one.
    void StackPop() noexcept;

    /// Writes the report and drops the records in it. Nothing is dropped when the file cannot be opened.
    void PrintResult();

    /// The hash of a name: FNV-1a with bytes as signed numbers and without cutting to 32 bits, of which the profiler's
    /// map uses the low half. 2166136261 for an empty or null name.
    static std::uint64_t myhash(char const *name);

    Profiler(Profiler const &) = delete;
    Profiler &operator=(Profiler const &) = delete;

private:
    friend class ProfileWrite;

    Profiler();
    /// Writes the report.
    ~Profiler();

    /// The process's profiler; null when it cannot be made and after its end.
    static Profiler *Living() noexcept;

    std::int64_t m_frequency;
    std::unique_ptr<diagnostics::ScopeRecords> m_scopes; // null without a counter
};

} // namespace zvi::lib
