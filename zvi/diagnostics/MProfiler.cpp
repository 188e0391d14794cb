#include "zvi/diagnostics/MProfiler.h"

#include "zvi/host/Counter.h"

namespace zvi::lib {

void MProfiler::Begin(wchar_t const *file, int line, wchar_t const *name) noexcept {
    m_name = name;
    m_file = file;
    m_line = line;
    m_start = host::ReadCounter();
}

void MProfiler::End() noexcept {
    if (!MProfileMgr::m_bStopProfile)
        MProfileMgr::CalledST(m_file, m_line, m_name, host::ReadCounter() - m_start);
}

} // namespace zvi::lib
