// The readers of multi-byte text and of UTF-16 on any bytes, beside obvious ones. The first two bytes choose the buffer
// size, the mode and the size of pieces; the rest is the file.

#include "tests/fuzz/FuzzFile.h"
#include "tests/text/TextLines.h"
#include "zvi/text/CMbcsTextFileWithBuffer.h"
#include "zvi/text/CUnicodeTextFileWithBuffer.h"

using namespace zvi::lib;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    if (size < 2)
        return 0;
    std::wstring const path = zvi::fuzz::FileWith(data + 2, size - 2);
    std::string const bytes(data + 2, data + size);
    bool const isText = !(data[0] & 1U);
    unsigned int const flags = isText ? CFile::kRead : CFile::kBinary;
    test::Lines const multibyte = test::MultibyteLines(bytes, isText);
    test::Lines const utf16 = test::Utf16Lines(bytes);
    for (int const buffer : {int{data[1]}, 4096})
        zvi::fuzz::Check(test::GivesLines<CMbcsTextFileWithBuffer>(path, flags, buffer, multibyte, data[0] / 2) &&
                         test::GivesLines<CUnicodeTextFileWithBuffer>(path, flags, buffer, utf16, data[0] / 2));
    return 0;
}
