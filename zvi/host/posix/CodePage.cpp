#include "zvi/host/CodePage.h"

#include "zvi/base/Utf8Sequence.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <cerrno>
#include <cstring>

namespace zvi::host {

namespace {

namespace base = lib::base;

constexpr std::uint32_t kReplacement = 0xFFFD;

/// What a byte of no character is added to: a surrogate that no text has.
constexpr std::uint32_t kByteUnit = base::kFirstLowSurrogate;
constexpr std::uint32_t kFirstByte = 0x80;
constexpr std::uint32_t kLastByte = 0xFF;

struct NamedPage {
    unsigned int number;
    char const *name;
};

/// Pages whose converter does not bear the page's number.
constexpr NamedPage kNamedPages[] = {
    {708, "ASMO-708"},
    {936, "GBK"},
    {949, "UHC"},
    {950, "BIG5"},
    {1361, "JOHAB"},
    {10000, "MACINTOSH"},
    {10007, "MAC-CYRILLIC"},
    {10029, "MAC-CENTRALEUROPE"},
    {10079, "MAC-IS"},
    {20127, "ASCII"},
    {20866, "KOI8-R"},
    {20932, "EUC-JP"},
    {20936, "GB2312"},
    {20949, "EUC-KR"},
    {21866, "KOI8-U"},
    {28591, "ISO-8859-1"},
    {28592, "ISO-8859-2"},
    {28593, "ISO-8859-3"},
    {28594, "ISO-8859-4"},
    {28595, "ISO-8859-5"},
    {28596, "ISO-8859-6"},
    {28597, "ISO-8859-7"},
    {28598, "ISO-8859-8"},
    {28599, "ISO-8859-9"},
    {28603, "ISO-8859-13"},
    {28605, "ISO-8859-15"},
    {38598, "ISO-8859-8"},
    {50220, "ISO-2022-JP"},
    {50221, "ISO-2022-JP"},
    {50222, "ISO-2022-JP"},
    {50225, "ISO-2022-KR"},
    {51932, "EUC-JP"},
    {51936, "GB2312"},
    {51949, "EUC-KR"},
    {54936, "GB18030"},
    {65000, "UTF-7"},
};

char const *const kUnits = std::endian::native == std::endian::little ? "UTF-16LE" : "UTF-16BE";

bool IsUtf8Page(unsigned int codePage) {
    return codePage == kSystemCodePage || codePage == kUtf8CodePage;
}

/// The name by which converters know a page, if they do.
std::string ConverterName(unsigned int codePage) {
    for (NamedPage const &page : kNamedPages)
        if (page.number == codePage)
            return page.name;
    std::string const digits = std::to_string(codePage);
    return "CP" + std::string(digits.size() < 3 ? 3 - digits.size() : 0, '0') + digits;
}

/// Converts between a code page and units.
class Converter {
public:
    Converter(std::string const &to, std::string const &from) : m_handle(iconv_open(to.c_str(), from.c_str())) {}
    ~Converter() {
        if (IsOpen())
            iconv_close(m_handle);
    }
    Converter(Converter const &) = delete;
    Converter &operator=(Converter const &) = delete;

    bool IsOpen() const { return m_handle != None(); }

    /// Converts as much as goes; `left` shrinks to what remains. Says whether the whole went.
    bool Run(std::string_view &left, std::string &converted) {
        for (;;) {
            std::array<char, 4096> buffer;
            char *from = const_cast<char *>(left.data()); // which is only read
            std::size_t count = left.size();
            char *to = buffer.data();
            std::size_t room = buffer.size();
            // Without a text, what brings the page back to its first state.
            std::size_t const result =
                iconv(m_handle, left.empty() ? nullptr : &from, left.empty() ? nullptr : &count, &to, &room);
            int const failure = result == kFailed ? errno : 0;
            left.remove_prefix(left.size() - count);
            converted.append(buffer.data(), buffer.size() - room);
            if (failure == 0)
                return true;
            if (failure != E2BIG)
                return false;
        }
    }

private:
    static constexpr auto kFailed = static_cast<std::size_t>(-1);
    static iconv_t None() { return reinterpret_cast<iconv_t>(-1); } // what iconv_open gives when it fails

