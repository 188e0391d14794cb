#include "zvi/host/CFile.h"

CFile::CFile() = default;

CFile::~CFile() = default;

void CFile::SetFilePath(wchar_t const *path) {
    m_path = path ? path : L"";
}
