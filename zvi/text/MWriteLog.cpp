#include "zvi/text/MWriteLog.h"

#include "zvi/host/CStdioFile.h"
#include "zvi/host/CodePage.h"
#include "zvi/host/LocalTime.h"

#include <cstdarg>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace zvi::lib {

namespace {

constexpr std::string_view kMessage = "[Message][";
constexpr std::string_view kError = "[Error][";
constexpr std::string_view kWarning = "[Warning][";

/// Length of the lines around the first ones.
constexpr int kRuleLength = 50;

/// Bytes of a line whose memory is kept for the next one; more, which one long line has taken, is given back.
constexpr std::size_t kKeptCapacity = std::size_t{1} << 16;

CString &SiteAddress() {
    static CString *const address = new CString;
    return *address;
}

void Append(std::string &bytes, std::wstring_view text) {
    host::AppendMultiOfWide(bytes, text, host::kSystemCodePage);
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

int MWriteLog::WriteBytes(std::string_view bytes) {
    if (!m_pFile)
        return 0;
    m_pFile->WriteAtOnce(bytes);
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
    std::string bytes;
    Append(bytes, text.GetString());
    return WriteBytes(bytes);
}

void MWriteLog::WriteLine(wchar_t const *text) {
    if (!m_pFile)
        return;
    std::string line;
    Append(line, text ? text : L"");
    WriteBytes(line += '\n');
}

// NOLINTBEGIN(performance-unnecessary-value-param): the signatures are those that callers know
int MWriteLog::WriteMsg(CString source, CString text) {
    return WriteKind(kMessage, source, text);
}

int MWriteLog::WriteError(CString source, CString text) {
    return WriteKind(kError, source, text);
}

int MWriteLog::WriteWarning(CString source, CString text) {
    return WriteKind(kWarning, source, text);
}
// NOLINTEND(performance-unnecessary-value-param)

int MWriteLog::WriteKind(std::string_view kind, CString const &source, CString const &text) {
    if (!m_pFile)
        return 0;
    m_line = kind;
    Append(m_line, source.GetString());
    m_line += "] : ";
    Append(m_line, text.GetString());
    m_line += '\n';
    WriteBytes(m_line);
    if (m_line.capacity() > kKeptCapacity)
        std::string().swap(m_line);
    return 1;
}

CString MWriteLog::GetTimeString() {
    host::CalendarTime const now = host::LocalTime();
    CString text;
    text.Format(L"%d-%d-%d %d:%d:%d", now.year, now.month, now.day, now.hour, now.minute, now.second);
    return text;
}

} // namespace zvi::lib
