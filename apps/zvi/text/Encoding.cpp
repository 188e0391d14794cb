#include "apps/zvi/text/Encoding.h"

#include "zvi/core/Utf8.h"

#include <algorithm>
#include <cassert>
#include <cstdint>

namespace zvi::app {

namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;
constexpr std::uint32_t kLastCharacter = 0x10FFFF;
constexpr std::uint32_t kFirstBeyondBasicPlane = 0x10000;
constexpr std::uint32_t kFirstHigh = 0xD800;
constexpr std::uint32_t kFirstLow = 0xDC00;
constexpr std::uint32_t kBehindLow = 0xE000;
constexpr unsigned int kPairBits = 10;

struct Mark {
    std::string_view bytes;
    Encoding encoding;
};

/// A longer mark stands before the shorter one that begins it.
constexpr Mark kMarks[] = {
    {std::string_view("\xFF\xFE\0\0", 4), Encoding::kUtf32Little},
    {std::string_view("\0\0\xFE\xFF", 4), Encoding::kUtf32Big},
    {"\xEF\xBB\xBF", Encoding::kUtf8},
    {"\xFF\xFE", Encoding::kUtf16Little},
    {"\xFE\xFF", Encoding::kUtf16Big},
};

std::size_t MarkLength(Encoding encoding) {
    for (Mark const &mark : kMarks)
        if (mark.encoding == encoding)
            return mark.bytes.size();
    return 0;
}

bool IsHigh(std::uint32_t unit) {
    return unit >= kFirstHigh && unit < kFirstLow;
}

bool IsLow(std::uint32_t unit) {
    return unit >= kFirstLow && unit < kBehindLow;
}

/// Whether the text can only be UTF-16 without a mark: its zeros are upper bytes, and a quarter of the units has one.
bool LooksLikeUtf16(std::string_view bytes, std::size_t upperByte) {
    std::size_t zeros = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == '\0' && i % 2 != upperByte)
            return false;
        zeros += bytes[i] == '\0';
    }
    return bytes.size() % 2 == 0 && zeros > 0 && zeros * 8 >= bytes.size();
}

/// Collects characters, and where one is broken.
class Collector {
public:
    explicit Collector(std::size_t bytes) { m_decoded.text.reserve(bytes); }

    void Add(std::uint32_t character) {
        lib::AppendUtf8(m_decoded.text, character);
        m_line += character == '\n';
    }
    void AddBroken() {
        if (m_decoded.broken++ == 0)
            m_decoded.firstBrokenLine = m_line;
        Add(kReplacement);
    }
    DecodedText Take() { return std::move(m_decoded); }

private:
    DecodedText m_decoded;
    std::size_t m_line = 1;
};

void DecodeUtf8(std::string_view bytes, Collector &characters) {
    while (!bytes.empty()) {
        std::uint32_t character = 0;
        std::size_t const length = lib::ReadUtf8(bytes, character);
        if (length > 0)
            characters.Add(character);
        else
            characters.AddBroken();
        bytes.remove_prefix(std::max<std::size_t>(length, 1));
    }
}

/// The value of the first `size` bytes.
std::uint32_t UnitOf(std::string_view bytes, std::size_t size, bool lowFirst) {
    std::uint32_t unit = 0;
    for (std::size_t i = 0; i < size; ++i)
        unit = unit << 8 | static_cast<unsigned char>(bytes[lowFirst ? size - 1 - i : i]);
    return unit;
}

