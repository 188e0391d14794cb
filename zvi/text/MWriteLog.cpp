#include "zvi/text/MWriteLog.h"

#include "zvi/host/CStdioFile.h"
#include "zvi/host/LocalTime.h"

#include <cstdarg>
#include <memory>
#include <utility>

namespace zvi::lib {

namespace {

constexpr wchar_t const *kMessageLine = L"[Message][%s] : %s\n";
constexpr wchar_t const *kErrorLine = L"[Error][%s] : %s\n";
constexpr wchar_t const *kWarningLine = L"[Warning][%s] : %s\n";

/// Length of the lines around the first ones.
constexpr int kRuleLength = 50;

CString &SiteAddress() {
    static CString *const address = new CString;
    return *address;
}

CString LineOf(wchar_t const *format, CString const &source, CString const &text) {
    CString line;
    line.Format(format, source.GetString(), text.GetString());
    return line;
}

} // namespace

MWriteLog *MWriteLog::m_pInstance = nullptr;

MWriteLog::MWriteLog() {
    m_pInstance = this;
}

MWriteLog::MWriteLog(MWriteLog const &) : MWriteLog() {}

// NOLINTNEXTLINE(bugprone-unhandled-self-assignment): nothing is assigned
MWriteLog &MWriteLog::operator=(MWriteLog const &) {
    return *this;
}

MWriteLog::~MWriteLog() {
    delete m_pFile;
    m_pInstance = nullptr;
}

MWriteLog *MWriteLog::Instance() {
    return m_pInstance;
}

void MWriteLog::SetSiteAddress(CString const &address) {
    SiteAddress() = address;
}

CStdioFile *MWriteLog::GetFile(wchar_t const *path, unsigned int flags, CFileException *error) {
    auto file = std::make_unique<CStdioFile>();
    return file->Open(path, flags, error) ? file.release() : nullptr;
}

int MWriteLog::StartLog(CString &path) {
    EndLog();
    m_pFile = GetFile(path, CFile::kCreate | CFile::kReadWrite | CFile::kExclusive, nullptr);
    if (!m_pFile)
        return 0;
    CString const rule(L'-', kRuleLength);
    WriteLine(rule);
    WriteLine(L" Log Information");
    WriteLine(L"");
    WriteLine(L" " + SiteAddress() + L" for more details information.");
    WriteLine(L"");
    WriteLine(rule);
    return 1;
}

void MWriteLog::EndLog() {
    std::unique_ptr<CStdioFile> const file(std::exchange(m_pFile, nullptr));
    if (file)
        file->Close();
}

void MWriteLog::ForceFlush() {
    if (m_pFile)
        m_pFile->Flush();
}

int MWriteLog::WriteText(CString const &text) {
    if (!m_pFile)
        return 0;
    m_pFile->WriteString(text);
    m_pFile->Flush();
    return 1;
}

int MWriteLog::Write(wchar_t const *format, ...) {
    if (!m_pFile)
        return 0;
    CString text;
    std::va_list arguments;
    va_start(arguments, format);
    text.FormatV(format, arguments);
    va_end(arguments);
    return WriteText(text);
}

void MWriteLog::WriteLine(wchar_t const *text) {
    if (m_pFile)
        WriteText(CString(text) + L"\n");
}

int MWriteLog::WriteMsg(CString source, CString text) {
    return m_pFile ? WriteText(LineOf(kMessageLine, source, text)) : 0;
}

int MWriteLog::WriteError(CString source, CString text) {
    return m_pFile ? WriteText(LineOf(kErrorLine, source, text)) : 0;
}

int MWriteLog::WriteWarning(CString source, CString text) {
    return m_pFile ? WriteText(LineOf(kWarningLine, source, text)) : 0;
}

CString MWriteLog::GetTimeString() {
    host::CalendarTime const now = host::LocalTime();
    CString text;
    text.Format(L"%d-%d-%d %d:%d:%d", now.year, now.month, now.day, now.hour, now.minute, now.second);
    return text;
}

} // namespace zvi::lib
