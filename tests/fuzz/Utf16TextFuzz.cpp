// The reader of UTF-16 text on any bytes, beside an obvious one.

#include "tests/fuzz/TextLinesFuzz.h"
#include "zvi/text/CUnicodeTextFileWithBuffer.h"

using namespace zvi;

namespace {

fuzz::Lines Lines(std::string const &bytes, unsigned int) {
    fuzz::Lines lines(1);
    for (std::size_t i = 0; i < bytes.size(); i += 2) {
        unsigned int const low = static_cast<unsigned char>(bytes[i]);
        unsigned int const unit = i + 1 < bytes.size()
                                      ? low | static_cast<unsigned int>(static_cast<unsigned char>(bytes[i + 1])) << 8
                                      : 0xFFFD;
        if (unit != '\n') {
            lines.back() += static_cast<wchar_t>(unit);
            continue;
        }
        if (!lines.back().empty())
            lines.back().pop_back();
        lines.emplace_back();
    }
    return lines;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    fuzz::CheckLines<lib::CUnicodeTextFileWithBuffer>(data, size, Lines);
    return 0;
}
