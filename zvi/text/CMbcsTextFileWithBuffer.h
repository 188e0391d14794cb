#pragma once

#include "zvi/Export.h"
#include "zvi/text/BufferedTextFile.h"

#include <string>

namespace zvi::lib {

/// A text file in the system's multi-byte encoding: UTF-8 on POSIX, the active code page on Windows.
///
/// A line ends at LF. In text mode a CR in front of it has gone; in binary mode it stays in the line. A line is
/// converted whole, so that no refill of the buffer cuts a character. Bytes that are no character become U+FFFD, or
/// what the host's conversion has for them; a zero stays a zero.
class ZVI_API CMbcsTextFileWithBuffer : public BufferedTextFile {
public:
    /// `bufferSize` counts bytes; below 2 it is 2.
    explicit CMbcsTextFileWithBuffer(int bufferSize = kDefaultBufferSize);
    ~CMbcsTextFileWithBuffer() override;

    int Write(wchar_t const *text) override;

protected:
    int ScanLine(std::wstring &units) override;

private:
    bool Refill();
};

} // namespace zvi::lib
