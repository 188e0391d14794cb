#pragma once

#include "zvi/Export.h"
#include "zvi/command/CommandTokens.h"
#include "zvi/command/ParseValue.h"
#include "zvi/command/SymbolTable.h"
#include "zvi/core/CString.h"

#include <cstdint>
#include <string_view>

namespace zvi::lib {

/// Cuts a line of the command language into tokens. The longest match wins. Words are reserved words (exactly), then
/// functions and variables (whatever their case), then plain names.
class ZVI_API lexer1 {
public:
    /// Size of the input store in bytes, the closing zero included.
    static constexpr int kBufferBytes = 2048;

    /// The input is empty until `Load`.
    explicit lexer1(SymbolTable &symbols) : m_symbols(symbols) { m_text[0] = '\0'; }

    /// Takes a text with one blank appended. False, with an empty input, when that exceeds the input store.
    /// Characters outside ASCII become a byte that no rule of the language takes.
    bool Load(wchar_t const *text, int length);

    /// While on, every integer literal becomes a double.
    void SetAllDoubles(bool on) { m_allDoubles = on; }

    /// The next token, `kTokenEnd` at the end of the input and ever after.
    int NextToken();

    /// The value of the last `kTokenNumber`; null when the number limit of the table was reached.
    TagNumberNode const *Number() const { return m_number; }
    /// Whether the number last read was larger than what it is kept in.
    bool IsNumberTooLarge() const { return m_isTooLarge; }
    /// The node of the last `kTokenName`.
    TagStringNode const *Name() const { return m_name; }
    /// The node of the last `kTokenFunction`.
    TagSymbolNode const *Function() const { return m_function; }

    /// Where the last token begins, in bytes from the start of the input.
    int TokenStart() const { return m_tokenStart; }
    /// Where it ends: one behind its last byte.
    int TokenEnd() const { return m_pos; }

private:
    int ReadWord(int begin);
    int ReadNumber(int begin);
    int ReadReal(int begin, int end);
    int ReadLongInteger(int begin, int end);
    int TakeDouble(double real);
    int TakeInteger(std::int64_t integer);
    std::string_view Text(int begin, int end) const;

    SymbolTable &m_symbols;
    TagNumberNode const *m_number = nullptr;
    TagStringNode const *m_name = nullptr;
    TagSymbolNode const *m_function = nullptr;
    int m_pos = 0;
    int m_tokenStart = 0;
    bool m_allDoubles = true;
    bool m_isTooLarge = false; ///< the number last read
    /// The last conversion overflowed. Digits alone deliberately do not clear it first, so an overflow earlier in the
    /// line can be taken for one of their own.
    bool m_overflow = false;
    char m_text[kBufferBytes];
};

} // namespace zvi::lib