void DecodeUtf16(std::string_view bytes, bool lowFirst, Collector &characters) {
    constexpr std::size_t kUnitSize = 2;
    for (; bytes.size() >= kUnitSize; bytes.remove_prefix(kUnitSize)) {
        std::uint32_t const unit = UnitOf(bytes, kUnitSize, lowFirst);
        if (!IsHigh(unit) && !IsLow(unit)) {
            characters.Add(unit);
            continue;
        }
        bool const mayBePair = IsHigh(unit) && bytes.size() >= 2 * kUnitSize;
        std::uint32_t const low = mayBePair ? UnitOf(bytes.substr(kUnitSize), kUnitSize, lowFirst) : 0;
        if (!IsLow(low)) {
            characters.AddBroken();
            continue;
        }
        characters.Add(kFirstBeyondBasicPlane + ((unit - kFirstHigh) << kPairBits) + (low - kFirstLow));
        bytes.remove_prefix(kUnitSize);
    }
    if (!bytes.empty())
        characters.AddBroken();
}

void DecodeUtf32(std::string_view bytes, bool lowFirst, Collector &characters) {
    constexpr std::size_t kUnitSize = 4;
    for (; bytes.size() >= kUnitSize; bytes.remove_prefix(kUnitSize)) {
        std::uint32_t const unit = UnitOf(bytes, kUnitSize, lowFirst);
        if (unit > kLastCharacter || IsHigh(unit) || IsLow(unit))
            characters.AddBroken();
        else
            characters.Add(unit);
    }
    if (!bytes.empty())
        characters.AddBroken();
}

} // namespace

FoundEncoding FindEncoding(std::string_view bytes) {
    for (Mark const &mark : kMarks)
        if (bytes.starts_with(mark.bytes))
            return {mark.encoding, true};
    if (LooksLikeUtf16(bytes, 1))
        return {Encoding::kUtf16Little, false};
    if (LooksLikeUtf16(bytes, 0))
        return {Encoding::kUtf16Big, false};
    if (std::all_of(bytes.begin(), bytes.end(), [](char byte) { return static_cast<unsigned char>(byte) < 0x80; }))
        return {Encoding::kAscii, false};
    return {lib::IsUtf8(bytes) ? Encoding::kUtf8 : Encoding::kUnknown, false};
}

std::string EncodingName(Encoding encoding) {
    switch (encoding) {
    case Encoding::kAscii:
        return "ASCII";
    case Encoding::kUtf8:
        return "UTF-8";
    case Encoding::kUtf16Little:
        return "UTF-16, lower byte first";
    case Encoding::kUtf16Big:
        return "UTF-16, higher byte first";
    case Encoding::kUtf32Little:
        return "UTF-32, lower byte first";
    case Encoding::kUtf32Big:
        return "UTF-32, higher byte first";
    case Encoding::kUnknown:
        break;
    }
    return "unknown, not UTF-8";
}

DecodedText Decode(std::string_view bytes, FoundEncoding const &found) {
    Collector characters(bytes.size());
    if (found.hasMark)
        bytes.remove_prefix(MarkLength(found.encoding));
    switch (found.encoding) {
    case Encoding::kUtf16Little:
    case Encoding::kUtf16Big:
        DecodeUtf16(bytes, found.encoding == Encoding::kUtf16Little, characters);
        break;
    case Encoding::kUtf32Little:
    case Encoding::kUtf32Big:
        DecodeUtf32(bytes, found.encoding == Encoding::kUtf32Little, characters);
        break;
    default:
        DecodeUtf8(bytes, characters);
    }
    return characters.Take();
}

std::string Utf16Bytes(std::string_view utf8) {
    assert(lib::IsUtf8(utf8));
    std::string bytes = "\xFF\xFE";
    bytes.reserve(2 * utf8.size() + 2);
    auto const append = [&bytes](std::uint32_t unit) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    };
    while (!utf8.empty()) {
        std::uint32_t character = kReplacement;
        std::size_t const length = lib::ReadUtf8(utf8, character);
        utf8.remove_prefix(std::max<std::size_t>(length, 1));
        if (character < kFirstBeyondBasicPlane) {
            append(character);
            continue;
        }
        append(kFirstHigh + ((character - kFirstBeyondBasicPlane) >> kPairBits));
        append(kFirstLow + ((character - kFirstBeyondBasicPlane) & ((1U << kPairBits) - 1)));
    }
    return bytes;
}

} // namespace zvi::app
