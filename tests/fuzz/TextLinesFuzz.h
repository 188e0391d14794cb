#pragma once

#include "tests/fuzz/FuzzFile.h"
#include "tests/text/TextLines.h"

namespace zvi::fuzz {

/// What a reader must give at a buffer size, a mode and a size of pieces that the first bytes choose, and at a usual
/// buffer size; the rest of the bytes is the file.
template <typename File, typename Oracle>
int CheckLines(std::uint8_t const *data, std::size_t size, Oracle oracle) {
    if (size < 2)
        return 0;
    std::wstring const path = FileWith(data + 2, size - 2);
    bool const isText = !(data[0] & 1U);
    unsigned int const flags = isText ? CFile::kRead : CFile::kBinary;
    lib::test::Lines const expected = oracle(std::string(data + 2, data + size), isText);
    for (int const bufferSize : {int{data[1]}, 4096})
        Check(lib::test::GivesLines<File>(path, flags, bufferSize, expected, data[0] / 2));
    return 0;
}

} // namespace zvi::fuzz
