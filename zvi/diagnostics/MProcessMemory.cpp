#include "zvi/diagnostics/MProcessMemory.h"

#include "zvi/host/ProcessMemory.h"
#include "zvi/services/MTestEnvMgr.h"
#include "zvi/text/MsgOut.h"

namespace zvi {

namespace {

/// Kilobytes of a byte, and megabytes of a kilobyte.
constexpr double kPart = 0.0009765625;

} // namespace

bool MProcessMemory::m_isProfiling = false;

MProcessMemory::MProcessMemory(wchar_t const *label) {
    if (lib::MTestEnvMgr::GetTestEnvST(L"Profiling") == L"yes")
        m_isProfiling = true;
    if (!m_isProfiling)
        return;
    m_label = label;
    m_processId = host::CurrentProcessId();
    m_bytesBefore = GetMemeryUsageByte();
}

MProcessMemory::~MProcessMemory() {
    if (m_processId == 0)
        return;
    std::int64_t const growth = GetMemeryUsageByte() - m_bytesBefore;
    double const kilobytes = static_cast<double>(growth) * kPart;
    lib::nsMsgOutFormat(L"%s : (%ld Byte) (%g Kb) (%g Mb)", m_label.GetString(), static_cast<long>(growth), kilobytes,
                        kilobytes * kPart);
}

std::int64_t MProcessMemory::GetMemeryUsageByte() const {
    return m_processId == 0 ? 0 : static_cast<std::int64_t>(host::ProcessMemory(m_processId));
}

double MProcessMemory::GetMemeryUsageKiloByte() const {
    return static_cast<double>(GetMemeryUsageByte()) * kPart;
}

double MProcessMemory::GetMemeryUsageMegaByte() const {
    return GetMemeryUsageKiloByte() * kPart;
}

} // namespace zvi
