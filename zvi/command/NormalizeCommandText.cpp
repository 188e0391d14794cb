#include "zvi/command/NormalizeCommandText.h"

#include "zvi/base/RoomInPlace.h"
#include "zvi/command/NormalizedLineDetail.h"
#include "zvi/core/WideUnits.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

namespace zvi::lib {

namespace {

/// A character on its way, and the index of the typed character that it comes from.
struct TracedChar {
    wchar_t c;
    int source;
};

/// The line that comes out and its sources, in room for a number of characters that is known beforehand.
class OutputLine {
public:
    explicit OutputLine(std::size_t capacity) : m_chars(capacity), m_sources(capacity) {}

    void Push(wchar_t c, int source) {
        m_chars[m_size] = c;
        m_sources[m_size++] = source;
    }
    std::size_t Size() const { return m_size; }
    wchar_t &Last() { return m_chars[m_size - 1]; }
    CString Text() const { return CString(std::wstring_view(m_chars.Data(), m_size)); }
    std::vector<int> Sources() const { return {m_sources.Data(), m_sources.Data() + m_size}; }

private:
    static constexpr std::size_t kInPlace = 512;

    std::size_t m_size = 0;
    base::RoomInPlace<wchar_t, kInPlace> m_chars;
    base::RoomInPlace<int, kInPlace> m_sources;
};

constexpr std::wstring_view kByMarker = L"#__ARG_BY__#";
constexpr std::wstring_view kToMarker = L"#__ARG_TO__#";
/// A marker of twelve characters takes the place of one.
constexpr std::size_t kMostCharsPerTyped = 12;

/// Words that keep their B or T, and what they are called while the markers are put in.
struct ProtectedWord {
    std::wstring_view word;
    std::wstring_view disguise;
};
constexpr ProtectedWord kProtectedWords[] = {
    {L"SQRT", L"__SQRR"}, {L"TAN", L"__RRAN"}, {L"ATAN", L"__ARAN"}, {L"ABS", L"__ARS"}, {L"TH", L"__RH"},
};

wchar_t UpperCase(wchar_t c) {
    if (c >= L'a' && c <= L'z')
        return static_cast<wchar_t>(c - L'a' + L'A');
    return c < 0x80 ? c : UpperUnit(c);
}

bool IsBlank(wchar_t c) {
    return (c <= L' ' || c >= 0x80) && IsBlankUnit(c);
}

/// The typed text between the blanks at its ends, in upper case.
struct TypedText {
    std::wstring_view chars;
    int firstSource;

    std::size_t size() const { return chars.size(); }
    TracedChar operator[](std::size_t at) const { return {UpperCase(chars[at]), firstSource + static_cast<int>(at)}; }
};

TypedText Trimmed(CString const &text) {
    wchar_t const *const units = text.GetString();
    int begin = 0;
    int end = text.GetLength();
    while (begin < end && IsBlank(units[begin]))
        ++begin;
    while (end > begin && IsBlank(units[end - 1]))
        --end;
    return {{units + begin, static_cast<std::size_t>(end - begin)}, begin};
}

/// What stood before the character at hand.
enum class After { kNothing, kItem, kItemAndBlank, kComma, kClosingBracket, kOpeningBracket, kMarker };

/// Passes characters on to the line. Blanks between items become commas, doubled commas get a zero, neighbouring
/// brackets a comma.
class Separator {
public:
    explicit Separator(OutputLine &line) : m_line(line) {}

    void Take(TracedChar traced) {
        switch (traced.c) {
        case L'\t':
        case L'\n':
        case L'\r':
            return;
        case L' ':
            if (m_state == After::kItem)
                m_state = After::kItemAndBlank;
            return;
        case L'#':
            m_state = After::kMarker;
            break;
        case L',':
            PutBetween(After::kComma, L'0', traced.source);
            m_state = After::kComma;
            break;
        case L'[':
            PutBetween(After::kClosingBracket, L',', traced.source);
            m_state = After::kOpeningBracket;
            break;
        case L']':
            m_state = After::kClosingBracket;
            break;
        default:
            PutBetween(After::kItemAndBlank, L',', traced.source);
            m_state = After::kItem;
            break;
        }
        m_line.Push(traced.c, traced.source);
    }
    void Take(std::wstring_view word, int source) {
        for (wchar_t const c : word)
            Take({c, source});
    }

private:
    void PutBetween(After state, wchar_t c, int source) {
        if (m_state == state)
            m_line.Push(c, source);
    }

