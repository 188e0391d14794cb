// The reader of UTF-16 text on any bytes, beside an obvious one.

#include "tests/fuzz/TextLinesFuzz.h"
#include "zvi/text/CUnicodeTextFileWithBuffer.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    return zvi::fuzz::CheckLines<zvi::lib::CUnicodeTextFileWithBuffer>(
        data, size, [](std::string const &bytes, bool) { return zvi::lib::test::Utf16Lines(bytes); });
}
