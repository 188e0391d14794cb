#include "zvi/diagnostics/MProfileStart.h"

#include "zvi/diagnostics/CNSProfilePrinter.h"
#include "zvi/diagnostics/MProfileMgr.h"

namespace zvi::lib {

MProfileStart::MProfileStart() : m_previous(MProfileMgr::m_pCurrentStart), m_bStopProfile(MProfileMgr::m_bStopProfile) {
    MProfileMgr::m_bStopProfile = 0;
    MProfileMgr::m_pCurrentStart = this;
}

MProfileStart::~MProfileStart() {
    if (m_bStopProfile)
        MProfileMgr::m_bStopProfile = 1;
    int const *const ids = MProfileMgr::m_regionStack + (MProfileMgr::m_regionStackCount - m_count);
    // The printer is the application's; what it raises must not end the process from here.
    try {
        CNSProfilePrinter printer;
        MProfileMgr::PrintST(&printer, ids, m_count);
    } catch (...) { // NOLINT(bugprone-empty-catch)
    }
    MProfileMgr::ClearProfileDataST(ids, m_count);
    MProfileMgr::m_regionStackCount -= m_count;
    MProfileMgr::m_pCurrentStart = m_previous;
}

void MProfileStart::AddProfileST(int id) {
    MProfileStart *const current = MProfileMgr::m_pCurrentStart;
    if (!current || MProfileMgr::m_regionStackCount >= MProfileMgr::kRegionStackSize)
        return;
    MProfileMgr::m_regionStack[MProfileMgr::m_regionStackCount++] = id;
    ++current->m_count;
}

} // namespace zvi::lib
