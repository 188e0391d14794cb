#include "zvi/core/WideFormat.h"

#include "zvi/core/Utf8.h"
#include "zvi/core/WideUnits.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cwchar>
#include <limits>
#include <string_view>

namespace zvi::lib {

namespace {

/// Precision that was not given.
constexpr int kNoPrecision = -1;

/// Digits of a floating conversion without a precision.
constexpr int kDefaultPrecision = 6;

/// Digits of a pointer in hexadecimal.
constexpr int kPointerDigits = 16;

enum class Size { kNone, kChar, kShort, kLong, kLongLong, kLongDouble, kIntMax, kSizeT, kPtrDiff, k32, k64, kWide };

/// One conversion of a format, such as "%-8.3lf".
struct Directive {
    bool left = false;
    bool plus = false;
    bool blank = false;
    bool alternate = false;
    bool zero = false;
    int width = 0;
    int precision = kNoPrecision;
    Size size = Size::kNone;
    wchar_t conversion = L'\0';
};

/// The variable arguments; wrapped, because a bare `va_list` cannot be passed on by reference on every host.
struct Arguments {
    std::va_list list;
};

/// A converted number before it is padded.
struct NumberText {
    std::string prefix; ///< sign and 0x
    std::string digits;
    bool zeroPadding = false;
};

// ---- reading a directive ----

bool ReadFlag(wchar_t character, Directive &directive) {
    switch (character) {
    case L'-':
        return directive.left = true;
    case L'+':
        return directive.plus = true;
    case L' ':
        return directive.blank = true;
    case L'#':
        return directive.alternate = true;
    case L'0':
        return directive.zero = true;
    default:
        return false;
    }
}

/// Stays at the largest `int` when there are too many digits.
int ReadNumber(wchar_t const *&position) {
    std::int64_t number = 0;
    for (; *position >= L'0' && *position <= L'9'; ++position)
        number = std::min<std::int64_t>(number * 10 + (*position - L'0'), std::numeric_limits<int>::max());
    return static_cast<int>(number);
}

void ReadWidth(wchar_t const *&position, Arguments &arguments, Directive &directive) {
    std::int64_t width = 0;
    if (*position == L'*') {
        ++position;
        width = va_arg(arguments.list, int);
        directive.left = directive.left || width < 0;
    } else {
        width = ReadNumber(position);
    }
    directive.width = static_cast<int>(std::min<std::int64_t>(std::abs(width), kLargestFieldWidth));
}

void ReadPrecision(wchar_t const *&position, Arguments &arguments, Directive &directive) {
    if (*position != L'.')
        return;
    ++position;
    if (*position == L'*') {
        ++position;
        directive.precision = std::max(va_arg(arguments.list, int), kNoPrecision);
    } else {
        directive.precision = ReadNumber(position);
    }
}

struct SizeName {
    std::wstring_view name;
    Size size;
};

/// A longer name stands before the shorter one that begins it.
constexpr SizeName kSizeNames[] = {
    {L"I64", Size::k64},   {L"I32", Size::k32},      {L"I", Size::kPtrDiff}, {L"hh", Size::kChar},
    {L"h", Size::kShort},  {L"ll", Size::kLongLong}, {L"l", Size::kLong},    {L"L", Size::kLongDouble},
    {L"j", Size::kIntMax}, {L"z", Size::kSizeT},     {L"t", Size::kPtrDiff}, {L"w", Size::kWide},
};

bool StartsWith(wchar_t const *text, std::wstring_view name) {
    for (wchar_t const expected : name)
        if (*text++ != expected)
            return false;
    return true;
}

void ReadSize(wchar_t const *&position, Directive &directive) {
    for (SizeName const &candidate : kSizeNames) {
        if (StartsWith(position, candidate.name)) {
            position += candidate.name.size();
            directive.size = candidate.size;
            return;
        }
    }
}

/// Reads what follows a percent sign; `position` ends behind the conversion, or on the closing zero without one.
Directive ReadDirective(wchar_t const *&position, Arguments &arguments) {
    Directive directive;
    while (ReadFlag(*position, directive))
        ++position;
    ReadWidth(position, arguments, directive);
    ReadPrecision(position, arguments, directive);
    ReadSize(position, directive);
    directive.conversion = *position;
    if (*position != L'\0')
        ++position;
    return directive;
}

// ---- padding ----

int NumberPrecision(Directive const &directive, int whenMissing) {
    return directive.precision == kNoPrecision ? whenMissing : std::min(directive.precision, kLargestFieldWidth);
}

std::size_t PaddingOf(Directive const &directive, std::size_t length) {
    auto const width = static_cast<std::size_t>(directive.width);
    return width > length ? width - length : 0;
}

void AppendPadded(std::wstring &out, Directive const &directive, std::wstring_view text) {
    std::size_t const padding = PaddingOf(directive, text.size());
    if (!directive.left)
        out.append(padding, L' ');
    out.append(text);
    if (directive.left)
        out.append(padding, L' ');
}

void AppendNumber(std::wstring &out, Directive const &directive, NumberText const &number) {
    std::wstring text(number.prefix.begin(), number.prefix.end());
    if (number.zeroPadding && !directive.left)
        text.append(PaddingOf(directive, number.prefix.size() + number.digits.size()), L'0');
    text.append(number.digits.begin(), number.digits.end());
    AppendPadded(out, directive, text);
}

std::string SignOf(Directive const &directive, bool negative) {
    if (negative)
        return "-";
    if (directive.plus)
        return "+";
    return directive.blank ? " " : "";
}

void MakeUpperCase(std::string &text) {
    for (char &character : text)
        if (character >= 'a' && character <= 'z')
            character = static_cast<char>(character - 'a' + 'A');
}

// ---- whole numbers ----

std::int64_t NextSigned(Arguments &arguments, Size size) {
    switch (size) {
    case Size::kChar:
        return static_cast<signed char>(va_arg(arguments.list, int));
    case Size::kShort:
        return static_cast<short>(va_arg(arguments.list, int));
    case Size::kLong:
        return va_arg(arguments.list, long);
    case Size::kLongLong:
    case Size::kLongDouble:
        return va_arg(arguments.list, long long);
    case Size::kIntMax: // NOLINT(bugprone-branch-clone): types that are one on this host
        return va_arg(arguments.list, std::intmax_t);
    case Size::kSizeT:
    case Size::kPtrDiff:
        return va_arg(arguments.list, std::ptrdiff_t);
    case Size::k64:
        return va_arg(arguments.list, std::int64_t);
    case Size::kNone:
    case Size::k32:
    case Size::kWide:
        break;
    }
    return va_arg(arguments.list, int);
}

/// The same bits as `NextSigned` reads, cut to the width of the type.
std::uint64_t NextUnsigned(Arguments &arguments, Size size) {
    std::int64_t const value = NextSigned(arguments, size);
    switch (size) {
    case Size::kChar:
        return static_cast<unsigned char>(value);
    case Size::kShort:
        return static_cast<unsigned short>(value);
    case Size::kLong:
        return static_cast<unsigned long>(value);
    case Size::kNone:
    case Size::k32:
    case Size::kWide:
        return static_cast<unsigned int>(value);
    default:
        return static_cast<std::uint64_t>(value);
    }
}

int BaseOf(wchar_t conversion) {
    if (conversion == L'o')
        return 8;
    return conversion == L'x' || conversion == L'X' ? 16 : 10;
}

/// The digits of `value`, zeros in front up to the precision; zero with precision 0 has none.
std::string DigitsOf(std::uint64_t value, int base, int precision) {
    char buffer[24]; // 2^64 has 22 octal digits
    char *const end = value == 0 && precision == 0 ? buffer : std::to_chars(buffer, std::end(buffer), value, base).ptr;
    auto const length = static_cast<std::size_t>(end - buffer);
    auto const wanted = static_cast<std::size_t>(std::max(precision, 0));
    return std::string(wanted > length ? wanted - length : 0, '0') + std::string(buffer, end);
}

void AppendInteger(std::wstring &out, Directive const &directive, Arguments &arguments) {
    wchar_t const conversion = directive.conversion;
    NumberText number;
    std::uint64_t magnitude = 0;
    if (conversion == L'd' || conversion == L'i') {
        std::int64_t const value = NextSigned(arguments, directive.size);
        magnitude = value < 0 ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
        number.prefix = SignOf(directive, value < 0);
    } else {
        magnitude = NextUnsigned(arguments, directive.size);
    }
    number.digits = DigitsOf(magnitude, BaseOf(conversion), NumberPrecision(directive, 1));
    if (directive.alternate && conversion == L'o' && !number.digits.starts_with('0'))
        number.digits.insert(0, 1, '0');
    if (directive.alternate && BaseOf(conversion) == 16 && magnitude != 0)
        number.prefix = "0x";
    if (conversion == L'X') {
        MakeUpperCase(number.prefix);
        MakeUpperCase(number.digits);
    }
    number.zeroPadding = directive.zero && directive.precision == kNoPrecision;
    AppendNumber(out, directive, number);
}

void AppendPointer(std::wstring &out, Directive const &directive, Arguments &arguments) {
    auto const address = reinterpret_cast<std::uintptr_t>(va_arg(arguments.list, void *));
    NumberText number;
    number.digits = DigitsOf(address, 16, kPointerDigits);
    MakeUpperCase(number.digits);
    AppendNumber(out, directive, number);
}

// ---- floating numbers ----

/// Bytes that hold the conversion of any finite value: all digits in front of the point, the precision, the exponent.
template <typename Float>
std::size_t RoomFor(int precision) {
    constexpr int kLongestOtherwise = std::numeric_limits<Float>::max_exponent10 + 32;
    return static_cast<std::size_t>(kLongestOtherwise) + static_cast<std::size_t>(precision);
}

/// `precision` kNoPrecision gives as many digits as the value needs.
template <typename Float>
std::string Convert(Float magnitude, std::chars_format form, int precision) {
    std::string text(RoomFor<Float>(std::max(precision, 0)), '\0');
    char *const last = text.data() + text.size();
    auto const result = precision == kNoPrecision ? std::to_chars(text.data(), last, magnitude, form)
                                                  : std::to_chars(text.data(), last, magnitude, form, precision);
    assert(result.ec == std::errc());
    text.resize(static_cast<std::size_t>(result.ptr - text.data()));
    return text;
}

/// Puts the decimal point that `#` asks for in front of the exponent.
void EnsurePoint(std::string &text, char exponentLetter) {
    if (text.find('.') == std::string::npos)
        text.insert(std::min(text.find(exponentLetter), text.size()), 1, '.');
}

/// `%#g` keeps the trailing zeros that `%g` drops.
template <typename Float>
std::string ConvertGeneralWithZeros(Float magnitude, int precision) {
    int const digits = std::max(precision, 1);
    std::string text = Convert(magnitude, std::chars_format::scientific, digits - 1);
    int const exponent = std::atoi(text.c_str() + text.find('e') + 1);
    if (exponent >= -4 && exponent < digits)
        text = Convert(magnitude, std::chars_format::fixed, digits - 1 - exponent);
    return text;
}

template <typename Float>
std::string ConvertFinite(Float magnitude, Directive const &directive, wchar_t lowerConversion) {
    bool const isHex = lowerConversion == L'a';
    int const precision = NumberPrecision(directive, isHex ? kNoPrecision : kDefaultPrecision);
    std::string text;
    if (isHex)
        text = Convert(magnitude, std::chars_format::hex, precision);
    else if (lowerConversion == L'f')
        text = Convert(magnitude, std::chars_format::fixed, precision);
    else if (lowerConversion == L'e')
        text = Convert(magnitude, std::chars_format::scientific, precision);
    else if (directive.alternate)
        text = ConvertGeneralWithZeros(magnitude, precision);
    else
        text = Convert(magnitude, std::chars_format::general, precision);
    if (directive.alternate)
        EnsurePoint(text, isHex ? 'p' : 'e');
    return text;
}

template <typename Float>
void AppendFloat(std::wstring &out, Directive const &directive, Float value) {
    wchar_t const conversion = directive.conversion;
    wchar_t const lower = LowerUnit(conversion);
    NumberText number;
    number.prefix = SignOf(directive, std::signbit(value) && !std::isnan(value));
    if (std::isfinite(value)) {
        if (lower == L'a')
            number.prefix += "0x";
        number.digits = ConvertFinite(std::abs(value), directive, lower);
        number.zeroPadding = directive.zero;
    } else {
        number.digits = std::isnan(value) ? "nan" : "inf";
    }
    if (conversion != lower) {
        MakeUpperCase(number.prefix);
        MakeUpperCase(number.digits);
    }
    AppendNumber(out, directive, number);
}

// ---- characters and strings ----

bool TakesWide(Directive const &directive) {
    if (directive.size == Size::kShort)
        return false;
    if (directive.size == Size::kLong || directive.size == Size::kWide)
        return true;
    return directive.conversion == L's' || directive.conversion == L'c';
}

void AppendCharacter(std::wstring &out, Directive const &directive, Arguments &arguments) {
    int const character = va_arg(arguments.list, int);
    std::wstring units;
    if (TakesWide(directive))
        AppendUnits(units, static_cast<std::uint32_t>(character));
    else
        AppendUnits(units, static_cast<unsigned char>(character));
    AppendPadded(out, directive, units);
}

/// What a string without a precision may have.
constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

/// Appends the units of a character unless they pass `limit`.
bool AppendWithin(std::wstring &units, std::uint32_t character, std::size_t limit) {
    std::size_t const before = units.size();
    AppendUnits(units, character);
    if (units.size() <= limit)
        return true;
    units.resize(before);
    return false;
}

std::wstring WideText(wchar_t const *text, std::size_t limit) {
    std::wstring units;
    if (limit == kNoLimit) {
        AppendWide(units, text);
        return units;
    }
    while (units.size() < limit && *text != L'\0' && AppendWithin(units, static_cast<std::uint32_t>(*text), limit))
        ++text;
    // A pair that comes in two elements stays whole, as one that comes in one does.
    if (!units.empty() && (units.back() & 0xFC00) == 0xD800 && (*text & 0xFC00) == 0xDC00)
        units.pop_back();
    return units;
}

/// Reads one character of a text that need not end with a NUL and moves `text` behind it; a byte that begins none is
/// U+FFFD and is passed alone.
std::uint32_t NextCharacter(char const *&text) {
    std::uint32_t character = kReplacementCharacter;
    std::size_t const length = ReadUtf8({text, Utf8Length(*text)}, character);
    text += std::max<std::size_t>(length, 1);
    return character;
}

std::wstring NarrowText(char const *text, std::size_t limit) {
    std::wstring units;
    while (units.size() < limit && *text != '\0' && AppendWithin(units, NextCharacter(text), limit)) {
    }
    return units;
}

void AppendString(std::wstring &out, Directive const &directive, Arguments &arguments) {
    std::size_t const limit =
        directive.precision == kNoPrecision ? kNoLimit : static_cast<std::size_t>(directive.precision);
    if (TakesWide(directive)) {
        wchar_t const *const text = va_arg(arguments.list, wchar_t const *);
        AppendPadded(out, directive, WideText(text ? text : L"(null)", limit));
    } else {
        char const *const text = va_arg(arguments.list, char const *);
        AppendPadded(out, directive, NarrowText(text ? text : "(null)", limit));
    }
}

void AppendAnyFloat(std::wstring &out, Directive const &directive, Arguments &arguments) {
    if (directive.size == Size::kLongDouble)
        AppendFloat(out, directive, va_arg(arguments.list, long double));
    else
        AppendFloat(out, directive, va_arg(arguments.list, double));
}

/// The count that `%n` asks for is not written: a format that comes from a file must not be able to write to memory.
void SkipArgument(std::wstring &, Directive const &, Arguments &arguments) {
    static_cast<void>(va_arg(arguments.list, void *));
}

void AppendPercent(std::wstring &out, Directive const &, Arguments &) {
    out.push_back(L'%');
}

struct Conversions {
    std::wstring_view letters;
    void (*append)(std::wstring &, Directive const &, Arguments &);
};

constexpr Conversions kConversions[] = {
    {L"diuoxX", AppendInteger}, {L"aAeEfFgG", AppendAnyFloat}, {L"sS", AppendString}, {L"cC", AppendCharacter},
    {L"p", AppendPointer},      {L"n", SkipArgument},          {L"%", AppendPercent},
};

/// Carries one directive out; false when it is none that is known.
bool AppendDirective(std::wstring &out, Directive const &directive, Arguments &arguments) {
    for (Conversions const &known : kConversions) {
        if (known.letters.find(directive.conversion) != std::wstring_view::npos) {
            known.append(out, directive, arguments);
            return true;
        }
    }
    return false;
}

} // namespace

std::wstring FormatWide(wchar_t const *format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::wstring text = FormatWideV(format, arguments);
    va_end(arguments);
    return text;
}

std::wstring FormatWideV(wchar_t const *format, std::va_list arguments) {
    std::wstring out;
    if (!format)
        return out;
    Arguments reader;
    va_copy(reader.list, arguments);
    wchar_t const *position = format;
    while (*position != L'\0') {
        if (*position != L'%') {
            wchar_t const *const found = std::wcschr(position, L'%');
            wchar_t const *const end = found ? found : position + std::wcslen(position);
            AppendWide(out, std::wstring_view(position, static_cast<std::size_t>(end - position)));
            position = end;
            continue;
        }
        wchar_t const *const start = position++;
        if (!AppendDirective(out, ReadDirective(position, reader), reader))
            AppendWide(out, std::wstring_view(start, static_cast<std::size_t>(position - start)));
    }
    va_end(reader.list);
    return out;
}

} // namespace zvi::lib
