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

/// The same for at most `kExactDigits` digits.
std::int64_t ToShortInteger(std::string_view digits) {
    std::int64_t value = 0;
    for (char const c : digits)
        value = value * 10 + (c - '0');
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
    for (int i = 0; i < length; ++i)
        m_text[i] = static_cast<std::uint32_t>(text[i]) <= kLastAscii ? static_cast<char>(text[i]) : kForeignCharacter;
    m_text[length] = ' ';
    m_text[length + 1] = '\0';
    return true;
}

int lexer1::NextToken() {
    while (true) {
        while (Is(m_text[m_pos], kWhiteSpace))
            ++m_pos;
        m_tokenStart = m_pos;
        char const c = m_text[m_pos];
        if (c == '\0')
            return kTokenEnd;
        if (IsDigit(c) || (c == '.' && IsDigit(m_text[m_pos + 1])))
            return ReadNumber();
        if (!Is(c, kWordStart)) {
            ++m_pos;
            return c;
        }
        // A word for which there is no room is passed over.
        if (int const token = ReadWord())
            return token;
    }
}

std::string_view lexer1::Text(int begin, int end) const {
    return {m_text + begin, static_cast<std::size_t>(end - begin)};
}

int lexer1::ReadWord() {
    while (Is(m_text[m_pos], kWordPart))
        ++m_pos;
    std::string_view const word = Text(m_tokenStart, m_pos);
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

int lexer1::ReadNumber() {
    int const whole = SkipDigits(m_text, m_pos);
    if (m_text[whole] == '.')
        return ReadReal(SkipExponent(m_text, SkipDigits(m_text, whole + 1)));
    int const end = SkipExponent(m_text, whole);
    return end == whole ? ReadInteger(end) : ReadReal(end);
}

int lexer1::ReadInteger(int end) {
    constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();
    std::string_view const digits = Text(m_pos, end);
    bool const isShort = end - m_pos <= kExactDigits;
    std::int64_t const integer = isShort ? ToShortInteger(digits) : ToInteger(digits);
    TagNumberNode *const node = m_symbols.AddNumber();
    m_number = node;
    if (m_allDoubles) {
        double const real = isShort ? static_cast<double>(integer) : ToDouble(digits, m_overflow);
        m_isTooLarge = m_overflow;
        if (node)
            node->SetDouble(m_overflow ? 1.0 : real);
    } else {
        if (!isShort)
            ToDouble(digits, m_overflow);
        m_isTooLarge = integer > kLargest;
        if (node)
            node->integer = static_cast<std::int32_t>(std::min(integer, kLargest));
    }
    m_pos = end;
    return kTokenNumber;
}

int lexer1::ReadReal(int end) {
    m_overflow = false;
    double const value = ToDouble(Text(m_pos, end), m_overflow);
    m_isTooLarge = m_overflow;
    m_pos = end;
    m_number = m_symbols.AddNumber(value);
    return kTokenNumber;
}

} // namespace zvi::lib
