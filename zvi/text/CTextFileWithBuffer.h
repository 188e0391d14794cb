#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"
#include "zvi/text/CTextFileBase.h"

#include <memory>

namespace zvi::lib {

/// A text file that is read in the encoding that its mark tells, and written in the one that is asked for. Use one
/// object for one file.
///
/// Which class reads: a file that begins with FF FE, FE FF, EF BB BF or 00 00 FE FF is given to the reader of UTF-16
/// (CUnicodeTextFileWithBuffer), any other to that of multi-byte text. That is deliberate, though only FF FE is text in
/// that reader's order of bytes: there is no reader of UTF-8 here, and a UTF-8 file with a mark comes out as units of
/// two bytes each. Keep such files away.
///
/// Copies share one file. A second `Open` lets go of the file before, which is closed unless a copy holds it.
class ZVI_API CTextFileWithBuffer {
public:
    /// `bufferSize` is that of the reader, in bytes or units.
    explicit CTextFileWithBuffer(int bufferSize = 4096);
    /// Shares the file.
    CTextFileWithBuffer(CTextFileWithBuffer const &other);
    CTextFileWithBuffer &operator=(CTextFileWithBuffer const &other);
    virtual ~CTextFileWithBuffer();

    /// Opens a file. With `CFile::kWrite` a non-zero `unicode` makes a new UTF-16 file with its mark, whatever the
    /// other flags are, and 0 opens a multi-byte file by the flags. Without it `unicode` does not count: the mark
    /// decides. Gives 1, or 0 when the file cannot be opened.
    int Open(wchar_t const *path, unsigned int flags, int unicode = 0);

    /// The operation of this name of `CTextFileBase`. Before `Open` it answers as that of a multi-byte file that is not
    /// open.
    void Close();
    int ReadString(CString &text);
    int ReadLine(CString &text);
    wchar_t *ReadString(wchar_t *buffer, int size);
    int Write(wchar_t const *text);
    int WriteFmt(wchar_t const *format, ...);
    int IsOpen();
    int WriteTagOpen(wchar_t const *tag);
    int WriteTagClose(wchar_t const *tag);
    int WriteData(wchar_t const *format, ...);

private:
    int OpenUnicode(wchar_t const *path, unsigned int flags);
    int OpenWith(std::shared_ptr<CTextFileBase> file, wchar_t const *path, unsigned int flags);

    std::shared_ptr<CTextFileBase> m_file; ///< never null
    int m_isUnicode = 0;
    int m_bufferSize;
};

} // namespace zvi::lib
