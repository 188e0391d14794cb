#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"
#include "zvi/host/CStdioFile.h"

#include <cstdio>

namespace zvi::lib {

/// The face of a file of text lines. Operations give 1 when they did their job, 0 when not; a failure of the disk on
/// the way raises `CFileException`.
class ZVI_API CTextFileBase : public CStdioFile {
public:
    /// No file.
    CTextFileBase();
    /// Takes over a stream that is open.
    explicit CTextFileBase(std::FILE *stream);
    ~CTextFileBase() override;

    /// Sets the path that `GetFilePath` gives; null raises `std::invalid_argument`.
    void SetFilePath(wchar_t const *path) override;

    /// Closes the file and frees the read buffer.
    void Close() override = 0;

    /// As `ReadLine`.
    virtual int ReadString(CString &text) = 0;

    /// Opens a file by the flags of `CFile`; 0 when it cannot be opened, or when the object has a file open, which
    /// stays.
    virtual int Open(wchar_t const *path, unsigned int flags) = 0;

    /// The next line without its end. A last line without an end gives 0 with its text, so look at both; behind the
    /// last line the text is empty. Without an open file 0, with the text as it was.
    virtual int ReadLine(CString &text) = 0;

    /// The next line, at most `size - 1` units of it, with a closing zero; the rest of a longer one comes with the next
    /// call. Gives `buffer`, or null where `ReadLine` gives 0, with the text in the buffer all the same. A null buffer,
    /// a size below 1 and a file that is not open give null and leave the buffer alone.
    virtual wchar_t *ReadString(wchar_t *buffer, int size) = 0;

    /// Writes a text without adding a line end; gives 1. A file that is not open raises `CFileException`.
    virtual int Write(wchar_t const *text) = 0;

    /// Formats by the rules of `FormatWide` and writes; 0 unless the file is open for writing.
    virtual int WriteFmt(wchar_t const *format, ...) = 0;

    /// Whether a file is open.
    virtual int IsOpen() = 0;

    /// Writes a line with the tag behind the present indentation, which then grows by a step if that succeeded. The tag
    /// is written as it is given, brackets and all.
    virtual int WriteTagOpen(wchar_t const *tag) = 0;

    /// Takes a step from the indentation, also if it cannot write then, and writes a line with the tag. An indentation
    /// below 0 counts as one of its size.
    virtual int WriteTagClose(wchar_t const *tag) = 0;

    /// Writes a formatted line behind the present indentation; gives 1. Only the indentation is left out where
    /// `WriteFmt` would give 0: the text is then written as by `Write`.
    virtual int WriteData(wchar_t const *format, ...) = 0;
};

} // namespace zvi::lib
