#pragma once

#include "zvi/core/CString.h"
#include "zvi/host/CFile.h"
#include "zvi/host/CodePage.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace zvi::lib::test {

/// Lines as obvious readers give them, which tests and fuzz targets hold beside the readers of the library.
using Lines = std::vector<std::wstring>;

/// What stands between the line feeds.
inline Lines Split(std::wstring const &text) {
    Lines lines(1);
    for (wchar_t const unit : text)
        if (unit == L'\n')
            lines.emplace_back();
        else
            lines.back() += unit;
    return lines;
}

/// The lines of a file with these bytes as multi-byte text, and what follows the last line end.
inline Lines MultibyteLines(std::string bytes, bool isText) {
    for (std::size_t at = 0; isText && (at = bytes.find("\r\n", at)) != std::string::npos; ++at)
        bytes.erase(at, 1);
    return Split(host::WideOfMulti(bytes, host::kSystemCodePage));
}

/// The same of UTF-16: the unit in front of a line feed goes, and half a unit at the end is U+FFFD.
inline Lines Utf16Lines(std::string const &bytes) {
    auto const byte = [&bytes](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    std::wstring units;
    for (std::size_t i = 0; i < bytes.size(); i += 2)
        units += static_cast<wchar_t>(i + 1 < bytes.size() ? byte(i) | byte(i + 1) << 8 : 0xFFFD);
    Lines lines = Split(units);
    for (std::size_t i = 0; i + 1 < lines.size(); ++i)
        if (!lines[i].empty())
            lines[i].pop_back();
    return lines;
}

/// Whether a reader with such a buffer gives these lines, the last with the result 0: of two lines in three the first
/// units in pieces of `room` units, and the rest whole.
template <typename File>
bool GivesLines(std::wstring const &path, unsigned int flags, int bufferSize, Lines const &lines, std::size_t room) {
    File file(bufferSize);
    if (!file.Open(path.c_str(), flags))
        return false;
    std::vector<wchar_t> piece(room + 1);
    CString rest;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        bool const isLast = i + 1 == lines.size();
        std::wstring_view left = lines[i];
        bool isOver = false;
        for (std::size_t pieces = i % 3; pieces > 0 && !isOver; --pieces) {
            std::size_t const count = std::min(room, left.size());
            isOver = count < room;
            bool const isNull = !file.ReadString(piece.data(), static_cast<int>(piece.size()));
            if (isNull != (isOver && isLast) || !left.starts_with({piece.data(), count}) || piece[count])
                return false;
            left.remove_prefix(count);
        }
        if (!isOver && (!file.ReadLine(rest) != isLast || rest != CString(left)))
            return false;
    }
    return !file.ReadString(rest) && rest.IsEmpty();
}

} // namespace zvi::lib::test
