#include "zvi/text/CTextFileBase.h"

#include <stdexcept>

namespace zvi::lib {

CTextFileBase::CTextFileBase() = default;

CTextFileBase::CTextFileBase(std::FILE *stream) : CStdioFile(stream) {}

CTextFileBase::~CTextFileBase() = default;

void CTextFileBase::SetFilePath(wchar_t const *path) {
    if (!path)
        throw std::invalid_argument("null file path");
    CStdioFile::SetFilePath(path);
}

} // namespace zvi::lib
