#include "zvi/host/UnicodeStream.h"

#include "zvi/host/CFile.h"
#include "zvi/host/StreamOpeningDetail.h"

namespace zvi::host {

std::FILE *OpenUnicodeStream(std::wstring_view path) {
    constexpr std::string_view kMark = "\xFF\xFE";
    CFileException failure;
    std::FILE *const stream = OpenByFlags(path, CFile::kWrite | CFile::kCreate, failure);
    if (!stream || std::fwrite(kMark.data(), 1, kMark.size(), stream) == kMark.size())
        return stream;
    static_cast<void>(std::fclose(stream));
    return nullptr;
}

} // namespace zvi::host
