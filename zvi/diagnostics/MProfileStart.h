#pragma once

#include "zvi/Export.h"

namespace zvi::lib {

/// A region whose own results go to the message window when it ends: the names that are called for the first time in
/// it. Measuring is on inside, also where it was stopped outside, if profiling is enabled. Regions may be nested, and
/// end in the reverse of the order in which they began. One thread, as `MProfileMgr`.
class ZVI_API MProfileStart {
public:
    /// Begins a region.
    MProfileStart();
    /// Prints the region's names with a `CNSProfilePrinter` and drops them from the data; stops profiling again if it
    /// was stopped. What the printer raises is lost.
    virtual ~MProfileStart();
    MProfileStart(MProfileStart const &) = delete;
    MProfileStart &operator=(MProfileStart const &) = delete;

    /// Makes `id` one of the active region's. Nothing without one, and when the regions hold 4096 ids together.
    static void AddProfileST(int id);

private:
    MProfileStart *m_previous;
    int m_bStopProfile; // the stop flag outside
    int m_count = 0;    // ids of this region, at the end of the stack
};

} // namespace zvi::lib
