#include "zvi/diagnostics/MProfileMgr.h"

#include "zvi/diagnostics/CNSProfilePrinter.h"
#include "zvi/diagnostics/CProfilePrinter.h"
#include "zvi/diagnostics/MProfileStart.h"
#include "zvi/diagnostics/ProfileTablesDetail.h"
#include "zvi/host/Counter.h"
#include "zvi/services/MTestEnvMgr.h"

#include <limits>
#include <utility>
#include <vector>

namespace zvi::lib {

int MProfileMgr::m_bEnableProfile = 0;
int MProfileMgr::m_bStopProfile = 0;
MProfileStart *MProfileMgr::m_pCurrentStart = nullptr;
int MProfileMgr::m_regionStack[kRegionStackSize];
int MProfileMgr::m_regionStackCount = 0;

namespace {

using diagnostics::ProfileTables;

/// Null before the first use and after the end. A plain pointer, so that it is there before and after all objects.
ProfileTables *tables = nullptr;
bool isAtEnd = false;

/// The tables, made when they are not there yet; null when they cannot be made, and at the end.
ProfileTables *Tables() noexcept {
    try {
        if (!tables && !isAtEnd)
            tables = new ProfileTables;
    } catch (...) { // NOLINT(bugprone-empty-catch): what cannot be stored is lost
    }
    return tables;
}

/// Only this printer takes a line for a format, in which a percent sign of a name would be a conversion.
void PrintText(MProfilePrinterAdaptor &printer, CString const &text) {
    if (dynamic_cast<CNSProfilePrinter *>(&printer))
        printer.PrintLine(L"%s", text.GetString());
    else
        printer.PrintLine(text);
}

void PrintLines(MProfilePrinterAdaptor &printer, std::vector<T_PROFILE_D> const &records) {
    PrintText(printer, L"*** Dumping Profiling Result ***");
    double const frequency = static_cast<double>(host::CounterFrequency());
    for (T_PROFILE_D const &record : records) {
        CString const label = tables ? tables->LabelOf(record.id) : CString();
        CString line;
        line.Format(L"%s : %d, %g", label.GetString(), record.count, static_cast<double>(record.ticks) / frequency);
        PrintText(printer, line);
    }
}

void PrintRecords(MProfilePrinterAdaptor &printer, std::vector<T_PROFILE_D> const &records) {
    if (!printer.Open())
        return;
    try {
        PrintLines(printer, records);
    } catch (...) {
        printer.Close();
        throw;
    }
    printer.Close();
}

} // namespace

MProfileMgr::MProfileMgr() {
    try {
        Tables();
        if (MTestEnvMgr::GetTestEnvST(L"Profiling") == L"yes")
            m_bEnableProfile = 1;
    } catch (...) { // NOLINT(bugprone-empty-catch): a library that is being loaded has nobody to tell
    }
}

MProfileMgr::~MProfileMgr() {
    try {
        CProfilePrinter printer;
        if (!m_bStopProfile)
            PrintST(&printer);
    } catch (...) { // NOLINT(bugprone-empty-catch): nor has one that is being unloaded
    }
    isAtEnd = true;
    delete std::exchange(tables, nullptr);
}

void MProfileMgr::EnableProfilingST(int enable) {
    m_bEnableProfile = enable;
}

void MProfileMgr::StartProfilingST() {
    m_bStopProfile = 0;
}

void MProfileMgr::StopProfilingST() {
    m_bStopProfile = 1;
}

int MProfileMgr::IsProfilingStoppedST() {
    return m_bStopProfile;
}

void MProfileMgr::PrintST(MProfilePrinterAdaptor *printer) {
    if (!printer || !tables)
        return;
    std::vector<T_PROFILE_D> const records = tables->Records();
    if (!records.empty())
        PrintRecords(*printer, records);
}

void MProfileMgr::PrintST(MProfilePrinterAdaptor *printer, int const *ids, int count) {
    if (printer)
        PrintRecords(*printer, tables ? tables->Records(ids, count) : std::vector<T_PROFILE_D>());
}

void MProfileMgr::ClearProfileDataST() {
    if (tables)
        tables->Clear();
}

void MProfileMgr::ClearProfileDataST(int const *ids, int count) {
    for (int i = 0; tables && i < count; ++i)
        tables->Remove(ids[i]);
}

void MProfileMgr::CalledST(wchar_t const *file, int line, wchar_t const *name, std::int64_t ticks) noexcept {
    ProfileTables *const all = name ? Tables() : nullptr;
    if (!all)
        return;
    try {
        T_PROFILE_D *record = all->Find(name);
        if (!record) {
            record = all->Add(file, line, name);
            MProfileStart::AddProfileST(record->id);
        }
        if (record->count < std::numeric_limits<int>::max())
            ++record->count;
        record->ticks += ticks;
    } catch (...) { // NOLINT(bugprone-empty-catch): a measurement without memory is lost
    }
}

namespace {

/// Reads the user's switch at load and reports at the end.
struct ProcessProfileMgr : MProfileMgr {
} processProfileMgr;

} // namespace

} // namespace zvi::lib
