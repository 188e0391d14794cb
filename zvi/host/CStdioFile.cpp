#include "zvi/host/CStdioFile.h"

#include "zvi/host/CodePage.h"
#include "zvi/host/Files.h"
#include "zvi/host/StreamOpeningDetail.h"

#include <cerrno>
#include <cstring>
#include <new>

namespace {

using namespace zvi;

constexpr char kLineFeed = '\n';
constexpr char kCarriageReturn = '\r';
constexpr wchar_t kByteOrderMark = 0xFEFF;

/// Bytes that a stream reads at a time. With 64 KB the calls of the system cost little beside the reading.
constexpr std::size_t kStreamBufferSize = std::size_t{1} << 16;

[[noreturn]] void RaiseNotOpen() {
    throw CFileException(CFileException::kInvalidFile, 0);
}

/// Raises what the C library has just told of.
[[noreturn]] void RaiseStreamError(int error) {
    throw CFileException(host::CauseOf(error), error);
}

/// The unit as its two bytes, the lower one first.
void AppendUnitBytes(std::string &bytes, wchar_t unit) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(static_cast<unsigned int>(unit) >> 8 & 0xFF);
}

} // namespace

CStdioFile::CStdioFile() = default;

CStdioFile::CStdioFile(std::FILE *stream) : m_pStream(stream) {
    if (stream)
        host::UseBinaryMode(stream);
}

CStdioFile::~CStdioFile() {
    if (m_pStream)
        static_cast<void>(std::fclose(m_pStream));
}

int CStdioFile::Open(wchar_t const *path, unsigned int flags, CFileException *error) {
    CFileException failure(CFileException::kInvalidFile, 0);
    std::FILE *const stream = m_pStream ? nullptr : host::OpenByFlags(path ? path : L"", flags, failure);
    if (!stream) {
        if (error)
            *error = failure;
        return 0;
    }
    m_pStream = stream;
    // A size alone is a wish that C libraries are free to ignore, and some do. Without memory the stream has its own.
    m_buffer.reset(new (std::nothrow) char[kStreamBufferSize]);
    if (m_buffer)
        static_cast<void>(std::setvbuf(stream, m_buffer.get(), _IOFBF, kStreamBufferSize));
    m_isText = !(flags & kBinary);
    m_mayNeedMark = true;
    try {
        CFile::SetFilePath(path);
    } catch (...) {
        static_cast<void>(std::fclose(m_pStream));
        m_pStream = nullptr;
        throw;
    }
    return 1;
}

void CStdioFile::Close() {
    if (!m_pStream)
        return;
    std::FILE *const stream = m_pStream;
    m_pStream = nullptr;
    errno = 0;
    bool const isClosed = std::fclose(stream) == 0;
    int const error = errno;
    m_buffer.reset();
    if (!isClosed)
        RaiseStreamError(error);
}

std::size_t CStdioFile::ReadBytes(void *buffer, std::size_t count) {
    if (!m_pStream)
        RaiseNotOpen();
    errno = 0;
    m_isOutOfStep = true;
    std::size_t const read = std::fread(buffer, 1, count, m_pStream);
    // A stream that is open for writing alone does not tell of an error everywhere.
    if (read == 0 && count > 0 && !std::feof(m_pStream)) {
        int const error = errno;
        std::clearerr(m_pStream);
        RaiseStreamError(error ? error : EBADF);
    }
    return read;
}

std::size_t CStdioFile::Read(void *buffer, std::size_t count) {
    std::size_t const read = ReadBytes(buffer, count);
    return m_isText ? WithoutCarriageReturns(static_cast<char *>(buffer), read) : read;
}

bool CStdioFile::IsFollowedByLineFeed() {
    int const next = std::getc(m_pStream);
    if (next != EOF)
        std::ungetc(next, m_pStream);
    return next == kLineFeed;
}

/// Closes the gaps where a LF follows, also as the first byte behind these; gives the number of bytes that stay.
std::size_t CStdioFile::WithoutCarriageReturns(char *bytes, std::size_t count) {
    char const *const end = bytes + count;
    char *to = bytes;
    for (char const *from = bytes; from < end;) {
        auto const *const found =
            static_cast<char const *>(std::memchr(from, kCarriageReturn, static_cast<std::size_t>(end - from)));
        char const *const stop = found ? found : end;
        auto const plain = static_cast<std::size_t>(stop - from);
        if (to != from)
            std::memmove(to, from, plain);
        to += plain;
        from = stop;
        if (found) {
            bool const endsLine = found + 1 < end ? found[1] == kLineFeed : IsFollowedByLineFeed();
            ++from;
            if (!endsLine)
                *to++ = kCarriageReturn;
        }
    }
    // A lone CR of a pair that the buffer cuts: its LF is what is read.
    if (to == bytes && count > 0)
        return ReadBytes(bytes, 1);
    return static_cast<std::size_t>(to - bytes);
}

void CStdioFile::WriteBytes(std::string_view bytes) {
    if (!m_pStream)
        RaiseNotOpen();
    errno = 0;
    m_isOutOfStep = true;
    if (std::fwrite(bytes.data(), 1, bytes.size(), m_pStream) != bytes.size())
        RaiseStreamError(errno);
}

/// The bytes as the host keeps them, in `converted` where they differ.
std::string_view CStdioFile::HostBytes(std::string_view bytes, std::string &converted) const {
    if (!m_isText || host::LineEnd().size() == 1)
        return bytes;
    for (char const byte : bytes) {
        if (byte == kLineFeed)
            converted += kCarriageReturn;
        converted += byte;
    }
    return converted;
}

void CStdioFile::Write(void const *bytes, std::size_t count) {
    std::string converted;
    WriteBytes(HostBytes({static_cast<char const *>(bytes), count}, converted));
}

void CStdioFile::WriteAtOnce(std::string_view bytes) {
    if (!m_pStream || m_isOutOfStep)
        Flush();
    m_mayNeedMark = false;
    std::string converted;
    if (int const error = host::WriteThrough(m_pStream, HostBytes(bytes, converted)); error != 0)
        RaiseStreamError(error);
}

void CStdioFile::WriteString(wchar_t const *text) {
    std::string const bytes = host::MultiOfWide(text ? text : L"", host::kSystemCodePage);
    Write(bytes.data(), bytes.size());
}

void CStdioFile::WriteUnits(std::wstring_view units) {
    std::string bytes;
    bytes.reserve(2 * units.size() + 2);
    if (m_mayNeedMark && m_pStream && std::ftell(m_pStream) == 0)
        AppendUnitBytes(bytes, kByteOrderMark);
    m_mayNeedMark = false;
    for (wchar_t const unit : units) {
        if (unit == L'\n' && m_isText)
            AppendUnitBytes(bytes, L'\r');
        AppendUnitBytes(bytes, unit);
    }
    WriteBytes(bytes);
}

void CStdioFile::Flush() {
    if (!m_pStream)
        RaiseNotOpen();
    errno = 0;
    if (std::fflush(m_pStream) != 0)
        RaiseStreamError(errno);
    m_isOutOfStep = false;
}

bool CStdioFile::IsAtEnd() const {
    return !m_pStream || std::feof(m_pStream);
}
