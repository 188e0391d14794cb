#include "zvi/text/TextEncoding.h"

#include "zvi/host/CStdioFile.h"

#include <array>
#include <cstddef>

namespace zvi::lib {

namespace {

struct Mark {
    std::string_view bytes;
    TEXT_ENCODING encoding;
};

constexpr std::size_t kLongestMark = 4;

constexpr Mark kMarks[] = {
    {"\xEF\xBB\xBF", kEncodingUtf8},
    {"\xFF\xFE", kEncodingUtf16Little},
    {"\xFE\xFF", kEncodingUtf16Big},
    {std::string_view("\0\0\xFE\xFF", kLongestMark), kEncodingUtf32Big},
};

} // namespace

TEXT_ENCODING EncodingOfMark(std::string_view firstBytes) {
    for (Mark const &mark : kMarks)
        if (firstBytes.starts_with(mark.bytes))
            return mark.encoding;
    return kEncodingMultiByte;
}

int ReadTextEncoding(wchar_t const *path, TEXT_ENCODING &encoding) {
    encoding = kEncodingMultiByte;
    CStdioFile file;
    if (!file.Open(path, CFile::kRead))
        return 0;
    std::array<char, kLongestMark> bytes{};
    try {
        encoding = EncodingOfMark({bytes.data(), file.Read(bytes.data(), bytes.size())});
    } catch (CFileException const &) {
        return 0;
    }
    return 1;
}

int HasUnicodeMark(wchar_t const *path) {
    TEXT_ENCODING encoding{};
    return ReadTextEncoding(path, encoding) && encoding >= kEncodingUtf8 ? 1 : 0;
}

} // namespace zvi::lib
