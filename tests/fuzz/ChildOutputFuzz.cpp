// What a child writes, cut as a ring would cut it, beside the rules as they are told.

#include "tests/diagnostics/ParsedOutput.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    if (size < 2)
        return 0;
    std::size_t const step = data[0] + std::size_t{1};
    std::size_t const limit = data[1] % 8 + std::size_t{1};
    std::string output(reinterpret_cast<char const *>(data + 2), size - 2);
    output += "\r\n";
    std::vector<std::size_t> cuts;
    for (std::size_t cut = step; cut < output.size(); cut += step)
        cuts.push_back(cut);
    bool const asUnfinished = (data[1] & 0x80) != 0;
    if (zvi::lib::test::Parsed(output, cuts, limit, asUnfinished) != zvi::lib::test::ParsedByTheRules(output))
        std::abort();
    return 0;
}
