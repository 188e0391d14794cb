#pragma once

#include "zvi/Export.h"
#include "zvi/text/BufferedTextFile.h"

#include <cstdio>
#include <string>

namespace zvi::lib {

/// A UTF-16 text file, the lower byte of a unit first.
///
/// Reading: a line ends at the unit 000A, and the unit in front of it is always dropped, because it is the CR; a line
/// that ends in a bare LF thus loses its last character. Units come as they are, whatever they are: the mark of the
/// file is the first character of its first line, half of a surrogate pair stays one, and a last byte without a partner
/// is U+FFFD. Text mode changes nothing.
///
/// Writing: a mark at the start of the file, and in text mode CR LF for LF, on every host.
class ZVI_API CUnicodeTextFileWithBuffer : public BufferedTextFile {
public:
    /// `bufferSize` counts units; below 2 it is 2.
    explicit CUnicodeTextFileWithBuffer(int bufferSize = kDefaultBufferSize);
    /// Takes over a stream that is open, such as `host::OpenUnicodeStream` gives, with the flags that tell what it is
    /// for.
    CUnicodeTextFileWithBuffer(std::FILE *stream, unsigned int flags, int bufferSize = kDefaultBufferSize);
    ~CUnicodeTextFileWithBuffer() override;

    /// Writes in UTF-16; null is an empty text.
    void WriteString(wchar_t const *text) override;
    int Write(wchar_t const *text) override;

protected:
    int ScanLine(std::wstring &units) override;

private:
    bool Refill();
};

} // namespace zvi::lib
