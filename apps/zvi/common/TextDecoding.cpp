#include "apps/zvi/common/TextDecoding.h"

#include "apps/zvi/common/CodePage.h"
#include "apps/zvi/common/Joined.h"
#include "apps/zvi/common/Text.h"
#include "zvi/core/Utf8.h"
#include "zvi/core/WideUnits.h"

#include <array>
#include <cstdint>
#include <optional>

namespace zvi::app {

namespace {

/// What code page 1252 has at 0x80..0x9F; elsewhere its bytes are the characters of the same number.
constexpr std::array<std::uint16_t, 32> k1252 = {0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD,
                                                 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178};

std::string From1252(std::string_view text) {
    std::string decoded;
    for (char const c : text) {
        std::uint32_t const byte = static_cast<unsigned char>(c);
        lib::AppendUtf8(decoded, byte >= 0x80 && byte < 0xA0 ? k1252[byte - 0x80] : byte);
    }
    return decoded;
}

/// The converter's name for a drawing's code page: "ANSI_1250" is CP1250, "DOS437" is CP437, others as they stand.
std::string ConverterName(std::string_view codePage) {
    for (std::string_view const prefix : {"ANSI_", "DOS"}) {
        if (codePage.size() > prefix.size() && SameNoCase(codePage.substr(0, prefix.size()), prefix))
            return "CP" + std::string(codePage.substr(prefix.size()));
    }
    constexpr std::string_view kNameLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
    bool const wellFormed = codePage.find_first_not_of(kNameLetters) == std::string_view::npos;
    return wellFormed ? std::string(codePage) : std::string();
}

/// The character of "\U+XXXX" at the start of `text`.
std::optional<std::uint32_t> EscapedCharacter(std::string_view text) {
    constexpr std::size_t kDigits = 4;
    if (text.size() < 3 + kDigits || !text.starts_with("\\U+"))
        return std::nullopt;
    std::uint32_t value = 0;
    for (char const c : text.substr(3, kDigits)) {
        std::size_t const digit = std::string_view("0123456789abcdef0123456789ABCDEF").find(c);
        if (digit == std::string_view::npos)
            return std::nullopt;
        value = value * 16 + static_cast<std::uint32_t>(digit % 16);
    }
    bool const surrogate = value >= 0xD800 && value < 0xE000;
    return surrogate ? lib::kReplacementCharacter : value;
}

std::string Cleaned(std::string_view text) {
    std::string cleaned;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (std::optional<std::uint32_t> const escaped = EscapedCharacter(text.substr(i))) {
            lib::AppendUtf8(cleaned, *escaped < ' ' ? lib::kReplacementCharacter : *escaped);
            i += 6;
        } else if (static_cast<unsigned char>(text[i]) < ' ' || text[i] == '\x7F') {
            lib::AppendUtf8(cleaned, lib::kReplacementCharacter);
        } else {
            cleaned += text[i];
        }
    }
    return cleaned;
}

} // namespace

std::string DecodeDxfText(std::string_view text, std::string_view codePage) {
    if (lib::IsUtf8(text))
        return Cleaned(text);
    std::string const name = ConverterName(Trimmed(codePage));
    std::optional<std::string> decoded;
    if (!name.empty() && !SameNoCase(name, "CP1252") && !SameNoCase(name, "UTF-8"))
        decoded = FromCodePage(text, name);
    std::string const readable = decoded && lib::IsUtf8(*decoded) ? *decoded : From1252(text);
    return Cleaned(readable);
}

std::string Quoted(std::string_view text) {
    constexpr std::size_t kMostShown = 40;
    std::size_t shown = kMostShown;
    while (shown < text.size() && shown + 3 > kMostShown && (static_cast<unsigned char>(text[shown]) & 0xC0u) == 0x80u)
        --shown; // not within a character
    return Joined("\"", DecodeDxfText(text.substr(0, shown), ""), shown < text.size() ? "...\"" : "\"");
}

} // namespace zvi::app
