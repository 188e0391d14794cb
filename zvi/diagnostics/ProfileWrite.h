#pragma once

#include "zvi/Export.h"

namespace zvi::lib {

/// Measures the scope it stands in for `Profiler`, and goes with it: the objects of a thread end in the reverse of the
/// order in which they began.
///
///     void Solve() {
///         ProfileWrite const profile("Solve");
///         ...
///     }
class ZVI_API ProfileWrite {
public:
    /// Opens a scope.
    explicit ProfileWrite(char const *name) noexcept;
    /// Closes it.
    virtual ~ProfileWrite();
    ProfileWrite(ProfileWrite const &) = delete;
    ProfileWrite &operator=(ProfileWrite const &) = delete;
};

} // namespace zvi::lib
