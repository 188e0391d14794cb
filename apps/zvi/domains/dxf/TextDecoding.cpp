#include "apps/zvi/domains/dxf/TextDecoding.h"

#include "apps/zvi/common/NumberText.h"

#include <array>
#include <cstdint>
#include <optional>

#if __has_include(<iconv.h>)
#include <iconv.h>
#define ZVI_HAS_ICONV 1
#endif

namespace zvi::app {

namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

/// What code page 1252 has at 0x80..0x9F; elsewhere its bytes are the characters of the same number.
constexpr std::array<std::uint16_t, 32> k1252 = {0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD,
                                                 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178};

void AppendUtf8(std::string &text, std::uint32_t c) {
    auto const byte = [&text](std::uint32_t bits) { text += static_cast<char>(static_cast<unsigned char>(bits)); };
    if (c < 0x80) {
        byte(c);
    } else if (c < 0x800) {
        byte(0xC0 | c >> 6);
        byte(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        byte(0xE0 | c >> 12);
        byte(0x80 | (c >> 6 & 0x3F));
        byte(0x80 | (c & 0x3F));
    } else {
        byte(0xF0 | c >> 18);
        byte(0x80 | (c >> 12 & 0x3F));
        byte(0x80 | (c >> 6 & 0x3F));
        byte(0x80 | (c & 0x3F));
    }
}

std::string From1252(std::string_view text) {
    std::string decoded;
    for (char const c : text) {
        std::uint32_t const byte = static_cast<unsigned char>(c);
        AppendUtf8(decoded, byte >= 0x80 && byte < 0xA0 ? k1252[byte - 0x80] : byte);
    }
    return decoded;
}

/// The converter's name for a drawing's code page: "ANSI_1250" is CP1250, "DOS437" is CP437, others as they stand.
std::string ConverterName(std::string_view codePage) {
    for (std::string_view const prefix : {"ANSI_", "DOS"}) {
        if (codePage.size() > prefix.size() && SameNoCase(codePage.substr(0, prefix.size()), prefix)) {
            return "CP" + std::string(codePage.substr(prefix.size()));
        }
    }
    constexpr std::string_view kNameLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
    bool const wellFormed = codePage.find_first_not_of(kNameLetters) == std::string_view::npos;
    return wellFormed ? std::string(codePage) : std::string();
}

#ifdef ZVI_HAS_ICONV
/// The text in UTF-8, or nothing when the code page is unknown. A byte that means nothing becomes U+FFFD.
std::optional<std::string> ThroughConverter(std::string_view text, std::string const &codePage) {
    iconv_t const converter = iconv_open("UTF-8", codePage.c_str());
    if (converter == reinterpret_cast<iconv_t>(-1)) {
        return std::nullopt;
    }
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
            AppendUtf8(decoded, kReplacement);
            ++from;
            --left;
        }
    }
    iconv_close(converter);
    return decoded;
}
#else
std::optional<std::string> ThroughConverter(std::string_view, std::string const &) {
    return std::nullopt;
}
#endif

/// The character of "\U+XXXX" at the start of `text`.
std::optional<std::uint32_t> EscapedCharacter(std::string_view text) {
    constexpr std::size_t kDigits = 4;
    if (text.size() < 3 + kDigits || !text.starts_with("\\U+")) {
        return std::nullopt;
    }
    std::uint32_t value = 0;
    for (char const c : text.substr(3, kDigits)) {
        std::size_t const digit = std::string_view("0123456789abcdef0123456789ABCDEF").find(c);
        if (digit == std::string_view::npos) {
            return std::nullopt;
        }
        value = value * 16 + static_cast<std::uint32_t>(digit % 16);
    }
    bool const surrogate = value >= 0xD800 && value < 0xE000;
    return surrogate ? kReplacement : value;
}

std::string Cleaned(std::string_view text) {
    std::string cleaned;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (std::optional<std::uint32_t> const escaped = EscapedCharacter(text.substr(i))) {
            AppendUtf8(cleaned, *escaped < ' ' ? kReplacement : *escaped);
            i += 6;
        } else if (static_cast<unsigned char>(text[i]) < ' ' || text[i] == '\x7F') {
            AppendUtf8(cleaned, kReplacement);
        } else {
            cleaned += text[i];
        }
    }
    return cleaned;
}

/// Length of the well-formed sequence at the start of `text`, 0 if there is none.
std::size_t Utf8Length(std::string_view text) {
    auto const byte = [text](std::size_t i) -> unsigned {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u;
    };
    auto const tail = [&byte](std::size_t i) { return (byte(i) & 0xC0) == 0x80; };
    unsigned const first = byte(0);
    if (first < 0x80) {
        return 1;
    }
    if (first >= 0xC2 && first < 0xE0) {
        return tail(1) ? 2 : 0;
    }
    if (first >= 0xE0 && first < 0xF0) {
        bool const overlong = first == 0xE0 && byte(1) < 0xA0;
        bool const surrogate = first == 0xED && byte(1) >= 0xA0;
        return tail(1) && tail(2) && !overlong && !surrogate ? 3 : 0;
    }
    bool const overlong = first == 0xF0 && byte(1) < 0x90;
    bool const beyond = first > 0xF4 || first < 0xF0 || (first == 0xF4 && byte(1) >= 0x90);
    return tail(1) && tail(2) && tail(3) && !overlong && !beyond ? 4 : 0;
}

} // namespace

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        std::size_t const length = Utf8Length(text);
        if (length == 0) {
            return false;
        }
        text.remove_prefix(length);
    }
    return true;
}

std::string DecodeDxfText(std::string_view text, std::string_view codePage) {
    if (IsUtf8(text)) {
        return Cleaned(text);
    }
    std::string const name = ConverterName(Trimmed(codePage));
    std::optional<std::string> decoded;
    if (!name.empty() && !SameNoCase(name, "CP1252") && !SameNoCase(name, "UTF-8")) {
        decoded = ThroughConverter(text, name);
    }
    std::string const readable = decoded && IsUtf8(*decoded) ? *decoded : From1252(text);
    return Cleaned(readable);
}

} // namespace zvi::app
