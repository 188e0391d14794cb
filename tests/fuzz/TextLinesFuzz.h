#pragma once

#include "tests/fuzz/FuzzFile.h"
#include "zvi/core/CString.h"
#include "zvi/host/CFile.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace zvi::fuzz {

using Lines = std::vector<std::wstring>;

/// The lines of a file and the rest behind them by `ReadLine`, or in pieces of at most `size - 1` units.
template <typename File>
Lines LinesOf(std::wstring const &path, int bufferSize, unsigned int flags, int size) {
    File file(bufferSize);
    Check(file.Open(path.c_str(), flags) == 1);
    Lines lines;
    CString line;
    std::vector<wchar_t> piece(static_cast<std::size_t>(size));
    for (int result = 1; result;) {
        lines.emplace_back();
        // A first piece now and then; the line goes on behind it.
        if (lines.size() % 3 == 0 && file.ReadString(piece.data(), size))
            lines.back() = L"(piece)";
        result = file.ReadLine(line);
        lines.back().append(line.GetString(), static_cast<std::size_t>(line.GetLength()));
    }
    return lines;
}

/// `ReadLine` alone.
template <typename File>
Lines WholeLinesOf(std::wstring const &path, int bufferSize, unsigned int flags) {
    File file(bufferSize);
    Check(file.Open(path.c_str(), flags) == 1);
    Lines lines;
    CString line;
    for (int result = 1; result;) {
        result = file.ReadLine(line);
        lines.emplace_back(line.GetString(), static_cast<std::size_t>(line.GetLength()));
    }
    return lines;
}

/// What a reader must give at two buffer sizes that the first bytes choose; the rest of the bytes is the file.
template <typename File, typename Oracle>
void CheckLines(std::uint8_t const *data, std::size_t size, Oracle oracle) {
    if (size < 2)
        return;
    std::string const bytes(data + 2, data + size);
    std::wstring const path = FileWith(data + 2, size - 2);
    unsigned int const flags = data[0] & 1U ? CFile::kBinary : CFile::kRead;
    int const bufferSize = data[1];
    Lines const expected = oracle(bytes, flags);
    Check(WholeLinesOf<File>(path, bufferSize, flags) == expected);
    Check(WholeLinesOf<File>(path, 4096, flags) == expected);
    int const pieceSize = 1 + data[0] / 2;
    Check(LinesOf<File>(path, bufferSize, flags, pieceSize) == LinesOf<File>(path, 4096, flags, pieceSize));
}

} // namespace zvi::fuzz
