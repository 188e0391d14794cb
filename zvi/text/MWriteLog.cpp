#include "zvi/text/MWriteLog.h"

#include "zvi/host/CStdioFile.h"
#include "zvi/host/CodePage.h"
#include "zvi/host/LocalTime.h"

#include <cstdarg>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>

namespace zvi::lib {

namespace {

constexpr std::wstring_view kMessage = L"[Message][";
constexpr std::wstring_view kError = L"[Error][";
constexpr std::wstring_view kWarning = L"[Warning][";

/// Length of the lines around the first ones.
constexpr int kRuleLength = 50;

CString &SiteAddress() {
    static CString *const address = new CString;
    return *address;
}

/// A line as "[Error][SOURCE] : TEXT".
std::wstring LineOf(std::wstring_view kind, wchar_t const *source, wchar_t const *text) {
    constexpr std::wstring_view kBetween = L"] : ";
    std::wstring_view const parts[] = {kind, source, kBetween, text, L"\n"};
    std::size_t length = 0;
    for (std::wstring_view const part : parts)
        length += part.size();
    std::wstring line;
    line.reserve(length);
    for (std::wstring_view const part : parts)
        line += part;
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

int MWriteLog::WriteText(std::wstring_view text) {
    if (!m_pFile)
        return 0;
    std::string const bytes = host::MultiOfWide(text, host::kSystemCodePage);
    m_pFile->Write(bytes.data(), bytes.size());
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
    return WriteText(text.GetString());
}

void MWriteLog::WriteLine(wchar_t const *text) {
    if (m_pFile)
        WriteText((CString(text) + L"\n").GetString());
}

int MWriteLog::WriteMsg(CString source, CString text) {
    return m_pFile ? WriteText(LineOf(kMessage, source, text)) : 0;
}

int MWriteLog::WriteError(CString source, CString text) {
    return m_pFile ? WriteText(LineOf(kError, source, text)) : 0;
}

int MWriteLog::WriteWarning(CString source, CString text) {
    return m_pFile ? WriteText(LineOf(kWarning, source, text)) : 0;
}

CString MWriteLog::GetTimeString() {
    host::CalendarTime const now = host::LocalTime();
    CString text;
    text.Format(L"%d-%d-%d %d:%d:%d", now.year, now.month, now.day, now.hour, now.minute, now.second);
    return text;
}

} // namespace zvi::lib
