#pragma once

#include "zvi/Export.h"
#include "zvi/text/CTextFileBase.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

namespace zvi::lib {

/// What the multi-byte and the UTF-16 text file have in common: the read buffer, lines and their parts, the
/// indentation. Reading goes through the buffer, writing straight to the stream. A line is as long as memory allows;
/// only one is held.
class ZVI_API BufferedTextFile : public CTextFileBase {
public:
    /// Buffer size of a reader that is given none.
    static constexpr int kDefaultBufferSize = 4096;
    /// Columns per level of indentation.
    static constexpr int kIndentStep = 4;

    /// Closes the file when it is open.
    ~BufferedTextFile() override;

    void Close() override;
    int ReadString(CString &text) override;
    int Open(wchar_t const *path, unsigned int flags) override;
    int ReadLine(CString &text) override;
    wchar_t *ReadString(wchar_t *buffer, int size) override;
    int WriteFmt(wchar_t const *format, ...) override;
    int IsOpen() override;
    int WriteTagOpen(wchar_t const *tag) override;
    int WriteTagClose(wchar_t const *tag) override;
    int WriteData(wchar_t const *format, ...) override;

protected:
    /// A buffer size below 2 counts as 2.
    explicit BufferedTextFile(int bufferSize);
    BufferedTextFile(std::FILE *stream, unsigned int flags, int bufferSize);

    /// Adds a step to the indentation, and takes one away.
    void Indent();
    void UnIndent();

    /// Appends the next line to `units` and gives the result of `ReadLine`.
    virtual int ScanLine(std::wstring &units) = 0;

    std::uint32_t m_openFlags = 0;           ///< as the file was opened
    std::unique_ptr<char[]> m_readBuffer;    ///< made by the first read
    std::int32_t m_bufferSize;               ///< in bytes; in units for UTF-16
    std::int32_t m_validCount = 0;           ///< how far the buffer is filled, in what the size counts
    std::int32_t m_readPosition = 0;         ///< the next place to scan
    std::int32_t m_indent = 0;               ///< columns
    std::int32_t m_indentStep = kIndentStep; ///< columns

private:
    void NextLine();
    bool CanWrite();

    std::wstring m_line;        ///< the line that was scanned last, until `ReadLine` gives it
    std::size_t m_given = 0;    ///< how much of it was given
    int m_lineResult = 0;       ///< what its scan gave
    bool m_hasLineRest = false; ///< whether something of it is still to be given, its end at least
};

} // namespace zvi::lib
