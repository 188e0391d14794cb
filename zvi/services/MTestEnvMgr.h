#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"

namespace zvi::lib {

/// The test environment of a user: values under names that switch on what is meant for developers, such as "Profiling".
/// `zvi/host/UserValues.h` says where the host keeps them and what a name is. May be called from any thread.
class ZVI_API MTestEnvMgr {
public:
    /// The value of `name`; empty when there is none, and for a null name.
    static CString GetTestEnvST(wchar_t const *name);

    /// Stores a value for this user, also for later processes; an empty or null one removes it. 1 if that was done, 0
    /// otherwise.
    static int SetTestEnvST(wchar_t const *name, wchar_t const *value);
};

} // namespace zvi::lib
