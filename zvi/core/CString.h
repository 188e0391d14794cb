#pragma once

#include "zvi/Export.h"

#include <compare>
#include <concepts>
#include <cstdarg>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

/// Text of 16-bit characters with value semantics.
///
/// Each element holds one UTF-16 code unit in a `wchar_t`, also where `wchar_t` is wider, so that lengths, indices and
/// order agree on every host. A character beyond the basic plane becomes its surrogate pair on entry; a value that is
/// no character becomes U+FFFD. A null pointer is taken as an empty text. Arguments may point into the text itself.
/// Positions count code units from 0; -1 says "not found".
class ZVI_API CString {
public:
    /// An empty text.
    CString() = default;
    /// The elements of `text` up to its closing zero.
    CString(wchar_t const *text);
    /// The first `length` elements of `text`, zeros included; empty for a length below 1.
    CString(wchar_t const *text, int length);
    /// `count` times the character; empty for a count below 1.
    explicit CString(wchar_t character, int count = 1);
    /// All elements of `text`, zeros included.
    explicit CString(std::wstring_view text);

    /// As construction from `text`, which may point into this text.
    CString &operator=(wchar_t const *text);

    /// Number of code units.
    int GetLength() const { return static_cast<int>(m_text.size()); }
    /// Whether there is no unit.
    bool IsEmpty() const { return m_text.empty(); }
    /// Makes the text empty.
    void Empty() { m_text.clear(); }
    /// A text that takes over the memory of its units, of which none is more than 16 bits.
    static CString OfUnits(std::wstring units);
    /// Changes places with such units, memory and all.
    void Swap(std::wstring &units);

    /// The unit at `index`; 0 outside the text.
    wchar_t GetAt(int index) const { return Unit(index); }
    /// The same with an index of any whole type.
    template <std::integral Index>
    wchar_t operator[](Index index) const {
        return Unit(index);
    }
    /// Replaces the unit at `index`; outside the text nothing happens.
    void SetAt(int index, wchar_t character);

    /// The units with a closing zero, valid until the text changes.
    wchar_t const *GetString() const { return m_text.c_str(); }
    /// The same, so that a text goes wherever bare characters do.
    operator wchar_t const *() const { return m_text.c_str(); }

    /// Appends a text or a character.
    CString &operator+=(CString const &text);
    CString &operator+=(wchar_t const *text);
    CString &operator+=(wchar_t character);

    /// The one behind the other.
    friend CString operator+(CString left, CString const &right) {
        left += right;
        return left;
    }
    friend CString operator+(CString left, wchar_t const *right) {
        left += right;
        return left;
    }
    friend CString operator+(CString left, wchar_t right) {
        left += right;
        return left;
    }
    friend CString operator+(wchar_t const *left, CString const &right) {
        CString result(left);
        result += right;
        return result;
    }
    friend CString operator+(wchar_t left, CString const &right) {
        CString result(left);
        result += right;
        return result;
    }

    /// By code unit, case-sensitive: -1, 0 or 1.
    int Compare(CString const &other) const;
    int Compare(wchar_t const *other) const;
    /// As `Compare`, on the lower-case forms.
    int CompareNoCase(CString const &other) const;

    /// Whether the code units are the same.
    friend bool operator==(CString const &left, CString const &right) { return left.m_text == right.m_text; }
    friend bool operator==(CString const &left, wchar_t const *right) { return left.Compare(right) == 0; }
    /// The order by code unit.
    friend std::strong_ordering operator<=>(CString const &left, CString const &right) {
        return left.Compare(right) <=> 0;
    }
    friend std::strong_ordering operator<=>(CString const &left, wchar_t const *right) {
        return left.Compare(right) <=> 0;
    }

    /// The first `count` units, or all there are.
    CString Left(int count) const;
    /// The last `count` units, or all there are.
    CString Right(int count) const;
    /// The units from `first` on, `count` at most; whatever lies outside the text is left out.
    CString Mid(int first) const;
    CString Mid(int first, int count) const;

    /// Position of the first occurrence at or behind `start`; -1 if there is none or `start` lies outside the text.
    int Find(wchar_t character, int start = 0) const;
    int Find(wchar_t const *text, int start = 0) const;
    /// Position of the last occurrence.
    int ReverseFind(wchar_t character) const;

    /// Cuts blanks, tabs, line ends and other white space off both ends; or the given character; or all characters of
    /// the given set.
    CString &Trim();
    CString &Trim(wchar_t character);
    CString &Trim(wchar_t const *characters);
    /// The same at the left end alone.
    CString &TrimLeft();
    CString &TrimLeft(wchar_t character);
    CString &TrimLeft(wchar_t const *characters);
    /// The same at the right end alone.
    CString &TrimRight();
    CString &TrimRight(wchar_t character);
    CString &TrimRight(wchar_t const *characters);

    /// Replaces every occurrence, from the start, and gives the number of replacements. Empty `what` replaces nothing.
    int Replace(wchar_t what, wchar_t with);
    int Replace(wchar_t const *what, wchar_t const *with);
    /// Takes every occurrence of the character out and gives their number.
    int Remove(wchar_t character);

    /// Turns letters (Latin, Greek, Cyrillic) to one case, one unit for one unit and the same in every locale. A letter
    /// without such a form stays, as the sharp s does.
    CString &MakeUpper();
    /// The other way round.
    CString &MakeLower();

    /// Replaces the text by a formatted one; the rules are those of `zvi::lib::FormatWide`.
    void Format(wchar_t const *format, ...);
    /// Appends a formatted text.
    void AppendFormat(wchar_t const *format, ...);
    /// As `Format`, with arguments that a variadic operation was given.
    void FormatV(wchar_t const *format, std::va_list arguments);
    /// As `AppendFormat`, with arguments that a variadic operation was given.
    void AppendFormatV(wchar_t const *format, std::va_list arguments);

private:
    template <std::integral Index>
    wchar_t Unit(Index index) const {
        // A negative index becomes a huge one.
        auto const position = static_cast<std::size_t>(index);
        return position < m_text.size() ? m_text[position] : L'\0';
    }

    std::wstring m_text;
};

/// Texts that are equal hash alike.
template <>
struct std::hash<CString> {
    /// The hash of its characters.
    std::size_t operator()(CString const &text) const noexcept {
        return std::hash<std::wstring_view>()(
            std::wstring_view(text.GetString(), static_cast<std::size_t>(text.GetLength())));
    }
};
