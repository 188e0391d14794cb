#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"

#include <cstdint>

namespace zvi {

/// Reports how much this process's memory has grown while the object lives, with `nsMsgOutFormat` at its end:
/// "LABEL : (1048576 Byte) (1024 Kb) (1 Mb)". Does so once the test value "Profiling" has been "yes" when an object was
/// made; objects made before that stay inert, and tell no use.
class ZVI_API MProcessMemory {
public:
    /// Begins to look at the memory; the label stands in the report.
    explicit MProcessMemory(wchar_t const *label);
    /// Reports how the memory has grown.
    virtual ~MProcessMemory();
    MProcessMemory(MProcessMemory const &) = delete;
    MProcessMemory &operator=(MProcessMemory const &) = delete;

    /// The memory that the process occupies at this moment; 0 for an inert object.
    std::int64_t GetMemeryUsageByte() const;
    /// The same in units of 1,024 bytes.
    double GetMemeryUsageKiloByte() const;
    /// The same in units of 1,048,576 bytes.
    double GetMemeryUsageMegaByte() const;

private:
    static bool m_isProfiling;

    CString m_label;
    /// 0 for an inert object.
    std::uint32_t m_processId = 0;
    std::int64_t m_bytesBefore = 0;
};

} // namespace zvi
