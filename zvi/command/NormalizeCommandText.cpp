#include "zvi/command/NormalizeCommandText.h"

#include "zvi/base/RoomInPlace.h"
#include "zvi/command/NormalizedLineDetail.h"
#include "zvi/core/WideUnits.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <string_view>
#include <vector>

namespace zvi::lib {

namespace {

/// A character on its way, and the index of the typed character that it comes from.
struct TracedChar {
    wchar_t c;
    int source;
};

constexpr std::wstring_view kByMarker = L"#__ARG_BY__#";
constexpr std::wstring_view kToMarker = L"#__ARG_TO__#";
constexpr std::size_t kMarkerChars = kByMarker.size();
/// Typed texts up to this length get room for the longest line that may come of one, uncounted.
constexpr std::size_t kShortText = 32;

/// Words that keep their B or T, and what they are called while the markers are put in.
struct ProtectedWord {
    std::wstring_view word;
    std::wstring_view disguise;
};
constexpr ProtectedWord kProtectedWords[] = {
    {L"SQRT", L"__SQRR"}, {L"TAN", L"__RRAN"}, {L"ATAN", L"__ARAN"}, {L"ABS", L"__ARS"}, {L"TH", L"__RH"},
};

/// What a character does to the line.
enum class CharKind : std::uint8_t { kItem, kDropped, kBlank, kComma, kOpeningBracket, kClosingBracket, kMarker };

/// The characters of ASCII: what they do, and their upper-case forms.
struct CharTable {
    static constexpr std::size_t kSize = 0x80;

    std::array<CharKind, kSize> kinds{};
    std::array<char, kSize> upper{};
    std::array<bool, kSize> isMarkerLetter{};
    /// What a marker, a protected word or a disguise may begin with, and the items that are no such thing.
    std::array<bool, kSize> beginsWord{};
    std::array<bool, kSize> isPlain{};
};
constexpr CharTable kChars = [] {
    CharTable table;
    table.kinds['\t'] = table.kinds['\n'] = table.kinds['\r'] = CharKind::kDropped;
    table.kinds[' '] = CharKind::kBlank;
    table.kinds[','] = CharKind::kComma;
    table.kinds['['] = CharKind::kOpeningBracket;
    table.kinds[']'] = CharKind::kClosingBracket;
    table.kinds['#'] = CharKind::kMarker;
    for (std::size_t c = 0; c < CharTable::kSize; ++c) {
        char const upper = static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
        table.upper[c] = upper;
        table.isMarkerLetter[c] = upper == 'B' || upper == 'T';
        table.beginsWord[c] = table.isMarkerLetter[c] || upper == 'A' || upper == 'S' || upper == '_';
        table.isPlain[c] = table.kinds[c] == CharKind::kItem && !table.beginsWord[c];
    }
    return table;
}();

bool IsAscii(wchar_t c) {
    return static_cast<std::uint32_t>(c) < CharTable::kSize;
}

std::size_t At(wchar_t c) {
    return static_cast<std::size_t>(c);
}

wchar_t UpperCase(wchar_t c) {
    return IsAscii(c) ? static_cast<wchar_t>(kChars.upper[At(c)]) : UpperUnit(c);
}

bool IsPlain(wchar_t c) {
    return IsAscii(c) && kChars.isPlain[At(c)];
}

bool BeginsWord(wchar_t c) {
    return !IsAscii(c) || kChars.beginsWord[At(c)];
}

bool IsBlank(wchar_t c) {
    return (c <= L' ' || !IsAscii(c)) && IsBlankUnit(c);
}

/// Most characters that come of a short text.
constexpr std::size_t kMostShortLine = 2 * (1 + kMarkerChars) * kShortText;

/// The typed text between the blanks at its ends, in upper case.
struct TypedText {
    std::wstring_view chars;
    int firstSource;

    std::size_t size() const { return chars.size(); }
    int Source(std::size_t at) const { return firstSource + static_cast<int>(at); }
    TracedChar operator[](std::size_t at) const { return {UpperCase(chars[at]), Source(at)}; }

    /// Most characters that come of it: a comma or a zero may stand in front of each, and a marker takes the place of
    /// one.
    std::size_t MostChars() const {
        if (chars.size() <= kShortText)
            return kMostShortLine;
        auto const mayBeMarker = [](wchar_t c) { return !IsAscii(c) || kChars.isMarkerLetter[At(c)]; };
        return 2 * (chars.size() +
                    kMarkerChars * static_cast<std::size_t>(std::count_if(chars.begin(), chars.end(), mayBeMarker)));
    }
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

/// Passes characters on to a line that has room for them. Blanks between items become commas, doubled commas get a
/// zero, neighbouring brackets a comma. An object of a function of its own, it stays in registers.
class Separator {
public:
    /// Writes to `line`, and the sources to `sources` unless it is null.
    Separator(wchar_t *line, int *sources) : m_end(line), m_sources(sources) {}

    /// Behind the last character written.
    wchar_t *End() const { return m_end; }

