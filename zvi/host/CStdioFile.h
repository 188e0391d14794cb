#pragma once

#include "zvi/Export.h"
#include "zvi/host/CFile.h"
#include "zvi/host/CFileException.h"

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

/// A file behind a stream of the C library, in text mode or in binary mode.
///
/// In text mode a CR LF is read as LF on every host; LF is written as LF on POSIX and as CR LF on Windows. No other
/// byte has a meaning: a file goes on behind a Ctrl-Z. In binary mode every byte is what it is.
///
/// An object belongs to one thread at a time. Failures of reading, writing and closing raise `CFileException`.
class ZVI_API CStdioFile : public CFile {
public:
    /// No file.
    CStdioFile();
    /// Takes over a stream that is open, in text mode; what is written and read in it from now on passes here alone.
    /// Null is no file.
    explicit CStdioFile(std::FILE *stream);
    /// Closes the file if it is open. What cannot be written any more is lost without a word: call `Close` to be told.
    ~CStdioFile() override;

    /// Opens a file by the flags of `CFile` and gives 1; otherwise gives 0 and tells the reason through `error`. A
    /// folder cannot be opened. An object that is open already stays as it is: 0.
    int Open(wchar_t const *path, unsigned int flags, CFileException *error = nullptr);

    std::size_t Read(void *buffer, std::size_t count) override;
    void Close() override;

    /// Writes a text in the system's multi-byte encoding; null is an empty text.
    virtual void WriteString(wchar_t const *text);

    /// Writes bytes; in text mode a LF among them is a line end.
    void Write(void const *bytes, std::size_t count);

    /// Hands everything that was written to the system, which keeps it when this process is killed.
    void Flush();

    /// As `Write` and then `Flush`, in one call of the system.
    void WriteAtOnce(std::string_view bytes);

    /// Whether a `Read` has met the end of the file. A file that is not open is at its end.
    bool IsAtEnd() const;

protected:
    /// As `Read` and `Write` in binary mode, whatever the mode is.
    std::size_t ReadBytes(void *buffer, std::size_t count);
    void WriteBytes(std::string_view bytes);

    /// Writes UTF-16 units (one per element) little-endian, and in text mode CR LF for each LF on every host. At the
    /// start of a file U+FEFF goes first.
    void WriteUnits(std::wstring_view units);

    std::FILE *m_pStream = nullptr; ///< null when no file is open

private:
    std::size_t WithoutCarriageReturns(char *bytes, std::size_t count);
    bool IsFollowedByLineFeed();

    std::string_view HostBytes(std::string_view bytes, std::string &converted) const;

    std::unique_ptr<char[]> m_buffer; ///< of the stream; null when it has its own
    bool m_isText = true;
    bool m_isOutOfStep = true; ///< whether the stream may hold bytes that the file has not, or has read ahead
    bool m_mayNeedMark = true;
};
