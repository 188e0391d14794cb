#include "zvi/command/NormalizeCommandText.h"

#include "zvi/command/NormalizedLineDetail.h"
#include "zvi/core/WideUnits.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace zvi::lib {

namespace {

/// A character on its way, and the index of the typed character that it comes from.
struct TracedChar {
    wchar_t c;
    int source;
};

/// A text with room for a number of characters that is known beforehand. A typical line needs no call to the allocator.
class TracedText {
public:
    explicit TracedText(std::size_t capacity) {
        if (capacity > kInPlace) {
            m_spill = std::make_unique_for_overwrite<TracedChar[]>(capacity);
            m_chars = m_spill.get();
        }
    }
    TracedText(TracedText const &) = delete;
    TracedText &operator=(TracedText const &) = delete;

    void Push(wchar_t c, int source) { m_chars[m_size++] = {c, source}; }
    void Push(std::wstring_view word, int source) {
        for (wchar_t const c : word)
            Push(c, source);
    }
    std::size_t Size() const { return m_size; }
    TracedChar const &operator[](std::size_t index) const { return m_chars[index]; }
    std::span<TracedChar const> All() const { return {m_chars, m_size}; }
    CString Text() const {
        wchar_t inPlace[kInPlace];
        std::unique_ptr<wchar_t[]> const spill =
            m_size > kInPlace ? std::make_unique_for_overwrite<wchar_t[]>(m_size) : nullptr;
        wchar_t *const chars = spill ? spill.get() : inPlace;
        for (std::size_t i = 0; i < m_size; ++i)
            chars[i] = m_chars[i].c;
        return CString(std::wstring_view(chars, m_size));
    }
    void SetLast(wchar_t c) { m_chars[m_size - 1].c = c; }

private:
    static constexpr std::size_t kInPlace = 256;

    std::size_t m_size = 0;
    std::unique_ptr<TracedChar[]> m_spill;
    TracedChar m_inPlace[kInPlace];
    TracedChar *m_chars = m_inPlace;
};

using TracedView = std::span<TracedChar const>;

constexpr std::wstring_view kByMarker = L"#__ARG_BY__#";
constexpr std::wstring_view kToMarker = L"#__ARG_TO__#";

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

bool StartsWith(TracedView text, std::size_t at, std::wstring_view word) {
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
void MarkByReplacing(TracedView typed, TracedText &out) {
    TracedVector text(typed.begin(), typed.end());
    for (ProtectedWord const &entry : kProtectedWords)
        ReplaceAll(text, entry.word, entry.disguise);
    ReplaceAll(text, L"BY", L"B");
    ReplaceAll(text, L"TO", L"T");
    ReplaceAll(text, L"B", kByMarker);
    ReplaceAll(text, L"T", kToMarker);
    for (ProtectedWord const &entry : kProtectedWords)
        ReplaceAll(text, entry.disguise, entry.word);
    for (TracedChar const &traced : text)
        out.Push(traced.c, traced.source);
}

/// Length of the protected word at `at`, 0 if there is none. SQRT is disguised before ABS, so ABSQRT is AB and SQRT.
std::size_t ProtectedLength(TracedView text, std::size_t at) {
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
void MarkInOnePass(TracedView text, TracedText &out) {
    for (std::size_t at = 0; at < text.size();) {
        if (std::size_t const length = ProtectedLength(text, at)) {
            for (std::size_t const end = at + length; at < end; ++at)
                out.Push(text[at].c, text[at].source);
        } else if (text[at].c == L'B') {
            out.Push(kByMarker, text[at].source);
            at += StartsWith(text, at, L"BY") ? 2 : 1;
        } else if (text[at].c == L'T') {
            out.Push(kToMarker, text[at].source);
            at += StartsWith(text, at, L"TO") ? 2 : 1;
        } else {
            out.Push(text[at].c, text[at].source);
            ++at;
        }
    }
}

TracedView Trimmed(TracedView text) {
    while (!text.empty() && IsBlankUnit(text.front().c))
        text = text.subspan(1);
    while (!text.empty() && IsBlankUnit(text.back().c))
        text = text.first(text.size() - 1);
    return text;
}

/// What stood before the character at hand.
enum class After { kNothing, kItem, kItemAndBlank, kComma, kClosingBracket, kOpeningBracket, kMarker };

/// Blanks between items become commas, doubled commas get a zero, neighbouring brackets a comma.
void Separate(TracedView text, TracedText &out) {
    After state = After::kNothing;
    for (TracedChar const traced : text) {
        switch (traced.c) {
        case L'\t':
        case L'\n':
        case L'\r':
            continue;
        case L' ':
            if (state == After::kItem)
                state = After::kItemAndBlank;
            continue;
        case L'#':
            state = After::kMarker;
            break;
        case L',':
            if (state == After::kComma)
                out.Push(L'0', traced.source);
            state = After::kComma;
            break;
        case L'[':
            if (state == After::kClosingBracket)
                out.Push(L',', traced.source);
            state = After::kOpeningBracket;
            break;
        case L']':
            state = After::kClosingBracket;
            break;
        default:
            if (state == After::kItemAndBlank)
                out.Push(L',', traced.source);
            state = After::kItem;
            break;
        }
        out.Push(traced.c, traced.source);
    }
}

/// Upper case, and whether there is anything to mark.
void TakeTyped(CString const &text, TracedText &typed, bool &hasMarks, bool &hasDisguises) {
    wchar_t before = 0;
    wchar_t const *const units = text.GetString();
    for (int i = 0; i < text.GetLength(); ++i) {
        wchar_t const c = UpperCase(units[i]);
        hasMarks |= c == L'B' || c == L'T';
        hasDisguises |= c == L'_' && before == L'_';
        before = c;
        typed.Push(c, i);
    }
}

/// A marker of twelve characters takes the place of one, and a comma may come in front.
constexpr std::size_t kMostCharsPerTyped = 13;

/// The normalised text, behind `head` and a blank if there is a head; those come from nowhere.
CString Normalize(std::string_view head, CString const &text, std::vector<int> *sources) {
    auto const length = static_cast<std::size_t>(text.GetLength());
    TracedText typed(length);
    bool hasMarks = false;
    bool hasDisguises = false;
    TakeTyped(text, typed, hasMarks, hasDisguises);
    bool const rewrites = hasMarks || hasDisguises;
    TracedText marked(rewrites ? kMostCharsPerTyped * length : 0);
    if (hasDisguises)
        MarkByReplacing(typed.All(), marked);
    else if (hasMarks)
        MarkInOnePass(typed.All(), marked);
    TracedView const trimmed = Trimmed(rewrites ? marked.All() : typed.All());

    std::size_t const before = head.empty() ? 0 : head.size() + 1;
    TracedText line(before + 2 * trimmed.size());
    for (char const c : head)
        line.Push(static_cast<wchar_t>(c), -1);
    if (before > 0)
        line.Push(L' ', -1);
    Separate(trimmed, line);
    if (line.Size() > before && line[line.Size() - 1].c == L',')
        line.SetLast(L' ');
    if (sources) {
        sources->clear();
        for (TracedChar const traced : line.All())
            sources->push_back(traced.source);
    }
    return line.Text();
}

} // namespace

CString NormalizeCommandText(CString const &text) {
    return Normalize({}, text, nullptr);
}

CString NormalizeCommandText(CString const &text, std::vector<int> &sources) {
    return Normalize({}, text, &sources);
}

CString NormalizedLine(std::string_view startWord, CString const &text) {
    return Normalize(startWord, text, nullptr);
}

} // namespace zvi::lib