    iconv_t m_handle;
};

void AppendUnit(std::wstring &units, std::uint32_t unit) {
    units.push_back(static_cast<wchar_t>(unit));
}

/// Appends what an iconv to UTF-16 gave.
void AppendUnitBytes(std::wstring &units, std::string_view bytes) {
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        char16_t unit = 0;
        std::memcpy(&unit, bytes.data() + i, sizeof unit);
        AppendUnit(units, unit);
    }
}

void AppendWideOfPage(std::wstring &units, std::string_view text, unsigned int codePage) {
    Converter converter(kUnits, ConverterName(codePage));
    std::string bytes;
    while (converter.IsOpen() && !text.empty()) {
        bytes.clear();
        bool const isWhole = converter.Run(text, bytes);
        AppendUnitBytes(units, bytes);
        if (!isWhole && !text.empty()) {
            AppendUnit(units, kReplacement);
            text.remove_prefix(1);
        }
    }
}

constexpr std::size_t kBlock = 16;

/// Whether all bytes of a block are ASCII.
bool AreAscii(char const *block) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080;
    std::uint64_t first = 0;
    std::uint64_t second = 0;
    std::memcpy(&first, block, sizeof first);
    std::memcpy(&second, block + sizeof first, sizeof second);
    static_assert(sizeof first + sizeof second == kBlock);
    return ((first | second) & kHighBits) == 0;
}

/// A block of ASCII as units.
void WidenBlock(char const *from, wchar_t *to) {
    // A copy of its own lets all of it be widened at once.
    unsigned char block[kBlock];
    std::memcpy(block, from, kBlock);
    for (std::size_t i = 0; i < kBlock; ++i)
        to[i] = static_cast<wchar_t>(block[i]);
}

/// Writes the ASCII at the start of the text to `to`, and gives its length.
std::size_t WriteAscii(wchar_t *to, std::string_view text) {
    std::size_t count = 0;
    for (; text.size() - count >= kBlock && AreAscii(text.data() + count); count += kBlock)
        WidenBlock(text.data() + count, to + count);
    // The rest is the end of one more block, whose beginning is written once more.
    std::size_t const last = text.size() - std::min(text.size(), kBlock);
    if (last < count && count < text.size() && AreAscii(text.data() + last)) {
        WidenBlock(text.data() + last, to + last);
        return text.size();
    }
    for (; count < text.size() && static_cast<unsigned char>(text[count]) < kFirstByte; ++count)
        to[count] = static_cast<wchar_t>(text[count]);
    return count;
}

/// The character at `at`, a place in the text, which moves to its last unit; half of a pair stays what it is.
std::uint32_t ReadUnits(std::wstring_view units, std::size_t &at) {
    assert(at < units.size());
    auto const unit = static_cast<std::uint32_t>(units[at]);
    if (base::IsHighSurrogate(unit) && at + 1 < units.size() &&
        base::IsLowSurrogate(static_cast<std::uint32_t>(units[at + 1])))
        return base::CharacterOf(unit, static_cast<std::uint32_t>(units[++at]));
    return unit;
}

/// The same, with the replacement character for what is none.
std::uint32_t CharacterAt(std::wstring_view units, std::size_t &at) {
    std::uint32_t const character = ReadUnits(units, at);
    return base::IsCharacter(character) ? character : kReplacement;
}

