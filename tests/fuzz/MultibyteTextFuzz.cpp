// The reader of multi-byte text on any bytes, beside an obvious one.

#include "tests/fuzz/TextLinesFuzz.h"
#include "zvi/text/CMbcsTextFileWithBuffer.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    return zvi::fuzz::CheckLines<zvi::lib::CMbcsTextFileWithBuffer>(data, size, zvi::lib::test::MultibyteLines);
}
