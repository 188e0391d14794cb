#include "apps/zvi/common/Utf8.h"

namespace zvi::app {

std::size_t Utf8Length(char lead) {
    auto const byte = static_cast<unsigned char>(lead);
    return byte >= 0xF0 && byte < 0xF8 ? 4 : byte >= 0xE0 && byte < 0xF0 ? 3 : byte >= 0xC0 && byte < 0xE0 ? 2 : 1;
}

std::size_t ReadUtf8(std::string_view text, std::uint32_t &character) {
    // The least character that needs so many bytes.
    constexpr std::uint32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    constexpr std::uint32_t kLast = 0x10FFFF;
    std::uint32_t const lead = static_cast<unsigned char>(text[0]);
    std::size_t const length = Utf8Length(text[0]);
    if (lead < 0x80) {
        character = lead;
        return 1;
    }
    if (length == 1 || text.size() < length) {
        return 0;
    }
    std::uint32_t read = lead & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        std::uint32_t const next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0u) != 0x80u) {
            return 0;
        }
        read = read << 6 | (next & 0x3Fu);
    }
    bool const isSurrogate = read >= 0xD800 && read < 0xE000;
    if (read < kLeast[length] || read > kLast || isSurrogate) {
        return 0;
    }
    character = read;
    return length;
}

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        std::uint32_t character = 0;
        std::size_t const length = ReadUtf8(text, character);
        if (length == 0) {
            return false;
        }
        text.remove_prefix(length);
    }
    return true;
}

void AppendUtf8(std::string &text, std::uint32_t character) {
    auto const push = [&text](std::uint32_t byte) { text += static_cast<char>(byte); };
    if (character < 0x80) {
        push(character);
    } else if (character < 0x800) {
        push(0xC0 | character >> 6);
        push(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        push(0xE0 | character >> 12);
        push(0x80 | (character >> 6 & 0x3F));
        push(0x80 | (character & 0x3F));
    } else {
        push(0xF0 | character >> 18);
        push(0x80 | (character >> 12 & 0x3F));
        push(0x80 | (character >> 6 & 0x3F));
        push(0x80 | (character & 0x3F));
    }
}

} // namespace zvi::app