/// Writes the units to `to`, which has room for as many as there are bytes, and gives their end. `unitOfByte` gives the
/// unit of a byte that belongs to no character.
template <typename UnitOfByte>
wchar_t *WriteWideOfUtf8(wchar_t *to, std::string_view text, UnitOfByte unitOfByte) {
    while (!text.empty()) {
        std::size_t const plain = WriteAscii(to, text);
        to += plain;
        text.remove_prefix(plain);
        if (text.empty())
            break;
        std::uint32_t character = 0;
        std::size_t const length = base::ReadUtf8(text, character);
        if (length == 0)
            character = unitOfByte(static_cast<unsigned char>(text.front()));
        if (character >= base::kFirstBeyondBasicPlane) {
            *to++ = static_cast<wchar_t>(base::HighSurrogate(character));
            *to++ = static_cast<wchar_t>(base::LowSurrogate(character));
        } else {
            *to++ = static_cast<wchar_t>(character);
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return to;
}

void AppendWideOfUtf8(std::wstring &units, std::string_view text) {
    std::size_t const used = units.size();
    units.resize(used + text.size());
    wchar_t const *const end = WriteWideOfUtf8(units.data() + used, text, [](unsigned char) { return kReplacement; });
    units.resize(static_cast<std::size_t>(end - units.data()));
}

/// Units of ASCII from `first` on, a place in the text or its end. Without a way out of a block its elements are looked
/// at several at a time.
std::size_t AsciiUnits(std::wstring_view units, std::size_t first) {
    constexpr std::uint32_t kForeignBits = ~std::uint32_t{0x7F};
    assert(first <= units.size());
    std::size_t end = first;
    for (; units.size() - end >= kBlock; end += kBlock) {
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < kBlock; ++i)
            bits |= static_cast<std::uint32_t>(units[end + i]);
        if (bits & kForeignBits)
            break;
    }
    while (end < units.size() && !(static_cast<std::uint32_t>(units[end]) & kForeignBits))
        ++end;
    return end - first;
}

/// Appends ASCII as it is, and of the rest what `append` makes of a character, in which half of a pair is one.
template <typename Append>
void AppendUtf8By(std::string &text, std::wstring_view units, Append append) {
    for (std::size_t at = 0; at < units.size(); ++at) {
        std::size_t const plain = AsciiUnits(units, at);
        std::size_t const used = text.size();
        text.resize(used + plain);
        std::transform(units.data() + at, units.data() + at + plain, text.data() + used,
                       [](wchar_t unit) { return static_cast<char>(unit); });
        at += plain;
        if (at < units.size())
            append(text, ReadUnits(units, at));
    }
}

void AppendUtf8OfWide(std::string &text, std::wstring_view units) {
    AppendUtf8By(text, units, [](std::string &to, std::uint32_t character) {
        base::AppendUtf8(to, base::IsCharacter(character) ? character : kReplacement);
    });
}

/// The units as the bytes of well-formed UTF-16.
std::string UnitBytes(std::wstring_view units) {
    std::string bytes;
    bytes.reserve(2 * units.size());
    auto const append = [&bytes](std::uint32_t value) {
        auto const unit = static_cast<char16_t>(value);
        char pair[sizeof unit];
        std::memcpy(pair, &unit, sizeof unit);
        bytes.append(pair, sizeof unit);
    };
    for (std::size_t i = 0; i < units.size(); ++i) {
        std::uint32_t const character = CharacterAt(units, i);
        if (character >= base::kFirstBeyondBasicPlane)
            append(base::HighSurrogate(character));
        append(character >= base::kFirstBeyondBasicPlane ? base::LowSurrogate(character) : character);
    }
    return bytes;
}

/// Bytes of the character at the start of well-formed UTF-16, which is not empty.
std::size_t UnitBytesOfFirst(std::string_view bytes) {
    char16_t unit = 0;
    assert(bytes.size() >= sizeof unit);
    std::memcpy(&unit, bytes.data(), sizeof unit);
    return base::IsHighSurrogate(unit) ? 2 * sizeof unit : sizeof unit;
}

void AppendPageOfWide(std::string &text, std::wstring_view units, unsigned int codePage) {
    Converter converter(ConverterName(codePage), kUnits);
    if (!converter.IsOpen())
        return;
    std::string const bytes = UnitBytes(units);
    std::string const question = UnitBytes(L"?");
    std::string_view left = bytes;
    while (!left.empty() && !converter.Run(left, text)) {
        std::string_view inItsPlace = question;
        converter.Run(inItsPlace, text);
        left.remove_prefix(UnitBytesOfFirst(left));
    }
    converter.Run(left, text);
}

} // namespace

bool HasCodePage(unsigned int codePage) {
    return IsUtf8Page(codePage) || Converter(kUnits, ConverterName(codePage)).IsOpen();
}

std::wstring WideOfMulti(std::string_view text, unsigned int codePage) {
    std::wstring units;
    AppendWideOfMulti(units, text, codePage);
    return units;
}

void AppendWideOfMulti(std::wstring &units, std::string_view text, unsigned int codePage) {
    if (IsUtf8Page(codePage))
        AppendWideOfUtf8(units, text);
    else
        AppendWideOfPage(units, text, codePage);
}

std::string MultiOfWide(std::wstring_view units, unsigned int codePage) {
    std::string text;
    AppendMultiOfWide(text, units, codePage);
    return text;
}

void AppendMultiOfWide(std::string &text, std::wstring_view units, unsigned int codePage) {
    if (IsUtf8Page(codePage))
        AppendUtf8OfWide(text, units);
    else
        AppendPageOfWide(text, units, codePage);
}

std::size_t WideOfBytes(std::string_view bytes, wchar_t *units) {
    wchar_t const *const end = WriteWideOfUtf8(units, bytes, [](unsigned char byte) { return kByteUnit + byte; });
    return static_cast<std::size_t>(end - units);
}

std::string BytesOfWide(std::wstring_view units) {
    std::string bytes;
    AppendUtf8By(bytes, units, [](std::string &to, std::uint32_t character) {
        if (character >= kByteUnit + kFirstByte && character <= kByteUnit + kLastByte)
            to += static_cast<char>(character - kByteUnit);
        else
            base::AppendUtf8(to, base::IsCharacter(character) ? character : kReplacement);
    });
    return bytes;
}

} // namespace zvi::host
