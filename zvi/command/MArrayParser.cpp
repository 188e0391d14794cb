#include "zvi/command/MArrayParser.h"

#include <charconv>
#include <string>
#include <string_view>

namespace zvi::lib {

namespace {

constexpr std::wstring_view kWhiteSpace = L" \t\r\n\v\f";

std::wstring_view Trimmed(std::wstring_view piece) {
    std::size_t const begin = piece.find_first_not_of(kWhiteSpace);
    if (begin == std::wstring_view::npos)
        return {};
    return piece.substr(begin, piece.find_last_not_of(kWhiteSpace) - begin + 1);
}

/// The characters of a number as narrow text; empty when one of them can stand in no decimal number.
std::string NumberText(std::wstring_view piece) {
    std::string narrow;
    for (wchar_t const c : Trimmed(piece)) {
        if (std::wstring_view(L"0123456789+-.eE").find(c) == std::wstring_view::npos)
            return {};
        narrow.push_back(static_cast<char>(c));
    }
    // from_chars takes no plus sign.
    if (narrow.size() > 1 && narrow[0] == '+' && narrow[1] != '-')
        narrow.erase(0, 1);
    return narrow;
}

template <class T>
bool Convert(std::wstring_view piece, T &value) {
    std::string const text = NumberText(piece);
    char const *const end = text.data() + text.size();
    T read{};
    auto const [stop, error] = std::from_chars(text.data(), end, read);
    if (text.empty() || error != std::errc{} || stop != end)
        return false;
    value = read;
    return true;
}

/// Calls `take` with each piece of the text between separators.
template <class Take>
void ForEachPiece(wchar_t const *text, wchar_t separator, Take take) {
    std::wstring_view rest = text ? text : L"";
    while (true) {
        std::size_t const cut = rest.find(separator);
        take(rest.substr(0, cut));
        if (cut == std::wstring_view::npos)
            return;
        rest.remove_prefix(cut + 1);
    }
}

template <class T>
int ParseArray(wchar_t const *text, wchar_t separator, MArray<T> &values) {
    values.Clear();
    ForEachPiece(text, separator, [&](std::wstring_view piece) {
        T value{};
        if (Convert(piece, value))
            values.PushBack(value);
    });
    return 1;
}

template <class A, class B>
int ParsePair(wchar_t const *text, wchar_t separator, A &first, B &second) {
    std::wstring_view const whole = text ? text : L"";
    std::size_t const cut = whole.find(separator);
    if (cut == std::wstring_view::npos)
        return 0;
    A a{};
    B b{};
    if (!Convert(whole.substr(0, cut), a) || !Convert(whole.substr(cut + 1), b))
        return 0;
    first = a;
    second = b;
    return 1;
}

} // namespace

int MArrayParser::ParseArray_Int(wchar_t const *text, wchar_t separator, MArray<int> &values) {
    return ParseArray(text, separator, values);
}

int MArrayParser::ParseArray_Double(wchar_t const *text, wchar_t separator, MArray<double> &values) {
    return ParseArray(text, separator, values);
}

int MArrayParser::ParseArray_String(wchar_t const *text, wchar_t separator, CStringArray &values, int keepEmpty) {
    values.RemoveAll();
    ForEachPiece(text, separator, [&](std::wstring_view piece) {
        std::wstring const trimmed(Trimmed(piece));
        if (keepEmpty || !trimmed.empty())
            values.Add(CString(trimmed.c_str()));
    });
    return 1;
}

int MArrayParser::Parse2Number(wchar_t const *text, wchar_t separator, int &first, int &second) {
    return ParsePair(text, separator, first, second);
}

int MArrayParser::Parse2Number(wchar_t const *text, wchar_t separator, int &first, double &second) {
    return ParsePair(text, separator, first, second);
}

int MArrayParser::Parse2Number(wchar_t const *text, wchar_t separator, double &first, double &second) {
    return ParsePair(text, separator, first, second);
}

} // namespace zvi::lib