    OutputLine &m_line;
    After m_state = After::kNothing;
};

template <class Text>
bool StartsWith(Text const &text, std::size_t at, std::wstring_view word) {
    if (text.size() - at < word.size())
        return false;
    for (std::size_t i = 0; i < word.size(); ++i) {
        if (text[at + i].c != word[i])
            return false;
    }
    return true;
}

using TracedVector = std::vector<TracedChar>;

void ReplaceAll(TracedVector &text, std::wstring_view word, std::wstring_view other) {
    TracedVector result;
    for (std::size_t at = 0; at < text.size();) {
        if (StartsWith(text, at, word)) {
            for (wchar_t const c : other)
                result.push_back({c, text[at].source});
            at += word.size();
        } else {
            result.push_back(text[at++]);
        }
    }
    text = std::move(result);
}

/// Puts the markers in by the defining sequence of replacements: disguise, mark, undo the disguise. Needed only for
/// texts that hold two underscores in a row, which could be taken for a disguise.
void MarkByReplacing(TypedText const &typed, Separator &out) {
    TracedVector text;
    for (std::size_t at = 0; at < typed.size(); ++at)
        text.push_back(typed[at]);
    for (ProtectedWord const &entry : kProtectedWords)
        ReplaceAll(text, entry.word, entry.disguise);
    ReplaceAll(text, L"BY", L"B");
    ReplaceAll(text, L"TO", L"T");
    ReplaceAll(text, L"B", kByMarker);
    ReplaceAll(text, L"T", kToMarker);
    for (ProtectedWord const &entry : kProtectedWords)
        ReplaceAll(text, entry.disguise, entry.word);
    for (TracedChar const &traced : text)
        out.Take(traced);
}

/// Length of the protected word at `at`, 0 if there is none. SQRT is disguised before ABS, so ABSQRT is AB and SQRT.
std::size_t ProtectedLength(TypedText const &text, std::size_t at) {
    switch (text[at].c) {
    case L'S':
        return StartsWith(text, at, L"SQRT") ? 4 : 0;
    case L'A':
        return StartsWith(text, at, L"ABS") && !StartsWith(text, at + 2, L"SQRT") ? 3 : 0;
    case L'T':
        return StartsWith(text, at, L"TAN") ? 3 : StartsWith(text, at, L"TH") ? 2 : 0;
    default:
        return 0;
    }
}

/// The same result in one pass.
void MarkInOnePass(TypedText const &text, Separator &out) {
    std::size_t protectedEnd = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        TracedChar const traced = text[at];
        if (at >= protectedEnd)
            protectedEnd = at + ProtectedLength(text, at);
        if (at < protectedEnd || (traced.c != L'B' && traced.c != L'T')) {
            out.Take(traced);
        } else if (traced.c == L'B') {
            out.Take(kByMarker, traced.source);
            at += StartsWith(text, at, L"BY");
        } else {
            out.Take(kToMarker, traced.source);
            at += StartsWith(text, at, L"TO");
        }
    }
}

/// Whether a character can have to do with a marker.
bool ConcernsMarkers(wchar_t c) {
    return c == L'B' || c == L'b' || c == L'T' || c == L't' || c == L'_' || c >= 0x80;
}

/// The normalised text, behind `head` and a blank if there is a head; those have no source.
CString Normalize(std::string_view head, CString const &text, std::vector<int> *sources) {
    TypedText const typed = Trimmed(text);
    bool const hasMarkers = std::any_of(typed.chars.begin(), typed.chars.end(), ConcernsMarkers);
    std::size_t const before = head.empty() ? 0 : head.size() + 1;
    // A comma or a zero may come in front of each character.
    OutputLine line(before + 2 * typed.size() * (hasMarkers ? kMostCharsPerTyped : 1));
    for (char const c : head)
        line.Push(static_cast<wchar_t>(c), -1);
    if (before > 0)
        line.Push(L' ', -1);
    Separator separator(line);
    if (!hasMarkers) {
        for (std::size_t at = 0; at < typed.size(); ++at)
            separator.Take(typed[at]);
    } else if (typed.chars.find(L"__") == std::wstring_view::npos) {
        MarkInOnePass(typed, separator);
    } else {
        MarkByReplacing(typed, separator);
    }
    if (line.Size() > before && line.Last() == L',')
        line.Last() = L' ';
    if (sources)
        *sources = line.Sources();
    return line.Text();
}

} // namespace

CString NormalizeCommandText(CString const &text) {
    return Normalize({}, text, nullptr);
}

CString NormalizeCommandText(CString const &text, std::vector<int> &sources) {
    return Normalize({}, text, &sources);
}

CString command::NormalizedLine(std::string_view startWord, CString const &text) {
    return Normalize(startWord, text, nullptr);
}

} // namespace zvi::lib
