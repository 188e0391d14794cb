#pragma once

#include "zvi/Export.h"
#include "zvi/diagnostics/MProfileMgr.h"

#include <cstdint>

namespace zvi::lib {

/// Measures the scope it stands in for `MProfileMgr`, and costs next to nothing while that is off:
///
///     void Solve() {
///         MProfiler const profiler(L"Solve.cpp", 12, L"Solve");
///         ...
///     }
class ZVI_API MProfiler {
public:
    /// Starts measuring if profiling is enabled and not stopped; a null name measures nothing. The texts are not
    /// copied: write literals.
    MProfiler(wchar_t const *file, int line, wchar_t const *name) noexcept : m_name(nullptr) {
        if (MProfileMgr::IsMeasuring())
            Begin(file, line, name);
    }

    /// Adds the time since the start, unless profiling is stopped now.
    ~MProfiler() {
        if (m_name)
            End();
    }

    MProfiler(MProfiler const &) = delete;
    MProfiler &operator=(MProfiler const &) = delete;

private:
    void Begin(wchar_t const *file, int line, wchar_t const *name) noexcept;
    void End() noexcept;

    wchar_t const *m_name; // null when nothing is measured; the others are set only with it
    wchar_t const *m_file;
    int m_line;
    std::int64_t m_start;
};

} // namespace zvi::lib
