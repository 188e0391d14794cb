#include "zvi/command/lexer1.h"

#include "zvi/base/DecimalSize.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

namespace zvi::lib {

namespace {

/// Stands for a character outside ASCII; no rule of the language takes it.
constexpr char kForeignCharacter = '?';
constexpr std::uint32_t kLastAscii = 0x7F;
/// Most digits that a double and a 64-bit integer both hold exactly.
constexpr int kExactDigits = 15;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// What a byte can be the part of.
enum CharClass : std::uint8_t { kWordStart = 1, kWordPart = 2, kWhiteSpace = 4 };

/// The classes of each byte.
constexpr std::array<std::uint8_t, 256> kCharClasses = [] {
    std::array<std::uint8_t, 256> classes{};
    for (std::size_t letter = 'A'; letter <= 'Z'; ++letter)
        classes[letter] = classes[letter - 'A' + 'a'] = kWordStart | kWordPart;
    classes['_'] = kWordStart | kWordPart;
    for (std::size_t digit = '0'; digit <= '9'; ++digit)
        classes[digit] = kWordPart;
    classes[' '] = classes['\t'] = classes['\n'] = classes['\r'] = kWhiteSpace;
    return classes;
}();

bool Is(char c, CharClass charClass) {
    return (kCharClasses[static_cast<unsigned char>(c)] & charClass) != 0;
}

/// The standard decimal conversion, whatever the locale. Too large gives infinity and sets `overflow`, too small 0.
double ToDouble(std::string_view text, bool &overflow) {
    double value = 0.0;
    if (std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc::result_out_of_range) {
        if (!base::IsTooLarge(text))
            return 0.0;
        overflow = true;
        return std::numeric_limits<double>::infinity();
    }
    return value;
}

/// Digits as an integer; what 64 bits cannot hold gives the largest one.
std::int64_t ToInteger(std::string_view digits) {
    std::int64_t value = 0;
    if (std::from_chars(digits.data(), digits.data() + digits.size(), value).ec != std::errc{})
        return std::numeric_limits<std::int64_t>::max();
    return value;
}

int SkipDigits(char const *text, int at) {
    while (IsDigit(text[at]))
        ++at;
    return at;
}

int SkipExponent(char const *text, int at) {
    if (text[at] != 'E' && text[at] != 'e')
        return at;
    int digits = at + 1;
    if (text[digits] == '+' || text[digits] == '-')
        ++digits;
    return IsDigit(text[digits]) ? SkipDigits(text, digits) : at;
}

} // namespace

bool lexer1::Load(wchar_t const *text, int length) {
    m_pos = 0;
    m_tokenStart = 0;
    m_overflow = false;
    // One byte for the blank that is appended, one for the closing zero.
    if (length > kBufferBytes - 2) {
        m_text[0] = '\0';
        return false;
    }
    std::uint32_t units = 0;
    for (int i = 0; i < length; ++i) {
        units |= static_cast<std::uint32_t>(text[i]);
        m_text[i] = static_cast<char>(text[i]);
    }
    // Texts with a character outside ASCII are rare.
    for (int i = 0; i < length && units > kLastAscii; ++i) {
        if (static_cast<std::uint32_t>(text[i]) > kLastAscii)
            m_text[i] = kForeignCharacter;
    }
    m_text[length] = ' ';
    m_text[length + 1] = '\0';
    return true;
}

int lexer1::NextToken() {
    while (true) {
        int at = m_pos;
        while (Is(m_text[at], kWhiteSpace))
            ++at;
        m_tokenStart = at;
        char const c = m_text[at];
        if (IsDigit(c) || (c == '.' && IsDigit(m_text[at + 1])))
            return ReadNumber(at);
        if (!Is(c, kWordStart)) {
            m_pos = c == '\0' ? at : at + 1;
            return c;
        }
        // A word for which there is no room is passed over.
        if (int const token = ReadWord(at))
            return token;
    }
}

std::string_view lexer1::Text(int begin, int end) const {
    return {m_text + begin, static_cast<std::size_t>(end - begin)};
}

int lexer1::ReadWord(int begin) {
    int end = begin;
    while (Is(m_text[end], kWordPart))
        ++end;
    m_pos = end;
    std::string_view const word = Text(begin, end);
    if (TagResWordNode const *const reserved = m_symbols.FindReservedWord(word))
        return reserved->token;
    m_function = m_symbols.FindFunction(word);
    if (m_function)
        return kTokenFunction;
    if (TagSymbolNode const *const variable = m_symbols.FindVariable(word)) {
        m_number = m_symbols.AddNumber(m_overflow && std::isinf(variable->value) ? 0.0 : variable->value);
        m_isTooLarge = false;
        return kTokenNumber;
    }
    m_name = m_symbols.AddString(word);
    return m_name ? kTokenName : 0;
}

int lexer1::ReadNumber(int begin) {
    int end = begin;
    std::uint64_t digits = 0; // their value, while they are few
    for (; IsDigit(m_text[end]); ++end)
        digits = digits * 10 + static_cast<std::uint64_t>(m_text[end] - '0');
    if (m_text[end] == '.')
        return ReadReal(begin, SkipExponent(m_text, SkipDigits(m_text, end + 1)));
    if (int const realEnd = SkipExponent(m_text, end); realEnd != end)
        return ReadReal(begin, realEnd);
    m_pos = end;
    if (end - begin > kExactDigits)
        return ReadLongInteger(begin, end);
    auto const integer = static_cast<std::int64_t>(digits);
    return m_allDoubles ? TakeDouble(static_cast<double>(integer)) : TakeInteger(integer);
}

int lexer1::ReadLongInteger(int begin, int end) {
    std::string_view const digits = Text(begin, end);
    double const real = ToDouble(digits, m_overflow);
    return m_allDoubles ? TakeDouble(real) : TakeInteger(ToInteger(digits));
}

/// Takes an integer literal as a double; 1 while the last conversion overflowed.
int lexer1::TakeDouble(double real) {
    m_isTooLarge = m_overflow;
    m_number = m_symbols.AddNumber(m_overflow ? 1.0 : real);
    return kTokenNumber;
}

int lexer1::TakeInteger(std::int64_t integer) {
    constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();
    m_isTooLarge = integer > kLargest;
    TagNumberNode *const node = m_symbols.AddNumber();
    m_number = node;
    if (node)
        node->integer = static_cast<std::int32_t>(std::min(integer, kLargest));
    return kTokenNumber;
}

int lexer1::ReadReal(int begin, int end) {
    m_pos = end;
    m_overflow = false;
    double const value = ToDouble(Text(begin, end), m_overflow);
    m_isTooLarge = m_overflow;
    m_number = m_symbols.AddNumber(value);
    return kTokenNumber;
}

} // namespace zvi::lib
