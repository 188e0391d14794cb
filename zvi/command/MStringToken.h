#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"

#include <string>
#include <vector>

namespace zvi::lib {

/// The pieces of a text between delimiter characters. Delimiters in a row count as one, so no piece is empty.
class ZVI_API MStringToken {
public:
    /// Splits `text` at every character of `delimiters`; without delimiters the whole text is one piece.
    MStringToken(wchar_t const *text, wchar_t const *delimiters);

    /// Number of pieces.
    int Size() const;
    /// Piece `index`, counted from 0; an empty text outside the range. The pointer lives as long as this object.
    wchar_t const *Get(int index) const;
    /// The same as a text of its own.
    CString GetCstring(int index) const;
    /// The same as a standard text.
    std::wstring GetStdwstring(int index) const;

private:
    std::vector<std::wstring> m_pieces;
};

} // namespace zvi::lib
