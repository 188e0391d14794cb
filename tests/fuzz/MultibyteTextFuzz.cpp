// The reader of multi-byte text on any bytes, beside an obvious one.

#include "tests/fuzz/TextLinesFuzz.h"
#include "zvi/host/CodePage.h"
#include "zvi/text/CMbcsTextFileWithBuffer.h"

using namespace zvi;

namespace {

fuzz::Lines Lines(std::string text, unsigned int flags) {
    for (std::size_t at = 0; !(flags & CFile::kBinary) && (at = text.find("\r\n", at)) != std::string::npos; ++at)
        text.erase(at, 1);
    fuzz::Lines lines;
    for (std::size_t start = 0; start <= text.size();) {
        std::size_t const end = std::min(text.find('\n', start), text.size());
        lines.push_back(host::WideOfMulti(text.substr(start, end - start), host::kSystemCodePage));
        start = end + 1;
    }
    return lines;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
    fuzz::CheckLines<lib::CMbcsTextFileWithBuffer>(data, size, Lines);
    return 0;
}
