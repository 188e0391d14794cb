#include "zvi/text/CAutoLogWrite.h"

#include "zvi/host/CFileException.h"
#include "zvi/host/Files.h"
#include "zvi/text/MWriteLog.h"

#include <utility>

namespace zvi::lib {

namespace {

/// What a log that cannot be completed holds until now is all there will be.
void EndLog() {
    try {
        if (MWriteLog::m_pInstance)
            MWriteLog::m_pInstance->EndLog();
    } catch (CFileException const &) {
    }
}

} // namespace

CAutoLogWrite::CAutoLogWrite(CString path) : m_path(std::move(path)) {
    if (MWriteLog::m_pInstance)
        MWriteLog::m_pInstance->StartLog(m_path);
}

CAutoLogWrite::CAutoLogWrite(CAutoLogWrite const &other) = default;

CAutoLogWrite &CAutoLogWrite::operator=(CAutoLogWrite const &other) = default;

CAutoLogWrite::~CAutoLogWrite() {
    EndLog();
}

CString CAutoLogWrite::GetLogFile() {
    return m_path;
}

void CAutoLogWrite::WriteFile_Fail() {
    EndLog();
    int const folder = m_path.ReverseFind(L'\\') + 1;
    CString name = m_path.Mid(folder);
    name.Replace(L"_Success", L"_Fail");
    if (host::Exists(m_path.GetString()))
        host::RenameFile(m_path.GetString(), (m_path.Left(folder) + name).GetString());
}

} // namespace zvi::lib
