// What a child writes, cut as a ring would cut it, beside the same in one piece.

#include "tests/diagnostics/ParsedOutput.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    if (size < 2)
        return 0;
    std::string const output(std::string(reinterpret_cast<char const *>(data + 2), size - 2) + "\r\n");
    if (zvi::lib::test::Parsed(output, data[0] + std::size_t{1}, data[1] % 8 + std::size_t{1}, (data[1] & 0x80) != 0) !=
        zvi::lib::test::Parsed(output, size + 2))
        std::abort();
    return 0;
}
