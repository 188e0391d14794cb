#include "apps/zvi/common/CodePage.h"

#include "zvi/core/Utf8.h"
#include "zvi/core/WideUnits.h"

#include <iconv.h>

#include <array>

namespace zvi::app {

std::optional<std::string> FromCodePage(std::string_view text, std::string const &codePage) {
    iconv_t const converter = iconv_open("UTF-8", codePage.c_str());
    if (converter == reinterpret_cast<iconv_t>(-1))
        return std::nullopt;
    std::string source(text);
    std::string decoded;
    char *from = source.data();
    std::size_t left = source.size();
    while (left > 0) {
        std::array<char, 256> buffer;
        char *to = buffer.data();
        std::size_t room = buffer.size();
        std::size_t const before = left;
        iconv(converter, &from, &left, &to, &room);
        decoded.append(buffer.data(), buffer.size() - room);
        if (left == before && room == buffer.size()) {
            lib::AppendUtf8(decoded, lib::kReplacementCharacter);
            ++from;
            --left;
        }
    }
    iconv_close(converter);
    return decoded;
}

} // namespace zvi::app
