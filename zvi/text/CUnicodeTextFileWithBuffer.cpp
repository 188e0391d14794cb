#include "zvi/text/CUnicodeTextFileWithBuffer.h"

#include "zvi/core/WideUnits.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>

namespace zvi::lib {

namespace {

static_assert(std::endian::native == std::endian::little, "units are copied from the file as they are");

constexpr std::size_t kUnitSize = 2;
constexpr char kLineFeedLow = '\n';

/// Index of the first LF among `count` units; `count` without one. A LF is looked for by its lower byte, which is rare
/// in anything else.
std::size_t FindLineFeed(char const *units, std::size_t count) {
    char const *const end = units + count * kUnitSize;
    for (char const *at = units; at < end; ++at) {
        at = static_cast<char const *>(std::memchr(at, kLineFeedLow, static_cast<std::size_t>(end - at)));
        if (!at)
            break;
        auto const offset = static_cast<std::size_t>(at - units);
        if (offset % kUnitSize == 0 && at[1] == '\0')
            return offset / kUnitSize;
    }
    return count;
}

/// `count` units as elements.
template <std::size_t count>
void Widen(char const *units, wchar_t *to) {
    // A copy of their own lets them be widened at once.
    char16_t block[count];
    std::memcpy(block, units, sizeof block);
    for (std::size_t i = 0; i < count; ++i)
        to[i] = static_cast<wchar_t>(block[i]);
}

void AppendUnitsOf(std::wstring &line, char const *units, std::size_t count) {
    constexpr std::size_t kBlock = 8;
    std::size_t const before = line.size();
    line.resize(before + count);
    wchar_t *const to = line.data() + before;
    if (count < kBlock) {
        for (std::size_t i = 0; i < count; ++i)
            Widen<1>(units + i * kUnitSize, to + i);
        return;
    }
    std::size_t const last = count - kBlock;
    for (std::size_t i = 0; i < last; i += kBlock)
        Widen<kBlock>(units + i * kUnitSize, to + i);
    // It may share units with the block before.
    Widen<kBlock>(units + last * kUnitSize, to + last);
}

} // namespace

CUnicodeTextFileWithBuffer::CUnicodeTextFileWithBuffer(int bufferSize) : BufferedTextFile(bufferSize) {}

CUnicodeTextFileWithBuffer::CUnicodeTextFileWithBuffer(std::FILE *stream, unsigned int flags, int bufferSize)
    : BufferedTextFile(stream, flags, bufferSize) {}

CUnicodeTextFileWithBuffer::~CUnicodeTextFileWithBuffer() = default;

/// A file that is cut within a unit has an odd number of bytes in its last refill alone.
bool CUnicodeTextFileWithBuffer::Refill() {
    std::size_t const wanted = (static_cast<std::size_t>(m_bufferSize) - 1) * kUnitSize;
    std::size_t read = ReadBytes(m_readBuffer.get(), wanted);
    if (read % kUnitSize != 0) {
        char16_t const replacement = kReplacementCharacter;
        std::memcpy(m_readBuffer.get() + read - 1, &replacement, kUnitSize);
        ++read;
    }
    m_validCount = static_cast<std::int32_t>(read / kUnitSize);
    m_readPosition = 0;
    return m_validCount > 0;
}

int CUnicodeTextFileWithBuffer::ScanLine(std::wstring &units) {
    if (!m_readBuffer)
        m_readBuffer = std::make_unique<char[]>(static_cast<std::size_t>(m_bufferSize) * kUnitSize);
    do {
        std::int32_t const left = std::max(m_validCount - m_readPosition, 0);
        auto const count = static_cast<std::size_t>(left);
        char const *const unread = m_readBuffer.get() + static_cast<std::size_t>(m_validCount - left) * kUnitSize;
        std::size_t const length = FindLineFeed(unread, count);
        AppendUnitsOf(units, unread, length);
        m_readPosition += static_cast<std::int32_t>(length);
        if (length < count) {
            ++m_readPosition;
            if (!units.empty())
                units.pop_back(); // the CR
            return 1;
        }
    } while (Refill());
    return IsAtEnd() ? 0 : 1;
}

void CUnicodeTextFileWithBuffer::WriteString(wchar_t const *text) {
    std::wstring units;
    AppendWide(units, text ? text : L"");
    WriteUnits(units);
}

int CUnicodeTextFileWithBuffer::Write(wchar_t const *text) {
    WriteString(text);
    return 1;
}

} // namespace zvi::lib