    void Take(TracedChar traced) {
        switch (IsAscii(traced.c) ? kChars.kinds[At(traced.c)] : CharKind::kItem) {
        case CharKind::kItem:
            PutBetween(After::kItemAndBlank, L',', traced.source);
            m_state = After::kItem;
            break;
        case CharKind::kDropped:
            return;
        case CharKind::kBlank:
            if (m_state == After::kItem)
                m_state = After::kItemAndBlank;
            return;
        case CharKind::kComma:
            PutBetween(After::kComma, L'0', traced.source);
            m_state = After::kComma;
            break;
        case CharKind::kOpeningBracket:
            PutBetween(After::kClosingBracket, L',', traced.source);
            m_state = After::kOpeningBracket;
            break;
        case CharKind::kClosingBracket:
            m_state = After::kClosingBracket;
            break;
        case CharKind::kMarker:
            m_state = After::kMarker;
            break;
        }
        Push(traced.c, traced.source);
    }
    /// The same for the plain characters in a row that stand at `at`, the first of which is one; gives the index behind
    /// them.
    std::size_t TakePlain(TypedText const &text, std::size_t at) {
        assert(at < text.size() && IsPlain(text.chars[at]));
        PutBetween(After::kItemAndBlank, L',', text.Source(at));
        m_state = After::kItem;
        std::size_t const begin = at;
        do
            *m_end++ = static_cast<wchar_t>(kChars.upper[At(text.chars[at])]);
        while (++at < text.size() && IsPlain(text.chars[at]));
        if (m_sources) {
            std::iota(m_sources, m_sources + (at - begin), text.Source(begin));
            m_sources += at - begin;
        }
        return at;
    }
    void Take(std::wstring_view word, int source) {
        for (wchar_t const c : word)
            Take({c, source});
    }

private:
    void Push(wchar_t c, int source) {
        *m_end++ = c;
        if (m_sources)
            *m_sources++ = source;
    }
    void PutBetween(After state, wchar_t c, int source) {
        if (m_state == state)
            Push(c, source);
    }

    wchar_t *m_end;
    int *m_sources;
    After m_state = After::kNothing;
};

template <class Text>
bool StartsWith(Text const &text, std::size_t at, std::wstring_view word) {
    assert(at <= text.size());
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
wchar_t *MarkByReplacing(TypedText const &typed, wchar_t *line, int *sources) {
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
    Separator out(line, sources);
    for (TracedChar const &traced : text)
        out.Take(traced);
    return out.End();
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

/// The same result in one pass; null, with what was written worth nothing, for a text that needs the other way.
wchar_t *MarkInOnePass(TypedText const &text, wchar_t *line, int *sources) {
    Separator out(line, sources);
    std::size_t protectedEnd = 0;
    for (std::size_t at = 0; at < text.size();) {
        if (IsPlain(text.chars[at])) {
            at = out.TakePlain(text, at);
            continue;
        }
        TracedChar const traced = text[at];
        if (!BeginsWord(text.chars[at])) {
            out.Take(traced);
            ++at;
            continue;
        }
        if (StartsWith(text, at, L"__"))
            return nullptr;
        if (at >= protectedEnd)
            protectedEnd = at + ProtectedLength(text, at);
        if (at < protectedEnd || (traced.c != L'B' && traced.c != L'T')) {
            out.Take(traced);
            ++at;
            continue;
        }
        bool const isBy = traced.c == L'B';
        out.Take(isBy ? kByMarker : kToMarker, traced.source);
        at += StartsWith(text, at, isBy ? L"BY" : L"TO") ? 2 : 1;
    }
    return out.End();
}

/// Writes the marked and separated text to `line`, gives the end of it, and writes its sources unless there is no room
/// for them.
wchar_t *Mark(TypedText const &text, wchar_t *line, int *sources) {
    wchar_t *const end = MarkInOnePass(text, line, sources);
    return end ? end : MarkByReplacing(text, line, sources);
}

/// Room for the characters of a line and for their sources.
template <class T>
using LineRoom = base::RoomInPlace<T, kMostShortLine + 64>;

/// Ends a line that the normalised text makes up from `begin` on.
CString Finished(wchar_t *line, wchar_t *begin, wchar_t *end) {
    assert(line <= begin && begin <= end);
    if (end > begin && end[-1] == L',')
        end[-1] = L' ';
    return CString::OfUnits(std::wstring(line, end));
}

} // namespace

CString NormalizeCommandText(CString const &text) {
    TypedText const typed = Trimmed(text);
    LineRoom<wchar_t> line(typed.MostChars());
    return Finished(line.Data(), line.Data(), Mark(typed, line.Data(), nullptr));
}

CString NormalizeCommandText(CString const &text, std::vector<int> &sources) {
    TypedText const typed = Trimmed(text);
    LineRoom<wchar_t> line(typed.MostChars());
    LineRoom<int> traces(typed.MostChars());
    wchar_t *const end = Mark(typed, line.Data(), traces.Data());
    sources.assign(traces.Data(), traces.Data() + (end - line.Data()));
    return Finished(line.Data(), line.Data(), end);
}

CString command::NormalizedLine(std::string_view startWord, CString const &text) {
    TypedText const typed = Trimmed(text);
    LineRoom<wchar_t> line(startWord.size() + 1 + typed.MostChars());
    wchar_t *begin = line.Data();
    for (char const c : startWord)
        *begin++ = static_cast<wchar_t>(c);
    *begin++ = L' ';
    return Finished(line.Data(), begin, Mark(typed, begin, nullptr));
}

} // namespace zvi::lib
