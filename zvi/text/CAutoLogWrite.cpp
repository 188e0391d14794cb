#include "zvi/text/CAutoLogWrite.h"

#include "zvi/host/CFileException.h"
#include "zvi/host/Files.h"
#include "zvi/text/MFileCtrl.h"
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
    MFileCtrl file(m_path);
    CString name = file.GetFileNameExt();
    name.Replace(L"_Success", L"_Fail");
    CFileStatus status;
    if (file.GetFileStatus(status))
        host::RenameFile(m_path.GetString(), (file.GetFilePath() + name).GetString());
}

} // namespace zvi::lib
