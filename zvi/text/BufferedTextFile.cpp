#include "zvi/text/BufferedTextFile.h"

#include <algorithm>
#include <cstdarg>
#include <limits>
#include <stdexcept>

namespace zvi::lib {

namespace {

/// Room for one byte or unit beside the one that is never filled.
constexpr int kLeastBufferSize = 2;

/// Capacity for units that is kept from line to line; more, which one long line has taken, is given back.
constexpr std::size_t kKeptCapacity = std::size_t{1} << 16;

void CheckLength(std::wstring const &line) {
    if (line.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        throw std::length_error("line too long for a text");
}

} // namespace

BufferedTextFile::BufferedTextFile(int bufferSize) : m_bufferSize(std::max(bufferSize, kLeastBufferSize)) {}

BufferedTextFile::BufferedTextFile(std::FILE *stream, unsigned int flags, int bufferSize)
    : CTextFileBase(stream), m_openFlags(flags), m_bufferSize(std::max(bufferSize, kLeastBufferSize)) {}

BufferedTextFile::~BufferedTextFile() = default;

int BufferedTextFile::Open(wchar_t const *path, unsigned int flags) {
    if (IsOpen())
        return 0;
    if (!CStdioFile::Open(path, flags))
        return 0;
    m_openFlags = flags;
    return 1;
}

int BufferedTextFile::IsOpen() {
    return m_pStream ? 1 : 0;
}

void BufferedTextFile::Close() {
    m_readBuffer.reset();
    m_validCount = 0;
    m_hasLineRest = false;
    CStdioFile::Close(); // NOLINT(bugprone-parent-virtual-call): pure in between
}

void BufferedTextFile::NextLine() {
    m_line.clear();
    if (m_line.capacity() > kKeptCapacity)
        m_line.shrink_to_fit();
    m_given = 0;
    m_lineResult = ScanLine(m_line);
    CheckLength(m_line);
}

int BufferedTextFile::ReadLine(CString &text) {
    if (!IsOpen())
        return 0;
    if (!m_hasLineRest)
        NextLine();
    m_hasLineRest = false;
    if (m_given != 0)
        m_line.erase(0, m_given);
    // The text's memory is that of the next line.
    text.Swap(m_line);
    return m_lineResult;
}

int BufferedTextFile::ReadString(CString &text) {
    return ReadLine(text);
}

wchar_t *BufferedTextFile::ReadString(wchar_t *buffer, int size) {
    if (!IsOpen() || !buffer || size < 1)
        return nullptr;
    auto const room = static_cast<std::size_t>(size) - 1;
    buffer[0] = L'\0';
    if (room == 0)
        return buffer;
    if (!m_hasLineRest)
        NextLine();
    std::size_t const count = m_line.copy(buffer, room, m_given);
    buffer[count] = L'\0';
    m_given += count;
    // A full buffer ends the scan before the end of the line is looked at.
    m_hasLineRest = count == room;
    return m_hasLineRest || m_lineResult ? buffer : nullptr;
}

bool BufferedTextFile::CanWrite() {
    return IsOpen() && (m_openFlags & (kWrite | kReadWrite));
}

int BufferedTextFile::WriteFmt(wchar_t const *format, ...) {
    if (!CanWrite())
        return 0;
    CString text;
    std::va_list arguments;
    va_start(arguments, format);
    text.FormatV(format, arguments);
    va_end(arguments);
    return Write(text);
}

int BufferedTextFile::WriteTagOpen(wchar_t const *tag) {
    if (!WriteFmt(L"%*s%s\n", m_indent, L"", tag))
        return 0;
    Indent();
    return 1;
}

int BufferedTextFile::WriteTagClose(wchar_t const *tag) {
    UnIndent();
    return WriteFmt(L"%*s%s\n", m_indent, L"", tag);
}

int BufferedTextFile::WriteData(wchar_t const *format, ...) {
    WriteFmt(L"%*s", m_indent, L"");
    CString text;
    std::va_list arguments;
    va_start(arguments, format);
    text.FormatV(format, arguments);
    va_end(arguments);
    text += L'\n';
    return Write(text);
}

void BufferedTextFile::Indent() {
    m_indent += m_indentStep;
}

void BufferedTextFile::UnIndent() {
    m_indent -= m_indentStep;
}

} // namespace zvi::lib
