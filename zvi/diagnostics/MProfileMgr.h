#pragma once

#include "zvi/Export.h"

#include <cstdint>

namespace zvi::lib {

class MProfilePrinterAdaptor;
class MProfileStart;

/// Counts calls and time of the scopes that `MProfiler` marks, by name.
///
/// Off until it is enabled: by `EnableProfilingST`, or at load when the test value "Profiling" of the user is "yes"
/// (`MTestEnvMgr`). Enabled and stopped are two switches: a scope counts when profiling is enabled at its start and not
/// stopped at either end. A name has one record, whatever the places that use it; file and line are those of its first
/// call.
///
/// A report is the line "*** Dumping Profiling Result ***" and, for each name, "FILE(LINE) NAME : CALLS, SECONDS", with
/// the time of inner scopes included. When the process ends, unless profiling is stopped then, all data go to a
/// `CProfilePrinter`.
///
/// One for the process and for a single thread: nothing is locked, and scopes of two threads would spoil its data. A
/// measurement for which memory cannot be had is lost; nothing is raised but what a printer raises.
class ZVI_API MProfileMgr {
public:
    /// Measures from now on if `enable` is not 0.
    static void EnableProfilingST(int enable);
    /// Goes on after a stop.
    static void StartProfilingST();
    /// Suspends measuring; a scope that is open now is not counted.
    static void StopProfilingST();
    /// Whether measuring is suspended, 1 or 0.
    static int IsProfilingStoppedST();

    /// Reports all names in the order of their ids, which is that of their first calls. Nothing for a null printer or
    /// without data.
    static void PrintST(MProfilePrinterAdaptor *printer);
    /// Reports the names of these ids in this order, passing over ids that nobody has. Without any the heading alone is
    /// printed; nothing for a null printer.
    static void PrintST(MProfilePrinterAdaptor *printer, int const *ids, int count);

    /// Drops all data.
    static void ClearProfileDataST();
    /// Drops the names of these ids. An id is the number of names held plus 1, so a later name may get the id of one
    /// that is still there, whose label it then takes, and which only the report of all names shows from then on.
    static void ClearProfileDataST(int const *ids, int count);

protected:
    /// Only the process's own object exists.
    MProfileMgr();
    ~MProfileMgr();
    MProfileMgr(MProfileMgr const &) = delete;
    MProfileMgr &operator=(MProfileMgr const &) = delete;

    /// Adds a call of `name` that took `ticks`. A new name gets its id and label, and belongs to the region that is
    /// active.
    static void CalledST(wchar_t const *file, int line, wchar_t const *name, std::int64_t ticks) noexcept;

private:
    friend class MProfiler;
    friend class MProfileStart;

    /// Ids that all regions together remember.
    static constexpr int kRegionStackSize = 4096;

    static bool IsMeasuring() { return m_bEnableProfile && !m_bStopProfile; }

    static int m_bEnableProfile;
    static int m_bStopProfile;
    static MProfileStart *m_pCurrentStart;
    static int m_regionStack[kRegionStackSize];
    static int m_regionStackCount;
};

} // namespace zvi::lib
